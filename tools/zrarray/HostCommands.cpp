// host and hostgroup: initiators, the hosts they belong to, and the groups of hosts.
#include "Command.h"

namespace zrarray {

namespace {
bool IsIscsi(const Call& call) { return !call.args.flag("fc"); }
}  // namespace

std::vector<Command> HostCommands() {
  const Argument fc = flag("fc", "A Fibre Channel initiator (default: iSCSI)");
  const Argument initiatorId = text("initiator-id", "Initiator identifier (IQN or WWPN)");
  const Argument hostId = text("host-id", "Host identifier");
  const Argument hostGroupId = text("host-group-id", "Host group identifier");
  return {
      {"host", "initiator", "One initiator; its name is then the name of its host", {initiatorId, fc},
       record<_HuaweiInitiator>([](Call& c, auto& out) {
         return c.array.getInitiatorInfoFromID(out, c["initiator-id"], IsIscsi(c), c.vstore);
       })},
      {"host", "initiators", "Every initiator of the kind (none is a failure)", {fc},
       listOf<_HuaweiInitiator, std::vector>(
           [](Call& c, auto& out) { return c.array.getInitiatorInfo(out, IsIscsi(c), c.vstore); })},
      {"host", "of-initiator", "The host an initiator is bound to (empty when free)", {initiatorId, fc},
       value("hostId", [](Call& c, auto& out) {
         return c.array.getHostIDFromInitiatorID(c["initiator-id"], IsIscsi(c), out, c.vstore);
       })},
      {"host", "id", "Identifier of a host", {text("host-name", "Host name")},
       lookup("host", "host-name", value("hostId", [](Call& c, auto& out) {
                return c.array.getHostIDFromHostName(c["host-name"], out, c.vstore);
              }))},
      {"host", "create", "Create a host (one of that name already there is taken as created)",
       {text("host-name", "Host name"), flag("os-code-7", "Operating-system code 7 instead of 0")},
       record<_HuaweiLUNHostInfo>([](Call& c, auto& out) {
         return c.array.createHost(out, c["host-name"], c.vstore, c.args.flag("os-code-7"));
       })},
      {"host", "initiator-create", "Create an initiator, bound to a host or free; alreadyExists when it is there",
       {initiatorId, optionalText("host-id", "Host to bind it to"), fc},
       flagged<_HuaweiInitiator>("alreadyExists",
                                 [](Call& c, auto& out, bool& existed) {
                                   return c.array.createInitiator(out, c["initiator-id"], c["host-id"], IsIscsi(c),
                                                                  existed, c.vstore);
                                 })},
      {"host", "initiator-bind", "Bind an initiator to a host", {initiatorId, hostId, fc},
       action([](Call& c) {
         return c.array.updateInitiatorWithHostID(c["initiator-id"], c["host-id"], IsIscsi(c), c.vstore);
       })},

      {"hostgroup", "id", "Identifier of a host group", {text("host-group-name", "Host group name")},
       lookup("host group", "host-group-name", value("hostGroupId", [](Call& c, auto& out) {
                return c.array.getHostGroupIDFromName(c["host-group-name"], out, c.vstore);
              }))},
      {"hostgroup", "create", "Create a host group (one of that name already there is taken as created)",
       {text("host-group-name", "Host group name")},
       record<_HuaweiHostGroupInfo>(
           [](Call& c, auto& out) { return c.array.createHostGroup(out, c["host-group-name"], c.vstore); })},
      {"hostgroup", "add-host", "Put a host into a host group (one already in it counts as added)",
       {hostGroupId, hostId},
       action([](Call& c) { return c.array.addHostToHostGroup(c["host-group-id"], c["host-id"], c.vstore); })},
      {"hostgroup", "hosts", "The hosts of a host group", {hostGroupId},
       listOf<_HuaweiLUNHostInfo, std::vector>([](Call& c, auto& out) {
         return c.array.getHostAssociatedToHostGroup(c["host-group-id"], out, c.vstore);
       })},
      {"hostgroup", "has-host", "Succeeds when the host is in the group, fails otherwise", {hostGroupId, hostId},
       action([](Call& c) {
         return c.array.isHostAssociatedToHostGroup(c["host-group-id"], c["host-id"], c.vstore);
       })},
  };
}

}  // namespace zrarray
