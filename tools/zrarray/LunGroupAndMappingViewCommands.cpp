// lungroup and mappingview: groups of LUNs and snapshot LUNs, and the views that show them to host groups.
#include "Calls.h"

namespace zrarray {

std::vector<Command> LunGroupAndMappingViewCommands() {
  const Argument lunGroupId = text("lun-group-id", "LUN group identifier");
  const Argument lunGroupName = text("lun-group-name", "LUN group name");
  const Argument hostGroupId = HostGroupIdArgument();
  const Argument viewId = text("mapping-view-id", "Mapping view identifier");
  const Argument viewName = text("name", "Mapping view name");
  const Argument lunId = LunIdArgument();
  const Argument snapshotId = SnapshotLunIdArgument();
  return {
      {"lungroup", "id", "Identifier of the LUN group of that exact name",
       calls(&Array::getLUNGroupIDFromName, lunGroupName, printedAs("lunGroupId"), vstore)},
      {"lungroup", "create", "Create a LUN group (one of that name already there is adopted)",
       calls(&Array::createLUNGroup, printed, lunGroupName, vstore,
             orElse(number("app-type", "Application type, the array's number"), "0"))},
      {"lungroup", "delete", "Delete a LUN group", calls(&Array::deleteLunGroup, lunGroupId, vstore)},
      {"lungroup", "snapshots", "The snapshot LUNs of a LUN group",
       calls(&Array::getSnapshotLunAssociatedToLunGroup, lunGroupId, printed, vstore)},
      {"lungroup", "add-snapshot", "Put a snapshot LUN into a LUN group (one already in it counts as added)",
       calls(&Array::addSnapshotLuntoLunGroup, lunGroupId, snapshotId, vstore)},
      {"lungroup", "has-snapshot", "Succeeds when the snapshot LUN is in the group, fails otherwise",
       calls(&Array::isSnapshotLunAssociatedToLunGroup, lunGroupId, snapshotId, vstore)},
      {"lungroup", "remove-snapshot", "Take a snapshot LUN out of a LUN group",
       calls(&Array::removeSnapshotLunFromLunGroup, lunGroupId, snapshotId, vstore)},
      {"lungroup", "luns", "The LUNs of a LUN group", calls(&Array::getLunAssociatedToLunGroup, lunGroupId, printed)},
      {"lungroup", "add-lun", "Put a LUN into a LUN group (one already in it counts as added)",
       calls(&Array::addLuntoLunGroup, lunGroupId, lunId, vstore)},
      {"lungroup", "has-lun", "Succeeds when the LUN is in the group, fails otherwise",
       calls(&Array::isLunAssociatedToLunGroup, lunGroupId, lunId)},
      {"lungroup", "remove-lun", "Take a LUN out of a LUN group",
       calls(&Array::removeLunFromLunGroup, lunGroupId, lunId, vstore)},
      {"lungroup", "views", "The mapping views a LUN group is in",
       calls(&Array::getMappingViewAssociatedToLunGroup, lunGroupId, printed, vstore)},

      {"mappingview", "find", "A mapping view by name",
       calls(&Array::getMappingViewInfoByName, printed, viewName, vstore)},
      {"mappingview", "info", "One mapping view", calls(&Array::getMappingViewInfoByID, printed, viewId, vstore)},
      {"mappingview", "create", "Create a mapping view (one of that name already there is adopted)",
       calls(&Array::createMappingView, printed, viewName, vstore)},
      {"mappingview", "delete", "Delete a mapping view", calls(&Array::deleteMappingView, viewId, vstore)},
      {"mappingview", "add-host-group", "Attach a host group (one attached already counts as added)",
       shownFirst(viewId, calls(&Array::addHostGroupToMappingView, hostGroupId, viewId, vstore))},
      {"mappingview", "add-lun-group", "Attach a LUN group (one attached already counts as added)",
       shownFirst(viewId, calls(&Array::addLunGroupToMappingView, lunGroupId, viewId, vstore))},
      {"mappingview", "host-groups", "The host groups of a mapping view",
       calls(&Array::getHostGroupAssociatedToMappingView, viewId, printed, vstore)},
      {"mappingview", "lun-groups", "The LUN groups of a mapping view",
       calls(&Array::getLunGroupAssociatedToMappingView, viewId, printed, vstore)},
      {"mappingview", "remove-host-group", "Detach a host group (a view or group already gone counts as removed)",
       shownFirst(viewId, calls(&Array::removeHostGroupAssociatedToMappingView, hostGroupId, viewId, vstore))},
      {"mappingview", "remove-lun-group", "Detach a LUN group (a view or group already gone counts as removed)",
       shownFirst(viewId, calls(&Array::removeLunGroupAssociatedToMappingView, lunGroupId, viewId, vstore))},
  };
}

}  // namespace zrarray
