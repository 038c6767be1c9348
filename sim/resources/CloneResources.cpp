// Clones (split mirrors) and their secondary LUNs: POST splitmirror, GET and DELETE
// splitmirror/<id>, GET SPLITMIRRORTARGETLUN/targetLUN?PARENTID=, and the PUTs addTargetLUN,
// split, syn and remove of SPLITMIRRORTARGETLUN.
//
// A secondary LUN's pair moves as on a real array: added with first sync it synchronises
// (RUNNINGSTATUS "23"), its PROCESS rising on every read until it is normal ("1", "100"); a split
// pair is "26"; a sync of a split pair starts again from "0". The primary LUN's SPLITMIRRORIDS
// lists its clones.
#include <algorithm>
#include <string>

#include "ArrayCodes.h"
#include "resources/StoreFamilies.h"
#include "store/StoreActions.h"

namespace arraysim {
namespace {

using storetype::kClone;
using storetype::kCloneTarget;
using storetype::kLun;

// How far a synchronising pair moves on each read.
constexpr int kProgressPerRead = 40;

const char kSync[] = "23";
const char kNormal[] = "1";
const char kSplit[] = "26";

// Adds or drops a clone in the primary LUN's SPLITMIRRORIDS, a JSON array sent as text.
void UpdatePrimary(ObjectStore& store, const std::string& lunId, const std::string& cloneId, bool add) {
  const auto lun = store.get(kLun, lunId);
  if (!lun) return;
  auto ids = nlohmann::json::parse(lun->value("SPLITMIRRORIDS", "[]"), nullptr, false);
  if (!ids.is_array()) ids = nlohmann::json::array();
  if (add) {
    ids.push_back(cloneId);
  } else {
    ids.erase(std::remove(ids.begin(), ids.end(), nlohmann::json(cloneId)), ids.end());
  }
  store.update(kLun, lunId, {{"SPLITMIRRORIDS", ids.dump()}});
}

// The pair named by ID and PARENTID of the body, when the clone has that secondary LUN.
std::optional<Record> Pair(RouteContext& c) {
  auto target = c.store.get(kCloneTarget, TextMember(c.body, "ID"));
  if (!target || (*target)["PARENTID"] != TextMember(c.body, "PARENTID")) return std::nullopt;
  return target;
}

Reply AddTarget(RouteContext& c) {
  for (const char* key : {"ID", "PARENTID", "SPEED", "RESUMEPOLICY", "FIRSTSYNC"}) {
    if (TextMember(c.body, key).empty()) {
      return c.fail({codes::kParameterIncorrect, "The entered parameter is incorrect."});
    }
  }
  const auto clone = c.visible(kClone, TextMember(c.body, "PARENTID"));
  const auto lun = c.visible(kLun, TextMember(c.body, "ID"));
  if (!clone || !lun) return c.fail(c.route.absent);
  if ((*clone)["PRILUNID"] == (*lun)["ID"] || c.store.get(kCloneTarget, (*lun)["ID"])) {
    return c.fail({codes::kAlreadyAssociated, "The LUN is already a member of a clone."});
  }
  const bool firstSync = TextMember(c.body, "FIRSTSYNC") == "1";
  c.store.insert(kCloneTarget, {{"ID", (*lun)["ID"]},
                                {"NAME", (*lun)["NAME"]},
                                {"PARENTID", (*clone)["ID"]},
                                {"SPEED", TextMember(c.body, "SPEED")},
                                {"RESUMEPOLICY", TextMember(c.body, "RESUMEPOLICY")},
                                {"RUNNINGSTATUS", firstSync ? kSync : kSplit},
                                {"PROCESS", "0"}});
  return Reply::Object(nlohmann::json::object());
}

// Reading the pairs is what lets a synchronisation move on.
Reply ListTargets(RouteContext& c) {
  const auto parent = c.query.value("PARENTID");
  if (!parent || !c.visible(kClone, *parent)) return c.fail(c.route.absent);
  nlohmann::json pairs = nlohmann::json::array();
  for (auto target : c.store.list(kCloneTarget)) {
    if (target["PARENTID"] != *parent) continue;
    if (target["RUNNINGSTATUS"] == kSync) {
      const int progress = std::min(100, std::stoi(target["PROCESS"].get<std::string>()) + kProgressPerRead);
      target["PROCESS"] = std::to_string(progress);
      if (progress == 100) target["RUNNINGSTATUS"] = kNormal;
      c.store.update(kCloneTarget, target["ID"], target);
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
    c.store.update(kCloneTarget, (*pair)["ID"], {{"RUNNINGSTATUS", to}, {"PROCESS", "0"}});
    return Reply::Object(nlohmann::json::object());
  };
}

}  // namespace

void DeclareClones(ResourceTable& table) {
  const auto createClone = [tableOfRows = &table](RouteContext& c) -> std::optional<Reply> {
    if (!c.visible(kLun, TextMember(c.body, "PRILUNID"))) return c.fail(c.route.absent);
    Reply reply = RunAction(c, *tableOfRows);
    if (reply.code == codes::kSuccess) UpdatePrimary(c.store, TextMember(c.body, "PRILUNID"), reply.data["ID"], true);
    return reply;
  };
  const auto deleteClone = [](RouteContext& c) -> std::optional<Reply> {
    const auto clone = c.visible();
    if (!clone) return c.fail(c.route.absent);
    for (const auto& target : c.store.list(kCloneTarget)) {
      if (target["PARENTID"] == c.id) return c.fail({codes::kObjectInUse, "The clone still has secondary LUNs."});
    }
    c.store.erase(kClone, c.id);
    UpdatePrimary(c.store, (*clone)["PRILUNID"], c.id, false);
    return Reply::Object(nlohmann::json::object());
  };
  const auto removeTarget = [](RouteContext& c) -> std::optional<Reply> {
    const auto pair = Pair(c);
    if (!pair) return c.fail(c.route.absent);
    c.store.erase(kCloneTarget, (*pair)["ID"]);
    return Reply::Object(nlohmann::json::object());
  };

  table.add(ResourceRoute("POST", "splitmirror", kClone, Action::Create)
                .requiring({"NAME", "PRILUNID"})
                .hooked(createClone));
  table.add(ResourceRoute("GET", "splitmirror/{}", kClone, Action::Get));
  table.add(ResourceRoute("DELETE", "splitmirror/{}", kClone, Action::Custom).hooked(deleteClone));
  table.add(ResourceRoute("GET", "SPLITMIRRORTARGETLUN/targetLUN", kCloneTarget, Action::Custom).hooked(ListTargets));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/addTargetLUN", kCloneTarget, Action::Custom).hooked(AddTarget));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/split", kCloneTarget, Action::Custom)
                .hooked(Transition(kNormal, kSplit)));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/syn", kCloneTarget, Action::Custom)
                .hooked(Transition(kSplit, kSync)));
  table.add(ResourceRoute("PUT", "SPLITMIRRORTARGETLUN/remove", kCloneTarget, Action::Custom).hooked(removeTarget));
}

}  // namespace arraysim
