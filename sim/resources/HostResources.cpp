// Hosts, iSCSI and FC initiators (identifiers given by the caller, bound to a host through
// PARENTID or free), host groups, and hosts in host groups.
#include "ArrayCodes.h"
#include "resources/StoreFamilies.h"

namespace arraysim {
namespace {

// An initiator names its host by PARENTID; the array answers the host's name beside it. A free
// initiator has neither.
std::optional<Reply> BindToHost(RouteContext& c) {
  const std::string hostId = c.body.value("PARENTID", std::string());
  if (hostId.empty()) {
    c.body["ISFREE"] = "true";
    return std::nullopt;
  }
  const auto host = c.visible(storetype::kHost, hostId);
  if (!host) return c.fail({codes::kHostNotFound, "The host does not exist."});
  c.body["PARENTNAME"] = (*host)["NAME"];
  c.body["ISFREE"] = "false";
  return std::nullopt;
}

void DeclareInitiators(ResourceTable& table, const char* type) {
  const std::string path = type;
  AnswerStyle list;
  list.emptyList = EmptyListAnswer::EmptyArray;
  table.add(ResourceRoute("POST", path, type, Action::Create)
                .requiring({"ID"}).givenId().uniqueBy("")
                .existsAs(codes::kInitiatorExists, "The initiator already exists.").hooked(BindToHost));
  table.add(ResourceRoute("GET", path, type, Action::List).shaped(list));
  table.add(ResourceRoute("GET", path + "/{}", type, Action::Get)
                .absentAs(codes::kInitiatorNotFound, "The initiator does not exist."));
  table.add(ResourceRoute("PUT", path + "/{}", type, Action::Modify)
                .absentAs(codes::kInitiatorNotFound, "The initiator does not exist.").uniqueBy("").hooked(BindToHost));
}

}  // namespace

void DeclareHosts(ResourceTable& table) {
  using namespace storetype;
  DeclareInitiators(table, kIscsiInitiator);
  DeclareInitiators(table, kFcInitiator);
  table.add(ResourceRoute("POST", "host", kHost, Action::Create)
                .requiring({"NAME"}).withDefaults({{"OPERATIONSYSTEM", "0"}}));
  table.add(ResourceRoute("GET", "host", kHost, Action::List));
  table.add(ResourceRoute("GET", "host/associate", kHost, Action::ListAssociated));
  table.add(ResourceRoute("POST", "hostgroup", kHostGroup, Action::Create).requiring({"NAME"}));
  table.add(ResourceRoute("GET", "hostgroup", kHostGroup, Action::List));
  table.add(ResourceRoute("POST", "hostgroup/associate", kHostGroup, Action::Associate)
                .associating({21}).existsAs(codes::kHostInGroup, "The host is already in the host group."));
}

}  // namespace arraysim
