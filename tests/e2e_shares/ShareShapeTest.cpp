// The shared shape of the share and permission operations, one row each.
#include "OperationShape.h"

namespace zrtest {

// File system 7 ("fs1") in vStore 3 with a CIFS share "docs" and an NFS share of /fs1/export,
// each with one permission.
ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei& array) {
  arraysim::FileSystemInfo info;
  info.id = "7";
  info.vstoreId = "3";
  sim.fileSystems().create("fs1", info);
  ShapeScene scene;
  std::string unused;
  EXPECT_TRUE(array.createCIFSShare(scene["cifs"], "docs", "/fs1/docs", "7", "3"));
  EXPECT_TRUE(array.addCIFSSharePermission(unused, "DOMAIN\\ann", scene["cifs"], "0", "1", "3"));
  EXPECT_TRUE(array.createNFSShare(scene["nfs"], "7", "/fs1/export", "/fs1/export", "3"));
  EXPECT_TRUE(array.addNFSSharePermission(unused, "10.0.0.1", scene["nfs"], "1", "0", "1", "1", "3"));
  return scene;
}

namespace {

const char kBuildFailed[] = "Unable to build the request body";

// What the calls write, which no row reads.
std::string id;
std::list<_HuaweiCIFSSharePermissionInfo> cifsPermissions;
std::list<_HuaweiNFSSharePermissionInfo> nfsPermissions;

Outcome ByName(ZrManageHuawei& a, const std::string& name) {
  _HuaweiShareInfo info;
  return FirstGeneration(a.getShareInfoByName(info, "unc", name, "3"));
}
Outcome ByFileSystem(ZrManageHuawei& a, const std::string& fileSystem) {
  _HuaweiShareInfo info;
  return FirstGeneration(a.getShareInfoByFSID(info, "nfs", fileSystem, "3"));
}
Outcome CIFSGrant(ZrManageHuawei& a, const ShapeScene& scene, const std::string& name) {
  return FirstGeneration(a.addCIFSSharePermission(id, name, scene.at("cifs"), "0", "1", "3"));
}
Outcome NFSGrant(ZrManageHuawei& a, const ShapeScene& scene, const std::string& client) {
  return FirstGeneration(a.addNFSSharePermission(id, client, scene.at("nfs"), "1", "0", "1", "1", "3"));
}
Outcome NFSShare(ZrManageHuawei& a, const std::string& path) {
  return FirstGeneration(a.createNFSShare(id, "7", path, path, "3"));
}

INSTANTIATE_TEST_SUITE_P(
    Shares, OperationShape,
    testing::Values(
        ShapeRow("getShareInfoByName", [](ZrManageHuawei& a, const ShapeScene&) { return ByName(a, "docs"); },
                 {"GET cifshare?filter=NAME:docs&vstoreId=3"}, "getShareInfoByName",
                 "[ERROR] Unable to get the share information for [docs].")
            .guardPrefixed("[ERROR] ")
            .emptyResponseSays("[ERROR] Empty response from the array")
            .emptyArgumentSays([](ZrManageHuawei& a, const ShapeScene&) { return ByName(a, ""); },
                               "[ERROR] The share name is empty."),
        ShapeRow("getShareInfoByFSID", [](ZrManageHuawei& a, const ShapeScene&) { return ByFileSystem(a, "7"); },
                 {"GET nfshare?filter=FSID:7&range=[0-1]&3"}, "getShareInfoByFSID",
                 "[ERROR] Unable to find NFS Share with FSID [7].")
            .guardPrefixed("[ERROR] ")
            .emptyResponseSays("[ERROR] Empty response from the array")
            .emptyArgumentSays([](ZrManageHuawei& a, const ShapeScene&) { return ByFileSystem(a, ""); },
                               "[ERROR] The file system ID is empty"),
        ShapeRow("createCIFSShare", [](auto& a, auto&) { return FirstGeneration(a.createCIFSShare(id, "new", "/fs1/new", "7", "3")); },
                 {"POST CIFSHARE"}, "createCIFSShare", "")
            .guardNames("addCIFSSharePermission")
            .refusalUnlogged(),
        ShapeRow("deleteCIFSShare", [](auto& a, auto&) { return FirstGeneration(a.deleteCIFSShare("docs", "3")); },
                 {"GET cifshare?filter=NAME:docs&vstoreId=3", "DELETE cifshare/{cifs}?vstoreId=3"}, "deleteCIFSShare",
                 "Unable to delete the CIFS share")
            .emptyArgumentSays([](auto& a, auto&) { return FirstGeneration(a.deleteCIFSShare("", "3")); },
                               "Unable to get CIFS Share information for the share name []"),
        ShapeRow("getCIFSSharePermissions",
                 [](auto& a, auto&) { return FirstGeneration(a.getCIFSSharePermissions(cifsPermissions, "3")); },
                 {"GET CIFS_SHARE_AUTH_CLIENT?vstoreId=3"}, "getCIFSSharePermissions",
                 "Unable to get the permissions list for CIFS Share."),
        // Refusals other than an existing grant reach the parser, which rejects them.
        ShapeRow("addCIFSSharePermission",
                 [](ZrManageHuawei& a, const ShapeScene& scene) { return CIFSGrant(a, scene, "DOMAIN\\bob"); },
                 {"POST CIFS_SHARE_AUTH_CLIENT"}, "addCIFSSharePermission", "Unable to parse the JSON Response")
            .emptyArgumentSays([](ZrManageHuawei& a, const ShapeScene& scene) { return CIFSGrant(a, scene, ""); },
                               kBuildFailed),
        ShapeRow("createNFSShare", [](ZrManageHuawei& a, const ShapeScene&) { return NFSShare(a, "/fs1/new"); },
                 {"POST NFSHARE"}, "createNFSShare",
                 "Unable to create NFS Share [/fs1/new] with share path [/fs1/new] and file system ID [7].")
            .emptyArgumentSays([](ZrManageHuawei& a, const ShapeScene&) { return NFSShare(a, ""); }, kBuildFailed),
        ShapeRow("deleteNFSShare", [](auto& a, auto& scene) { return FirstGeneration(a.deleteNFSShare(scene.at("nfs"), "3")); },
                 {"DELETE nfshare/{nfs}?vstoreId=3"}, "deleteNFSShare",
                 "[ERROR] Unable to delete the NFS share with ID [{nfs}].")
            .emptyArgumentSays([](auto& a, auto&) { return FirstGeneration(a.deleteNFSShare("", "3")); },
                               "The input parameter [ShareID] is empty"),
        ShapeRow("getNFSSharePermissions",
                 [](auto& a, auto&) { return FirstGeneration(a.getNFSSharePermissions(nfsPermissions, "3")); },
                 {"GET NFS_SHARE_AUTH_CLIENT?vstoreId=3"}, "getNFSSharePermissions",
                 "Unable to get the permissions list for NFS Share"),
        ShapeRow("addNFSSharePermission",
                 [](ZrManageHuawei& a, const ShapeScene& scene) { return NFSGrant(a, scene, "10.0.0.9"); },
                 {"POST NFS_SHARE_AUTH_CLIENT"}, "addNFSSharePermission",
                 "Unable to add IP [10.0.0.9] to the NFS share [{nfs}].")
            .refusalAt(0)
            .emptyArgumentSays([](ZrManageHuawei& a, const ShapeScene& scene) { return NFSGrant(a, scene, ""); },
                               kBuildFailed)),
    RowName);

}  // namespace
}  // namespace zrtest
