// LUNs (read by identifier) and LUN snapshots with their states: created inactive, activated
// (all of a list or none), stopped, rolled back, copied and deleted.
#include "ArrayCodes.h"
#include "resources/StoreFamilies.h"

namespace arraysim {
namespace {

using storetype::kLun;
using storetype::kLunSnapshot;

// RUNNINGSTATUS of a snapshot.
constexpr char kActive[] = "41";
constexpr char kInactive[] = "43";
constexpr char kRollingBack[] = "44";

const ArrayError kWrongState{codes::kParameterIncorrect, "The entered parameter is incorrect."};
const ArrayError kAbsentSnapshot{codes::kSnapshotLunNotFound, "The snapshot does not exist."};
const ArrayError kNotInactive{codes::kSnapshotNotInactive, "The snapshot is not in the inactive state."};

// A snapshot or a copy takes its LUN's name as PARENTNAME and starts inactive.
std::optional<Reply> FromLun(RouteContext& c, const std::string& lunId) {
  const auto lun = c.visible(kLun, lunId);
  if (!lun) return c.fail({codes::kLunNotFound, "The LUN does not exist."});
  c.body["PARENTID"] = lunId;
  c.body["PARENTNAME"] = (*lun)["NAME"];
  c.body["RUNNINGSTATUS"] = kInactive;
  c.body.erase("ID");
  return std::nullopt;
}

std::optional<Reply> Snapshot(RouteContext& c) { return FromLun(c, c.body.value("PARENTID", std::string())); }

// A copy of a snapshot is a new inactive snapshot of the same LUN.
std::optional<Reply> Copy(RouteContext& c) {
  const auto source = c.visible(kLunSnapshot, c.body.value("ID", std::string()));
  if (!source) return c.fail(kAbsentSnapshot);
  return FromLun(c, (*source)["PARENTID"]);
}

// All of the list, or none: every snapshot must exist and be inactive.
std::optional<Reply> Activate(RouteContext& c) {
  const auto list = c.body.find("SNAPSHOTLIST");
  if (list == c.body.end() || !list->is_array() || list->empty()) return c.fail(kWrongState);
  std::vector<std::string> ids;
  for (const auto& item : *list) {
    const std::string id = item.is_string() ? item.get<std::string>() : item.dump();
    const auto snapshot = c.visible(kLunSnapshot, id);
    if (!snapshot) return c.fail(c.route.absent);
    if ((*snapshot)["RUNNINGSTATUS"] != kInactive) return c.fail(kNotInactive);
    ids.push_back(id);
  }
  for (const auto& id : ids)
    c.store.update(kLunSnapshot, id, {{"RUNNINGSTATUS", kActive}});
  return Reply::Object(nlohmann::json::object());
}

// A rollback needs an active snapshot and a speed of 1 to 4; the row then sets its state.
std::optional<Reply> Rollback(RouteContext& c) {
  const auto snapshot = c.visible();
  if (!snapshot) return c.fail(c.route.absent);
  if ((*snapshot)["RUNNINGSTATUS"] != kActive) return c.fail(kWrongState);
  if (c.body.contains("ROLLBACKSPEED")) {
    const std::string speed = c.body.value("ROLLBACKSPEED", std::string());
    if (speed.size() != 1 || speed < "1" || speed > "4") return c.fail(kWrongState);
  }
  return std::nullopt;
}

}  // namespace

void DeclareLunSnapshots(ResourceTable& table) {
  // The rows that name a snapshot answer its absence in the snapshot's words.
  const auto named = [](const char* method, const char* path, Action action) {
    return ResourceRoute(method, path, kLunSnapshot, action).absentAs(kAbsentSnapshot);
  };
  table.add(ResourceRoute("GET", "lun/{}", kLun, Action::Get).absentAs(codes::kLunNotFound, "The LUN does not exist."));
  table.add(ResourceRoute("POST", "snapshot", kLunSnapshot, Action::Create)
                .requiring({"PARENTID", "NAME"})
                .hooked(Snapshot));
  table.add(ResourceRoute("POST", "snapshot/createcopy", kLunSnapshot, Action::Create)
                .requiring({"ID", "NAME"})
                .hooked(Copy));
  table.add(ResourceRoute("GET", "snapshot", kLunSnapshot, Action::List));
  table.add(named("GET", "snapshot/{}", Action::Get));
  table.add(named("DELETE", "snapshot/{}", Action::Delete));
  table.add(named("POST", "snapshot/activate", Action::Custom).hooked(Activate));
  table.add(named("PUT", "snapshot/stop", Action::Set).setting({{"RUNNINGSTATUS", kInactive}}));
  table.add(named("PUT", "snapshot/rollback", Action::Set).setting({{"RUNNINGSTATUS", kRollingBack}}).hooked(Rollback));
}

}  // namespace arraysim
