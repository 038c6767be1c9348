#include "resources/LunGroupResources.h"

namespace arraysim {

void LunGroupResources::Declare(ResourceTable& table) {
  const std::vector<int> members{11, 27};
  table.add(ResourceRoute("POST", "lungroup", kType, Action::Create).requiring({"NAME"}));
  table.add(ResourceRoute("GET", "lungroup", kType, Action::List));
  table.add(ResourceRoute("DELETE", "lungroup/{}", kType, Action::Delete));
  table.add(ResourceRoute("POST", "lungroup/associate", kType, Action::Associate)
                .associating(members)
                .existsAs(codes::kAlreadyInLunGroup, "The object is already in the LUN group."));
  table.add(ResourceRoute("DELETE", "lungroup/associate", kType, Action::Dissociate).associating(members));
  // The groups that hold a LUN, or that a mapping view holds.
  table.add(ResourceRoute("GET", "lungroup/associate", kType, Action::ListAssociated));
  table.add(ResourceRoute("GET", "snapshot/associate", "snapshot", Action::ListAssociated));
}

}  // namespace arraysim
