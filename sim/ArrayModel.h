// The array's state: every resource family, behind one lock. Handlers run under the lock; the
// families' own methods take it too (it is recursive), so tests may call them at any time.
#pragma once

#include <mutex>
#include <string>

#include "http/Router.h"
#include "resources/ChangeListResources.h"
#include "resources/FileSystemResources.h"
#include "resources/InterfaceResources.h"
#include "resources/SnapshotResources.h"
#include "resources/SystemResources.h"

namespace arraysim {

class ArrayModel {
 public:
  explicit ArrayModel(const std::string& deviceId);

  std::recursive_mutex& mutex() { return mutex_; }
  SystemResources& system() { return system_; }
  FileSystemResources& fileSystems() { return fileSystems_; }
  InterfaceResources& interfaces() { return interfaces_; }
  SnapshotResources& snapshots() { return snapshots_; }
  ChangeListResources& changeLists() { return changeLists_; }

  void registerRoutes(Router& router);
  // Back to an empty array with default identity; the change-list page size stays.
  void clear();

 private:
  std::recursive_mutex mutex_;
  SystemResources system_;
  FileSystemResources fileSystems_;
  InterfaceResources interfaces_;
  SnapshotResources snapshots_;
  ChangeListResources changeLists_;
};

}  // namespace arraysim
