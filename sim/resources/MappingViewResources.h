// Mapping views, each holding at most one host group (14) and one LUN group (256): rows of the
// object store, with the array's own codes for what is attached already or gone.
#pragma once

#include "store/ResourceTable.h"

namespace arraysim {

struct MappingViewResources {
  static void Declare(ResourceTable& table);
  static constexpr const char* kType = "mappingview";
};

}  // namespace arraysim
