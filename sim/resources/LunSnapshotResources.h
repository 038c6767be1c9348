// LUNs (read by identifier) and LUN snapshots with their states: created inactive, activated
// (all of a list or none), stopped, rolled back, copied and deleted. Records of the object store;
// tests seed LUNs with sim.store().insert(LunSnapshotResources::kLun, {...}), SPLITMIRRORIDS as the text
// of a JSON array, as the array sends it.
#pragma once

#include "store/ResourceTable.h"

namespace arraysim {

namespace codes {
constexpr long long kLunNotFound = 1077936859;
constexpr long long kSnapshotLunNotFound = 1077937880;
constexpr long long kSnapshotNotInactive = 1077937889;
}  // namespace codes

struct LunSnapshotResources {
  static void Declare(ResourceTable& table);

  static constexpr const char* kLun = "lun";
  static constexpr const char* kSnapshot = "snapshot";
  // RUNNINGSTATUS of a snapshot.
  static constexpr const char* kActive = "41";
  static constexpr const char* kInactive = "43";
  static constexpr const char* kRollingBack = "44";
};

}  // namespace arraysim
