// Membership of LUNs in LUN groups until the LUN-group family is in place.
#pragma once

#include "store/ResourceTable.h"

namespace arraysim {

void DeclareTemporaryLunGroupRoutes(ResourceTable& table);

}  // namespace arraysim
