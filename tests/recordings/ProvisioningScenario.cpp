// LUNs made in a pool, renamed and grouped; a clone of one with the other as its copy,
// synchronised and split off; everything removed again.
#include "Scenario.h"

namespace conformance {
namespace {

const char kNoVstore[] = "-12345";

_HuaweiLUNInfo NewLun(const std::string& name, const std::string& poolId) {
  _HuaweiLUNInfo lun;
  lun.name = name;
  lun.capacity = "2097152";
  lun.allocType = HuaweiApiValue::ALLOC_TYPE_THIN;
  lun.parentId = poolId;
  lun.owningController = "0A";
  return lun;
}

void Run(ZrManageHuawei& array, Journal& journal) {
  _HuaweiStoragePoolInfo pool;
  journal.note("getStoragePoolInfoForName", array.getStoragePoolInfoForName(pool, "pool0")).with("pool", pool);
  std::string source, copy;
  journal.note("createLUN", array.createLUN(source, NewLun("job-source", pool.id))).with("lunId", source);
  journal.note("createLUN", array.createLUN(copy, NewLun("job-copy", pool.id))).with("lunId", copy);
  auto renamed = NewLun("job-source-renamed", pool.id);
  renamed.id = source;
  journal.note("modifyLun", array.modifyLun(renamed));
  _HuaweiLUNInfo lun;
  journal.note("getLUNInfo", array.getLUNInfo(lun, source, kNoVstore)).with("lun", lun);

  journal.note("addLuntoLunGroup", array.addLuntoLunGroup("1", source, kNoVstore));
  std::vector<_HuaweiLUNInfo> members;
  journal.note("getLunAssociatedToLunGroup", array.getLunAssociatedToLunGroup("1", members)).with("luns", members);
  std::vector<_HuaweiLunGroupInfo> groups;
  journal.note("getLunGroupsAssociatedToLun", array.getLunGroupsAssociatedToLun(groups, source, kNoVstore))
      .with("lunGroups", groups);

  _HuaweiCloneInfo clone;
  clone.name = "job-clone";
  clone.priLunId = source;
  std::string cloneId;
  journal.note("createClone", array.createClone(cloneId, clone)).with("cloneId", cloneId);
  _HuaweiCloneSecondaryLUN secondary;
  secondary.id = copy;
  secondary.parentId = cloneId;
  secondary.speed = HuaweiApiValue::COPY_SPEED_HIGH;
  secondary.resumePolicy = HuaweiApiValue::RESUME_POLICY_AUTOMATIC;
  journal.note("addCloneSecondaryLun", array.addCloneSecondaryLun(secondary, HuaweiApiValue::FIRST_SYNC_YES));
  // The library never waits: the pair is read until the first synchronisation is done.
  for (int reads = 0; reads < 10; ++reads) {
    std::list<_HuaweiCloneSecondaryLUN> pairs;
    const auto read = array.getCloneSecondaryLuns(pairs, cloneId);
    journal.note("getCloneSecondaryLuns", read).with("pairs", pairs);
    if (read.IsError() || pairs.empty() ||
        pairs.front().runningStatus.getValue() != HuaweiApiValue::CLONE_SEC_LUN_RUNNING_STATUS_SYNC.getValue()) {
      break;
    }
  }
  journal.note("splitCloneSecondaryLun", array.splitCloneSecondaryLun(copy, cloneId));
  journal.note("syncCloneSecondaryLun", array.syncCloneSecondaryLun(copy, cloneId));
  _HuaweiCloneInfo read;
  journal.note("getCloneInfo", array.getCloneInfo(read, cloneId)).with("clone", read);
  // Still holding its copy, the clone cannot go: the array's refusal is part of the record.
  journal.note("deleteClone", array.deleteClone(cloneId));
  journal.note("removeCloneSecondaryLun", array.removeCloneSecondaryLun(copy, cloneId));
  journal.note("deleteClone", array.deleteClone(cloneId));

  journal.note("removeLunFromLunGroup", array.removeLunFromLunGroup("1", source, kNoVstore));
  journal.note("deleteLun", array.deleteLun(source, kNoVstore));
  journal.note("deleteLun", array.deleteLun(copy, kNoVstore));
  journal.note("getLUNInfo", array.getLUNInfo(lun, source, kNoVstore));
}

}  // namespace

Scenario Provisioning() {
  return {"provisioning", nlohmann::json::parse(R"({
    "objects": {"storagepool": [{"ID": "0", "NAME": "pool0", "PARENTID": "0"}],
                "lungroup": [{"ID": "1", "NAME": "backup-luns"}]}
  })"),
          Run};
}

}  // namespace conformance
