// lungroup and mappingview: groups of LUNs and snapshot LUNs, and the views that show them to host groups.
#include "Command.h"

namespace zrarray {

std::vector<Command> LunGroupAndMappingViewCommands() {
  const Argument lunGroupId = text("lun-group-id", "LUN group identifier");
  const Argument hostGroupId = text("host-group-id", "Host group identifier");
  const Argument viewId = text("mapping-view-id", "Mapping view identifier");
  const Argument lunId = text("lun-id", "LUN identifier");
  const Argument snapshotId = text("snapshot-id", "Snapshot LUN identifier");
  return {
      {"lungroup", "id", "Identifier of the LUN group of that exact name", {text("lun-group-name", "LUN group name")},
       value("lunGroupId", [](Call& c, auto& out) {
         return c.array.getLUNGroupIDFromName(c["lun-group-name"], out, c.vstore);
       })},
      {"lungroup", "create", "Create a LUN group (one of that name already there is adopted)",
       {text("lun-group-name", "LUN group name"), orElse(number("app-type", "Application type, the array's number"), "0")},
       record<_HuaweiLunGroupInfo>([](Call& c, auto& out) {
         return c.array.createLUNGroup(out, c["lun-group-name"], c.vstore, c["app-type"]);
       })},
      {"lungroup", "delete", "Delete a LUN group", {lunGroupId},
       action([](Call& c) { return c.array.deleteLunGroup(c["lun-group-id"], c.vstore); })},
      {"lungroup", "snapshots", "The snapshot LUNs of a LUN group", {lunGroupId},
       listOf<_HuaweiLUNSnapshotInfo, std::vector>([](Call& c, auto& out) {
         return c.array.getSnapshotLunAssociatedToLunGroup(c["lun-group-id"], out, c.vstore);
       })},
      {"lungroup", "add-snapshot", "Put a snapshot LUN into a LUN group (one already in it counts as added)",
       {lunGroupId, snapshotId},
       action([](Call& c) {
         return c.array.addSnapshotLuntoLunGroup(c["lun-group-id"], c["snapshot-id"], c.vstore);
       })},
      {"lungroup", "has-snapshot", "Succeeds when the snapshot LUN is in the group, fails otherwise",
       {lunGroupId, snapshotId},
       action([](Call& c) {
         return c.array.isSnapshotLunAssociatedToLunGroup(c["lun-group-id"], c["snapshot-id"], c.vstore);
       })},
      {"lungroup", "remove-snapshot", "Take a snapshot LUN out of a LUN group", {lunGroupId, snapshotId},
       action([](Call& c) {
         return c.array.removeSnapshotLunFromLunGroup(c["lun-group-id"], c["snapshot-id"], c.vstore);
       })},
      {"lungroup", "luns", "The LUNs of a LUN group", {lunGroupId},
       listOf<_HuaweiLUNInfo, std::vector>(
           [](Call& c, auto& out) { return c.array.getLunAssociatedToLunGroup(c["lun-group-id"], out); })},
      {"lungroup", "add-lun", "Put a LUN into a LUN group (one already in it counts as added)", {lunGroupId, lunId},
       action([](Call& c) { return c.array.addLuntoLunGroup(c["lun-group-id"], c["lun-id"], c.vstore); })},
      {"lungroup", "has-lun", "Succeeds when the LUN is in the group, fails otherwise", {lunGroupId, lunId},
       action([](Call& c) { return c.array.isLunAssociatedToLunGroup(c["lun-group-id"], c["lun-id"]); })},
      {"lungroup", "remove-lun", "Take a LUN out of a LUN group", {lunGroupId, lunId},
       action([](Call& c) { return c.array.removeLunFromLunGroup(c["lun-group-id"], c["lun-id"], c.vstore); })},
      {"lungroup", "views", "The mapping views a LUN group is in", {lunGroupId},
       listOf<_HuaweiLUNMappingView, std::vector>([](Call& c, auto& out) {
         return c.array.getMappingViewAssociatedToLunGroup(c["lun-group-id"], out, c.vstore);
       })},

      {"mappingview", "find", "A mapping view by name", {text("name", "Mapping view name")},
       record<_HuaweiLUNMappingView>(
           [](Call& c, auto& out) { return c.array.getMappingViewInfoByName(out, c["name"], c.vstore); })},
      {"mappingview", "info", "One mapping view", {viewId},
       record<_HuaweiLUNMappingView>(
           [](Call& c, auto& out) { return c.array.getMappingViewInfoByID(out, c["mapping-view-id"], c.vstore); })},
      {"mappingview", "create", "Create a mapping view (one of that name already there is adopted)",
       {text("name", "Mapping view name")},
       record<_HuaweiLUNMappingView>(
           [](Call& c, auto& out) { return c.array.createMappingView(out, c["name"], c.vstore); })},
      {"mappingview", "delete", "Delete a mapping view", {viewId},
       action([](Call& c) { return c.array.deleteMappingView(c["mapping-view-id"], c.vstore); })},
      {"mappingview", "add-host-group", "Attach a host group (one attached already counts as added)",
       {viewId, hostGroupId},
       action([](Call& c) {
         return c.array.addHostGroupToMappingView(c["host-group-id"], c["mapping-view-id"], c.vstore);
       })},
      {"mappingview", "add-lun-group", "Attach a LUN group (one attached already counts as added)",
       {viewId, lunGroupId},
       action([](Call& c) {
         return c.array.addLunGroupToMappingView(c["lun-group-id"], c["mapping-view-id"], c.vstore);
       })},
      {"mappingview", "host-groups", "The host groups of a mapping view", {viewId},
       listOf<_HuaweiHostGroupInfo, std::vector>([](Call& c, auto& out) {
         return c.array.getHostGroupAssociatedToMappingView(c["mapping-view-id"], out, c.vstore);
       })},
      {"mappingview", "lun-groups", "The LUN groups of a mapping view", {viewId},
       listOf<_HuaweiLunGroupInfo, std::vector>([](Call& c, auto& out) {
         return c.array.getLunGroupAssociatedToMappingView(c["mapping-view-id"], out, c.vstore);
       })},
      {"mappingview", "remove-host-group", "Detach a host group (a view or group already gone counts as removed)",
       {viewId, hostGroupId},
       action([](Call& c) {
         return c.array.removeHostGroupAssociatedToMappingView(c["host-group-id"], c["mapping-view-id"], c.vstore);
       })},
      {"mappingview", "remove-lun-group", "Detach a LUN group (a view or group already gone counts as removed)",
       {viewId, lunGroupId},
       action([](Call& c) {
         return c.array.removeLunGroupAssociatedToMappingView(c["lun-group-id"], c["mapping-view-id"], c.vstore);
       })},
  };
}

}  // namespace zrarray
