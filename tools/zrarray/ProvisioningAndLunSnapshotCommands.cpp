// lun: LUNs, their snapshots, and the storage pools LUNs are made in.
#include "Calls.h"

namespace zrarray {

std::vector<Command> ProvisioningAndLunSnapshotCommands() {
  const Argument lunId = LunIdArgument();
  const Argument snapshotId = SnapshotLunIdArgument();
  return {
      {"lun", "info", "One LUN", calls(&Array::getLUNInfo, printed, lunId, vstore)},
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
      {"lun", "delete", "Delete a LUN", calls(&Array::deleteLun, lunId, vstore)},
      {"lun", "groups", "The LUN groups a LUN is in",
       calls(&Array::getLunGroupsAssociatedToLun, printed, lunId, vstore)},
      {"lun", "pool", "A storage pool by name",
       calls(&Array::getStoragePoolInfoForName, printed, text("name", "Pool name"))},

      {"lun", "snapshot-info", "One LUN snapshot; notExist tells an absent one from other failures",
       calls(&Array::getLUNSnapshotInfo, printed, snapshotId, printedAs("notExist"), vstore)},
      {"lun", "snapshot-find", "The LUN snapshot of that exact name",
       calls(&Array::getLUNSnapshotInfoByName, printed, text("name", "Snapshot name"), ignored, vstore)},
      {"lun", "snapshot-create", "Take a snapshot of a LUN (inactive until activated)",
       calls(&Array::createLUNSnapshot, printed, lunId, text("name", "Snapshot name"), vstore)},
      {"lun", "snapshot-activate", "Activate inactive snapshots, all or none",
       calls(&Array::activateLUNSnapshot, texts("snapshot-id", "Snapshot LUN identifier; repeat or separate by commas"),
             vstore)},
      {"lun", "snapshot-stop", "Deactivate a snapshot; an absent one counts as stopped, with notExist",
       calls(&Array::deActivateLUNSnapshot, snapshotId, printedAs("notExist"), vstore)},
      {"lun", "snapshot-delete", "Delete a snapshot (one already gone counts as deleted)",
       calls(&Array::deleteLUNSnapshot, snapshotId, vstore)},
      {"lun", "snapshot-revert", "Roll the LUN back to an active snapshot",
       calls(&Array::revertLUNSnapshot, snapshotId, orElse(oneOf("speed", "Rollback speed", SpeedWords()), "medium"),
             vstore)},
      {"lun", "snapshot-copy", "Copy a snapshot under a new name",
       calls(&Array::createLUNSnapshotCopy, printed, snapshotId, text("name", "Name of the copy"), vstore)},
  };
}

}  // namespace zrarray
