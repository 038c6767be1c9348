// LUN groups and their members, LUNs (11) and snapshot LUNs (27).
#include "ArrayCodes.h"
#include "resources/StoreFamilies.h"

namespace arraysim {

void DeclareLunGroups(ResourceTable& table) {
  using storetype::kLunGroup;
  const std::vector<int> members{11, 27};
  table.add(ResourceRoute("POST", "lungroup", kLunGroup, Action::Create).requiring({"NAME"}));
  table.add(ResourceRoute("GET", "lungroup", kLunGroup, Action::List));
  table.add(ResourceRoute("DELETE", "lungroup/{}", kLunGroup, Action::Delete));
  table.add(ResourceRoute("POST", "lungroup/associate", kLunGroup, Action::Associate)
                .associating(members)
                .existsAs(codes::kAlreadyInLunGroup, "The object is already in the LUN group."));
  table.add(ResourceRoute("DELETE", "lungroup/associate", kLunGroup, Action::Dissociate).associating(members));
  // The groups that hold a LUN, or that a mapping view holds.
  table.add(ResourceRoute("GET", "lungroup/associate", kLunGroup, Action::ListAssociated));
  table.add(ResourceRoute("GET", "snapshot/associate", storetype::kLunSnapshot, Action::ListAssociated));
}

}  // namespace arraysim
