// Mapping views, each holding at most one host group (14) and one LUN group (256), with the
// array's own codes for what is attached already or gone.
#include "ArrayCodes.h"
#include "resources/StoreFamilies.h"
#include "store/StoreActions.h"

namespace arraysim {
namespace {

struct GroupSide {
  const char* typeNumber;
  const char* type;
  long long inView;  // the view holds this group already
  long long absent;
};

constexpr GroupSide kSides[] = {{"14", storetype::kHostGroup, codes::kHostGroupInView, codes::kHostGroupNotFound},
                                {"256", storetype::kLunGroup, codes::kLunGroupInView, codes::kObjectNotFound}};

std::string BodyText(const RouteContext& c, const char* key) {
  const auto it = c.body.find(key);
  if (it == c.body.end()) return std::string();
  const auto value = AsArrayValue(*it);
  return value.is_string() ? value.get<std::string>() : std::string();
}

// The view's codes before the generic association runs: a view or group that is gone, a group
// attached already, a second group of one kind.
RouteHook ViewAssociation(bool attach) {
  return [attach](RouteContext& c) -> std::optional<Reply> {
    const std::string typeNumber = BodyText(c, "ASSOCIATEOBJTYPE");
    for (const GroupSide& side : kSides) {
      if (typeNumber != side.typeNumber) continue;
      if (!c.visible()) return Reply::Error(codes::kMappingViewNotFound, "The mapping view does not exist.");
      const std::string groupId = BodyText(c, "ASSOCIATEOBJID");
      if (!c.visible(side.type, groupId)) return Reply::Error(side.absent, "The group does not exist.");
      if (!attach) return std::nullopt;
      const ObjectRef view{storetype::kMappingView, c.id};
      if (c.store.associated(view, {side.type, groupId})) {
        return Reply::Error(side.inView, "The group is already in the mapping view.");
      }
      if (!c.store.associatedWith(view, side.type).empty()) {
        return Reply::Error(codes::kParameterIncorrect, "The mapping view holds a group of this kind already.");
      }
      return std::nullopt;
    }
    return std::nullopt;
  };
}

}  // namespace

void DeclareMappingViews(ResourceTable& table) {
  using storetype::kMappingView;
  const std::vector<int> groups{14, 256};
  table.add(ResourceRoute("POST", "mappingview", kMappingView, Action::Create).requiring({"NAME"}));
  table.add(ResourceRoute("GET", "mappingview", kMappingView, Action::List));
  table.add(ResourceRoute("DELETE", "mappingview/{}", kMappingView, Action::Delete)
                .absentAs(codes::kMappingViewNotFound, "The mapping view does not exist."));
  table.add(ResourceRoute("PUT", "mappingview/create_associate", kMappingView, Action::Associate)
                .associating(groups)
                .hooked(ViewAssociation(true)));
  table.add(ResourceRoute("PUT", "mappingview/remove_associate", kMappingView, Action::Dissociate)
                .associating(groups)
                .notAssociatedAs(codes::kParameterIncorrect, "The group is not in the mapping view.")
                .hooked(ViewAssociation(false)));
  // The views that hold a LUN group, and the host groups that a view holds.
  table.add(ResourceRoute("GET", "mapping/associate", kMappingView, Action::ListAssociated));
  table.add(ResourceRoute("GET", "hostgroup/associate", storetype::kHostGroup, Action::ListAssociated));
}

}  // namespace arraysim
