// lun: LUNs, their snapshots, and the storage pools LUNs are made in.
#include "Command.h"

namespace zrarray {

std::vector<Command> ProvisioningAndLunSnapshotCommands() {
  const Argument lunId = text("lun-id", "LUN identifier");
  const Argument snapshotId = text("snapshot-id", "Snapshot LUN identifier");
  return {
      {"lun", "info", "One LUN", {lunId},
       record<_HuaweiLUNInfo>([](Call& c, auto& out) { return c.array.getLUNInfo(out, c["lun-id"], c.vstore); })},
      {"lun", "create", "Create a LUN in a storage pool; prints its identifier",
       {text("name", "LUN name"), text("pool-id", "Storage pool (see lun pool)"),
        number("capacity", "Capacity in 512-byte sectors, as the array counts them (2097152 is 1 GiB)"),
        orElse(oneOf("alloc-type", "Allocation",
                     {{"thin", HuaweiApiValue::ALLOC_TYPE_THIN.getValue()},
                      {"thick", HuaweiApiValue::ALLOC_TYPE_THICK.getValue()}}),
               "thin"),
        text("controller", "Owning controller, as the array names it")},
       value("id",
             [](Call& c, auto& out) {
               _HuaweiLUNInfo lun;
               lun.name = c["name"];
               lun.parentId = c["pool-id"];
               lun.capacity = c["capacity"];
               lun.allocType = HuaweiApi::AllocType(c["alloc-type"]);
               lun.owningController = c["controller"];
               return c.array.createLUN(out, lun);
             })},
      {"lun", "rename", "Give a LUN a new name", {lunId, text("name", "New name")},
       action([](Call& c) {
         _HuaweiLUNInfo lun;
         lun.id = c["lun-id"];
         lun.name = c["name"];
         return c.array.modifyLun(lun);
       })},
      {"lun", "delete", "Delete a LUN", {lunId},
       action([](Call& c) { return c.array.deleteLun(c["lun-id"], c.vstore); })},
      {"lun", "groups", "The LUN groups a LUN is in", {lunId},
       listOf<_HuaweiLunGroupInfo, std::vector>(
           [](Call& c, auto& out) { return c.array.getLunGroupsAssociatedToLun(out, c["lun-id"], c.vstore); })},
      {"lun", "pool", "A storage pool by name", {text("name", "Pool name")},
       record<_HuaweiStoragePoolInfo>(
           [](Call& c, auto& out) { return c.array.getStoragePoolInfoForName(out, c["name"]); })},

      {"lun", "snapshot-info", "One LUN snapshot; notExist tells an absent one from other failures", {snapshotId},
       flagged<_HuaweiLUNSnapshotInfo>("notExist",
                                       [](Call& c, auto& out, bool& absent) {
                                         return c.array.getLUNSnapshotInfo(out, c["snapshot-id"], absent, c.vstore);
                                       })},
      {"lun", "snapshot-find", "The LUN snapshot of that exact name", {text("name", "Snapshot name")},
       record<_HuaweiLUNSnapshotInfo>([](Call& c, auto& out) {
         bool unused = false;
         return c.array.getLUNSnapshotInfoByName(out, c["name"], unused, c.vstore);
       })},
      {"lun", "snapshot-create", "Take a snapshot of a LUN (inactive until activated)",
       {lunId, text("name", "Snapshot name")},
       record<_HuaweiLUNSnapshotInfo>([](Call& c, auto& out) {
         return c.array.createLUNSnapshot(out, c["lun-id"], c["name"], c.vstore);
       })},
      {"lun", "snapshot-activate", "Activate inactive snapshots, all or none",
       {texts("snapshot-id", "Snapshot LUN identifier; repeat or separate by commas")},
       action([](Call& c) { return c.array.activateLUNSnapshot(c.args.list("snapshot-id"), c.vstore); })},
      {"lun", "snapshot-stop", "Deactivate a snapshot; an absent one counts as stopped, with notExist",
       {snapshotId}, flagOnly("notExist", [](Call& c, bool& absent) {
         return c.array.deActivateLUNSnapshot(c["snapshot-id"], absent, c.vstore);
       })},
      {"lun", "snapshot-delete", "Delete a snapshot (one already gone counts as deleted)", {snapshotId},
       action([](Call& c) { return c.array.deleteLUNSnapshot(c["snapshot-id"], c.vstore); })},
      {"lun", "snapshot-revert", "Roll the LUN back to an active snapshot",
       {snapshotId, orElse(oneOf("speed", "Rollback speed", SpeedWords()), "medium")},
       action([](Call& c) { return c.array.revertLUNSnapshot(c["snapshot-id"], c["speed"], c.vstore); })},
      {"lun", "snapshot-copy", "Copy a snapshot under a new name", {snapshotId, text("name", "Name of the copy")},
       record<_HuaweiLUNSnapshotInfo>([](Call& c, auto& out) {
         return c.array.createLUNSnapshotCopy(out, c["snapshot-id"], c["name"], c.vstore);
       })},
  };
}

}  // namespace zrarray
