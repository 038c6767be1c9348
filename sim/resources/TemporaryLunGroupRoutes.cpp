#include "resources/TemporaryLunGroupRoutes.h"

namespace arraysim {

void DeclareTemporaryLunGroupRoutes(ResourceTable& table) {
  table.add(ResourceRoute("POST", "lungroup/associate", "lungroup", Action::Associate)
                .associating({11, 27})
                .existsAs(codes::kAlreadyAssociated, "The object is already associated."));
  table.add(ResourceRoute("DELETE", "lungroup/associate", "lungroup", Action::Dissociate).associating({11, 27}));
  table.add(ResourceRoute("GET", "lungroup/associate", "lungroup", Action::ListAssociated));
}

}  // namespace arraysim
