// The shared shape of the share and permission operations, one row each.
#include "OperationShape.h"
#include "ShapeCall.h"

namespace zrtest {

// File system 7 ("fs1") in vStore 3 with a CIFS share "docs" and an NFS share of /fs1/export,
// each with one permission.
ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei& array) {
  sim.fileSystems().create("fs1", FileSystemOf("7", "3"));
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

using Z = ZrManageHuawei;

INSTANTIATE_TEST_SUITE_P(
    Shares, OperationShape,
    testing::Values(
        ShapeRow("getShareInfoByName", calling(&Z::getShareInfoByName, out, "unc", "docs", "3"),
                 {"GET cifshare?filter=NAME:docs&vstoreId=3"}, "getShareInfoByName",
                 "[ERROR] Unable to get the share information for [docs].")
            .guardPrefixed("[ERROR] ")
            .emptyResponseSays("[ERROR] Empty response from the array")
            .emptyArgumentSays(2, "[ERROR] The share name is empty."),
        ShapeRow("getShareInfoByFSID", calling(&Z::getShareInfoByFSID, out, "nfs", "7", "3"),
                 {"GET nfshare?filter=FSID:7&range=[0-1]&3"}, "getShareInfoByFSID",
                 "[ERROR] Unable to find NFS Share with FSID [7].")
            .guardPrefixed("[ERROR] ")
            .emptyResponseSays("[ERROR] Empty response from the array")
            .emptyArgumentSays(2, "[ERROR] The file system ID is empty"),
        ShapeRow("createCIFSShare", calling(&Z::createCIFSShare, out, "new", "/fs1/new", "7", "3"), {"POST CIFSHARE"},
                 "createCIFSShare", "")
            .guardNames("addCIFSSharePermission")
            .refusalUnlogged(),
        ShapeRow("deleteCIFSShare", calling(&Z::deleteCIFSShare, "docs", "3"),
                 {"GET cifshare?filter=NAME:docs&vstoreId=3", "DELETE cifshare/{cifs}?vstoreId=3"}, "deleteCIFSShare",
                 "Unable to delete the CIFS share")
            .emptyArgumentSays(0, "Unable to get CIFS Share information for the share name []"),
        ShapeRow("getCIFSSharePermissions", calling(&Z::getCIFSSharePermissions, out, "3"),
                 {"GET CIFS_SHARE_AUTH_CLIENT?vstoreId=3"}, "getCIFSSharePermissions",
                 "Unable to get the permissions list for CIFS Share."),
        // Refusals other than an existing grant reach the parser, which rejects them.
        ShapeRow("addCIFSSharePermission",
                 calling(&Z::addCIFSSharePermission, out, "DOMAIN\\bob", "{cifs}", "0", "1", "3"),
                 {"POST CIFS_SHARE_AUTH_CLIENT"}, "addCIFSSharePermission", "Unable to parse the JSON Response")
            .emptyArgumentSays(1, kBuildFailed),
        ShapeRow("createNFSShare", calling(&Z::createNFSShare, out, "7", "/fs1/new", "/fs1/new", "3"), {"POST NFSHARE"},
                 "createNFSShare",
                 "Unable to create NFS Share [/fs1/new] with share path [/fs1/new] and file system ID [7].")
            .emptyArgumentSays(calling(&Z::createNFSShare, out, "7", "", "", "3").call, kBuildFailed),
        ShapeRow("deleteNFSShare", calling(&Z::deleteNFSShare, "{nfs}", "3"), {"DELETE nfshare/{nfs}?vstoreId=3"},
                 "deleteNFSShare", "[ERROR] Unable to delete the NFS share with ID [{nfs}].")
            .emptyArgumentSays(0, "The input parameter [ShareID] is empty"),
        ShapeRow("getNFSSharePermissions", calling(&Z::getNFSSharePermissions, out, "3"),
                 {"GET NFS_SHARE_AUTH_CLIENT?vstoreId=3"}, "getNFSSharePermissions",
                 "Unable to get the permissions list for NFS Share"),
        ShapeRow("addNFSSharePermission",
                 calling(&Z::addNFSSharePermission, out, "10.0.0.9", "{nfs}", "1", "0", "1", "1", "3"),
                 {"POST NFS_SHARE_AUTH_CLIENT"}, "addNFSSharePermission",
                 "Unable to add IP [10.0.0.9] to the NFS share [{nfs}].")
            .refusalAt(0)
            .emptyArgumentSays(1, kBuildFailed)),
    RowName);

}  // namespace
}  // namespace zrtest
