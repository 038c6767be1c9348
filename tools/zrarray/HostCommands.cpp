// host and hostgroup: initiators, the hosts they belong to, and the groups of hosts.
#include "Calls.h"

namespace zrarray {

std::vector<Command> HostCommands() {
  // The library asks whether an initiator is iSCSI.
  const Unless iscsi = unless(flag("fc", "A Fibre Channel initiator (default: iSCSI)"));
  const Argument initiatorId = text("initiator-id", "Initiator identifier (IQN or WWPN)");
  const Argument hostId = text("host-id", "Host identifier");
  const Argument hostName = text("host-name", "Host name");
  const Argument hostGroupId = HostGroupIdArgument();
  const Argument hostGroupName = text("host-group-name", "Host group name");
  return {
      {"host", "initiator", "One initiator; its name is then the name of its host",
       calls(&Array::getInitiatorInfoFromID, printed, initiatorId, iscsi, vstore)},
      {"host", "initiators", "Every initiator of the kind (none is a failure)",
       calls(&Array::getInitiatorInfo, printed, iscsi, vstore)},
      {"host", "of-initiator", "The host an initiator is bound to (empty when free)",
       calls(&Array::getHostIDFromInitiatorID, initiatorId, iscsi, printedAs("hostId"), vstore)},
      {"host", "id", "Identifier of a host",
       lookup("host", "host-name", calls(&Array::getHostIDFromHostName, hostName, printedAs("hostId"), vstore))},
      {"host", "create", "Create a host (one of that name already there is taken as created)",
       calls(&Array::createHost, printed, hostName, vstore, flag("os-code-7", "Operating-system code 7 instead of 0"))},
      {"host", "initiator-create", "Create an initiator, bound to a host or free; alreadyExists when it is there",
       calls(&Array::createInitiator, printed, initiatorId, optionalText("host-id", "Host to bind it to"), iscsi,
             printedAs("alreadyExists"), vstore)},
      {"host", "initiator-bind", "Bind an initiator to a host",
       calls(&Array::updateInitiatorWithHostID, initiatorId, hostId, iscsi, vstore)},

      {"hostgroup", "id", "Identifier of a host group",
       lookup("host group", "host-group-name",
              calls(&Array::getHostGroupIDFromName, hostGroupName, printedAs("hostGroupId"), vstore))},
      {"hostgroup", "create", "Create a host group (one of that name already there is taken as created)",
       calls(&Array::createHostGroup, printed, hostGroupName, vstore)},
      {"hostgroup", "add-host", "Put a host into a host group (one already in it counts as added)",
       calls(&Array::addHostToHostGroup, hostGroupId, hostId, vstore)},
      {"hostgroup", "hosts", "The hosts of a host group",
       calls(&Array::getHostAssociatedToHostGroup, hostGroupId, printed, vstore)},
      {"hostgroup", "has-host", "Succeeds when the host is in the group, fails otherwise",
       calls(&Array::isHostAssociatedToHostGroup, hostGroupId, hostId, vstore)},
  };
}

}  // namespace zrarray
