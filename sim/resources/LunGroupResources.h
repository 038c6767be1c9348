// LUN groups and their members, LUNs (11) and snapshot LUNs (27): rows of the object store.
#pragma once

#include "store/ResourceTable.h"

namespace arraysim {

struct LunGroupResources {
  static void Declare(ResourceTable& table);
  static constexpr const char* kType = "lungroup";
};

}  // namespace arraysim
