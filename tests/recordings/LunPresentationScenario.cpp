// A LUN snapshot taken, activated and presented to a backup host through host, initiator, host
// group, LUN group and mapping view; then withdrawn step by step and deleted.
#include "Scenario.h"

namespace conformance {
namespace {

const char kNoVstore[] = "-12345";
const char kInitiator[] = "iqn.2024-01.com.example:proxy";

void Present(ZrManageHuawei& array, Journal& journal, const std::string& snapshotId) {
  _HuaweiLUNHostInfo host;
  journal.note("createHost", array.createHost(host, "proxy", kNoVstore, false)).with("host", host);
  _HuaweiInitiator initiator;
  bool alreadyExists = false;
  journal.note("createInitiator", array.createInitiator(initiator, kInitiator, host.id, true, alreadyExists, kNoVstore))
      .with("initiator", initiator)
      .with("alreadyExists", alreadyExists);
  std::string hostId;
  journal.note("getHostIDFromInitiatorID", array.getHostIDFromInitiatorID(kInitiator, true, hostId, kNoVstore))
      .with("hostId", hostId);
  _HuaweiHostGroupInfo hostGroup;
  journal.note("createHostGroup", array.createHostGroup(hostGroup, "backup-hosts", kNoVstore))
      .with("hostGroup", hostGroup);
  journal.note("addHostToHostGroup", array.addHostToHostGroup(hostGroup.id, host.id, kNoVstore));
  _HuaweiLunGroupInfo lunGroup;
  journal.note("createLUNGroup", array.createLUNGroup(lunGroup, "backup-nightly", kNoVstore, "0"))
      .with("lunGroup", lunGroup);
  journal.note("addSnapshotLuntoLunGroup", array.addSnapshotLuntoLunGroup(lunGroup.id, snapshotId, kNoVstore));
  _HuaweiLUNMappingView view;
  journal.note("createMappingView", array.createMappingView(view, "backup-nightly", kNoVstore)).with("view", view);
  journal.note("addHostGroupToMappingView", array.addHostGroupToMappingView(hostGroup.id, view.id, kNoVstore));
  journal.note("addLunGroupToMappingView", array.addLunGroupToMappingView(lunGroup.id, view.id, kNoVstore));
  std::vector<_HuaweiLunGroupInfo> lunGroups;
  journal
      .note("getLunGroupAssociatedToMappingView",
            array.getLunGroupAssociatedToMappingView(view.id, lunGroups, kNoVstore))
      .with("lunGroups", lunGroups);

  journal.note("removeLunGroupAssociatedToMappingView",
               array.removeLunGroupAssociatedToMappingView(lunGroup.id, view.id, kNoVstore));
  journal.note("removeHostGroupAssociatedToMappingView",
               array.removeHostGroupAssociatedToMappingView(hostGroup.id, view.id, kNoVstore));
  journal.note("deleteMappingView", array.deleteMappingView(view.id, kNoVstore));
  journal.note("removeSnapshotLunFromLunGroup",
               array.removeSnapshotLunFromLunGroup(lunGroup.id, snapshotId, kNoVstore));
  journal.note("deleteLunGroup", array.deleteLunGroup(lunGroup.id, kNoVstore));
}

void Run(ZrManageHuawei& array, Journal& journal) {
  _HuaweiLUNSnapshotInfo snapshot;
  journal.note("createLUNSnapshot", array.createLUNSnapshot(snapshot, "7", "nightly", kNoVstore))
      .with("snapshot", snapshot);
  journal.note("activateLUNSnapshot", array.activateLUNSnapshot({snapshot.id}, kNoVstore));
  bool notExist = false;
  _HuaweiLUNSnapshotInfo byName;
  journal.note("getLUNSnapshotInfoByName", array.getLUNSnapshotInfoByName(byName, "nightly", notExist, kNoVstore))
      .with("snapshot", byName)
      .with("notExist", notExist);
  Present(array, journal, snapshot.id);
  journal.note("deActivateLUNSnapshot", array.deActivateLUNSnapshot(snapshot.id, notExist, kNoVstore))
      .with("notExist", notExist);
  journal.note("deleteLUNSnapshot", array.deleteLUNSnapshot(snapshot.id, kNoVstore));
  _HuaweiLUNSnapshotInfo gone;
  journal.note("getLUNSnapshotInfo", array.getLUNSnapshotInfo(gone, snapshot.id, notExist, kNoVstore))
      .with("notExist", notExist);
}

}  // namespace

Scenario LunPresentation() {
  return {"lun-presentation", nlohmann::json::parse(R"({
    "objects": {"lun": [{"ID": "7", "NAME": "db-data", "PARENTID": "0", "RUNNINGSTATUS": "27",
                         "CAPACITY": "2097152", "ALLOCTYPE": "1", "OWNINGCONTROLLER": "0A"}]}
  })"),
          Run};
}

}  // namespace conformance
