// A snapshot exported over NFS and CIFS, granted, listed, revoked and withdrawn.
#include "Scenario.h"

namespace conformance {
namespace {

const char kNoVstore[] = "-12345";
const char kPath[] = "/projects/.snapshot/tuesday";

void Run(ZrManageHuawei& array, Journal& journal) {
  std::string nfsShare;
  journal.note("createNFSShare", array.createNFSShare(nfsShare, "7", "tuesday", kPath, kNoVstore))
      .with("shareId", nfsShare);
  std::string unused;
  journal.note("addNFSSharePermission",
               array.addNFSSharePermission(unused, "10.0.0.50", nfsShare, "0", "0", "1", "1", kNoVstore));
  std::list<_HuaweiNFSSharePermissionInfo> nfsClients;
  journal
      .note("getNFSSharePermissionsFromParentId",
            array.getNFSSharePermissionsFromParentId(nfsClients, nfsShare, kNoVstore))
      .with("permissions", nfsClients);
  _HuaweiShareInfo byFileSystem;
  journal.note("getShareInfoByFSID", array.getShareInfoByFSID(byFileSystem, "nfs", "7", kNoVstore))
      .with("share", byFileSystem);

  // The second creation of the same CIFS share finds the first.
  for (int round = 0; round < 2; ++round) {
    std::string cifsShare;
    journal.note("createCIFSShare", array.createCIFSShare(cifsShare, "restore", kPath, "7", kNoVstore))
        .with("shareId", cifsShare);
  }
  _HuaweiShareInfo cifs;
  journal.note("getShareInfoByName", array.getShareInfoByName(cifs, "unc", "restore", kNoVstore)).with("share", cifs);
  std::string permission;
  journal
      .note("addCIFSSharePermission",
            array.addCIFSSharePermission(permission, "CORP\\restore", cifs.id, "2", "0", kNoVstore))
      .with("permissionId", permission);
  std::list<_HuaweiCIFSSharePermissionInfo> cifsUsers;
  journal
      .note("getCIFSSharePermissionsFromParentId",
            array.getCIFSSharePermissionsFromParentId(cifsUsers, cifs.id, kNoVstore))
      .with("permissions", cifsUsers);

  for (const auto& client : nfsClients) {
    journal.note("deleteNFSSharePermission", array.deleteNFSSharePermission(client.id, kNoVstore));
  }
  journal.note("deleteNFSShare", array.deleteNFSShare(nfsShare, kNoVstore));
  journal.note("deleteCIFSShare", array.deleteCIFSShare("restore", kNoVstore));
  _HuaweiShareInfo gone;
  journal.note("getShareInfoByName", array.getShareInfoByName(gone, "unc", "restore", kNoVstore)).with("share", gone);
}

}  // namespace

Scenario Shares() {
  return {"shares", nlohmann::json::parse(R"({
    "filesystems": [{"ID": "7", "NAME": "projects", "steps": [
      {"write": "/plans/q1.txt", "size": 100}, {"snapshot": "monday"},
      {"write": "/plans/q2.txt", "size": 200}, {"snapshot": "tuesday"}]}]
  })"),
          Run};
}

}  // namespace conformance
