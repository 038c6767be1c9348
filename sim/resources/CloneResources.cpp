#include "resources/CloneResources.h"

#include <algorithm>
#include <string>

#include "resources/ProvisioningResources.h"
#include "store/StoreActions.h"

namespace arraysim {
namespace {

const char kSync[] = "23";
const char kNormal[] = "1";
const char kSplit[] = "26";

std::string Text(const nlohmann::json& body, const char* key) {
  const auto it = body.find(key);
  return it != body.end() && it->is_string() ? it->get<std::string>() : std::string();
}

// Adds or drops a clone in the primary LUN's SPLITMIRRORIDS, a JSON array sent as text.
void UpdatePrimary(ObjectStore& store, const std::string& lunId, const std::string& cloneId, bool add) {
  const auto lun = store.get(ProvisioningResources::kLunType, lunId);
  if (!lun) return;
  auto ids = nlohmann::json::parse(lun->value("SPLITMIRRORIDS", "[]"), nullptr, false);
  if (!ids.is_array()) ids = nlohmann::json::array();
  if (add) {
    ids.push_back(cloneId);
  } else {
    ids.erase(std::remove(ids.begin(), ids.end(), nlohmann::json(cloneId)), ids.end());
  }
  store.update(ProvisioningResources::kLunType, lunId, {{"SPLITMIRRORIDS", ids.dump()}});
}

// The pair named by ID and PARENTID of the body, when the clone has that secondary LUN.
std::optional<Record> Pair(RouteContext& c) {
  auto target = c.store.get(CloneResources::kTargetType, Text(c.body, "ID"));
  if (!target || (*target)["PARENTID"] != Text(c.body, "PARENTID")) return std::nullopt;
  return target;
}

Reply AddTarget(RouteContext& c) {
  for (const char* key : {"ID", "PARENTID", "SPEED", "RESUMEPOLICY", "FIRSTSYNC"}) {
    if (Text(c.body, key).empty()) return c.fail({codes::kParameterIncorrect, "The entered parameter is incorrect."});
  }
  const auto clone = c.visible(CloneResources::kCloneType, Text(c.body, "PARENTID"));
  const auto lun = c.visible(ProvisioningResources::kLunType, Text(c.body, "ID"));
  if (!clone || !lun) return c.fail(c.route.absent);
  if ((*clone)["PRILUNID"] == (*lun)["ID"] || c.store.get(CloneResources::kTargetType, (*lun)["ID"])) {
    return c.fail({codes::kAlreadyAssociated, "The LUN is already a member of a clone."});
  }
  const bool firstSync = Text(c.body, "FIRSTSYNC") == "1";
  c.store.insert(CloneResources::kTargetType, {{"ID", (*lun)["ID"]},
                                               {"NAME", (*lun)["NAME"]},
                                               {"PARENTID", (*clone)["ID"]},
                                               {"SPEED", Text(c.body, "SPEED")},
                                               {"RESUMEPOLICY", Text(c.body, "RESUMEPOLICY")},
                                               {"RUNNINGSTATUS", firstSync ? kSync : kSplit},
                                               {"PROCESS", "0"}});
  return Reply::Object(nlohmann::json::object());
}

// Reading the pairs is what lets a synchronisation move on.
Reply ListTargets(RouteContext& c) {
  const auto parent = c.query.value("PARENTID");
  if (!parent || !c.visible(CloneResources::kCloneType, *parent)) return c.fail(c.route.absent);
  nlohmann::json pairs = nlohmann::json::array();
  for (auto target : c.store.list(CloneResources::kTargetType)) {
    if (target["PARENTID"] != *parent) continue;
    if (target["RUNNINGSTATUS"] == kSync) {
      const int progress = std::min(100, std::stoi(target["PROCESS"].get<std::string>()) + CloneResources::kProgressPerRead);
      target["PROCESS"] = std::to_string(progress);
      if (progress == 100) target["RUNNINGSTATUS"] = kNormal;
      c.store.update(CloneResources::kTargetType, target["ID"], target);
    }
    pairs.push_back(target);
  }
  return Reply::List(pairs);
}

// A pair in state `from` moves to `to`; the array refuses any other.
RouteHook Transition(const char* from, const char* to) {
  return [from, to](RouteContext& c) -> std::optional<Reply> {
    const auto pair = Pair(c);
    if (!pair) return c.fail(c.route.absent);
    if ((*pair)["RUNNINGSTATUS"] != from) return c.fail({codes::kPairStateWrong, "The pair is in the wrong state."});
    c.store.update(CloneResources::kTargetType, (*pair)["ID"], {{"RUNNINGSTATUS", to}, {"PROCESS", "0"}});
    return Reply::Object(nlohmann::json::object());
  };
}

}  // namespace

void CloneResources::Declare(ResourceTable& table) {
  const auto createClone = [tableOfRows = &table](RouteContext& c) -> std::optional<Reply> {
    if (!c.visible(ProvisioningResources::kLunType, Text(c.body, "PRILUNID"))) return c.fail(c.route.absent);
    Reply reply = RunAction(c, *tableOfRows);
    if (reply.code == codes::kSuccess) UpdatePrimary(c.store, Text(c.body, "PRILUNID"), reply.data["ID"], true);
    return reply;
  };
  const auto deleteClone = [](RouteContext& c) -> std::optional<Reply> {
    const auto clone = c.visible();
    if (!clone) return c.fail(c.route.absent);
    for (const auto& target : c.store.list(kTargetType)) {
      if (target["PARENTID"] == c.id) return c.fail({codes::kObjectInUse, "The clone still has secondary LUNs."});
    }
    c.store.erase(kCloneType, c.id);
    UpdatePrimary(c.store, (*clone)["PRILUNID"], c.id, false);
    return Reply::Object(nlohmann::json::object());
  };
  const auto removeTarget = [](RouteContext& c) -> std::optional<Reply> {
    const auto pair = Pair(c);
    if (!pair) return c.fail(c.route.absent);
    c.store.erase(kTargetType, (*pair)["ID"]);
    return Reply::Object(nlohmann::json::object());
  };

  table.add(ResourceRoute("POST", "splitmirror", kCloneType, Action::Create)
                .requiring({"NAME", "PRILUNID"})
                .hooked(createClone));
  table.add(ResourceRoute("GET", "splitmirror/{}", kCloneType, Action::Get));
  table.add(ResourceRoute("DELETE", "splitmirror/{}", kCloneType, Action::Custom).hooked(deleteClone));
  table.add(ResourceRoute("GET", "SPLITMIRRORTARGETLUN/targetLUN", kTargetType, Action::Custom).hooked(ListTargets));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/addTargetLUN", kTargetType, Action::Custom).hooked(AddTarget));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/split", kTargetType, Action::Custom)
                .hooked(Transition(kNormal, kSplit)));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/syn", kTargetType, Action::Custom)
                .hooked(Transition(kSplit, kSync)));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/remove", kTargetType, Action::Custom).hooked(removeTarget));
}

}  // namespace arraysim
