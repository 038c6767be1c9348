// Inventory and a change-list walk: what a file backup reads before and while it runs.
#include "Scenario.h"

namespace conformance {
namespace {

const char kNoVstore[] = "-12345";

void Run(ZrManageHuawei& array, Journal& journal) {
  _HuaweiSystemInformation system;
  journal.note("getSystemInformation", array.getSystemInformation(system)).with("system", system);
  _HuaweiNDMPServiceSettings ndmp;
  journal.note("getNDMPServiceSettings", array.getNDMPServiceSettings(ndmp, kNoVstore)).with("ndmp", ndmp);
  std::list<_HuaweiFileSystemsInfo> fileSystems;
  journal.note("getFileSystemsList", array.getFileSystemsList(fileSystems, kNoVstore)).with("fileSystems", fileSystems);
  std::list<_HuaweiArrayInterfaces> interfaces;
  journal.note("getArrayInterfaces", array.getArrayInterfaces(interfaces)).with("interfaces", interfaces);
  std::string id;
  journal.note("getFileSystemId", array.getFileSystemId("projects", id)).with("id", id);
  _HuaweiFileSystemsInfo fileSystem;
  journal.note("getFileSystemInfoById", array.getFileSystemInfoById(id, fileSystem, kNoVstore))
      .with("fileSystem", fileSystem);
  for (const char* snapshotId : {"7@1", "7@2", "7@9"}) {
    _HuaweiSnapshotInfo snapshot;
    journal.note("getFileSystemSnapshotInfo", array.getFileSystemSnapshotInfo(snapshotId, snapshot, kNoVstore))
        .with("snapshot", snapshot);
  }
  journal.note("isSnapshotPresent", array.isSnapshotPresent("7@9", kNoVstore));

  // Page by page until the array says the walk is complete; the last page deletes the session.
  _HuaweiSnapshotChangeListInfo page;
  for (int pages = 0; pages < 10; ++pages) {
    const bool ok = array.getSnapshotChangeList(id, "7@1", "7@2", page);
    journal.note("getSnapshotChangeList", ok).with("changes", page.changes).with("progress", page.progress);
    if (!ok || (page.changes.empty() && page.progress == "100")) break;
  }
}

}  // namespace

Scenario Inventory() {
  return {"inventory", nlohmann::json::parse(R"({
    "system": {"NAME": "lab-array", "PRODUCTVERSION": "V600R005C20"},
    "ndmp": [{"isEnabled": "true", "ip": "192.168.100.21", "port": "10000", "version": "4"}],
    "lifs": [{"NAME": "lif-ndmp", "IPV4ADDR": "192.168.100.21", "SUPPORTPROTOCOL": "3", "ROLE": "2"}],
    "filesystems": [
      {"ID": "7", "NAME": "projects", "steps": [
        {"write": "/reports/2023.txt", "size": 1200}, {"write": "/reports/draft.txt", "size": 10},
        {"mkdir": "/tmp"}, {"snapshot": "monday"},
        {"write": "/reports/2023.txt", "size": 1500}, {"remove": "/reports/draft.txt"},
        {"write": "/reports/plan (v2).txt", "size": 42}, {"rename": "/tmp", "to": "/archive"},
        {"snapshot": "tuesday"}]},
      {"ID": "8", "NAME": "home"}],
    "changeListPageSize": 2
  })"),
          Run};
}

}  // namespace conformance
