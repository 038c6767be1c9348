// LUNs and storage pools: POST lun, PUT lun/<id>, DELETE lun/<id>, GET lun/associate,
// GET storagepool[/<id>]. Pools are seeded by tests; a LUN is made in an existing pool.
#pragma once

#include "store/ResourceTable.h"

namespace arraysim {

struct ProvisioningResources {
  static constexpr char kLunType[] = "lun";
  static constexpr char kPoolType[] = "storagepool";

  static void Declare(ResourceTable& table);
};

}  // namespace arraysim
