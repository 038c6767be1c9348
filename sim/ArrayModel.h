// The array's state: the object store with its resource table, and the families that keep state
// of their own (file trees, snapshots, change lists), behind one lock. Handlers run under the
// lock; the families' own methods take it too (it is recursive), so tests may call them at any
// time.
#pragma once

#include <mutex>
#include <string>

#include "http/Router.h"
#include "resources/ChangeListResources.h"
#include "resources/FileSystemResources.h"
#include "resources/InterfaceResources.h"
#include "resources/FileSystemSnapshotResources.h"
#include "resources/ArrayIdentityResources.h"
#include "store/ObjectStore.h"
#include "store/ResourceTable.h"

namespace arraysim {

class ArrayModel {
 public:
  explicit ArrayModel(const std::string& deviceId);

  std::recursive_mutex& mutex() { return mutex_; }
  ObjectStore& store() { return store_; }
  // Rows added before the simulator is constructed around the model are served.
  ResourceTable& resources() { return resources_; }
  ArrayIdentityResources& system() { return system_; }
  FileSystemResources& fileSystems() { return fileSystems_; }
  InterfaceResources& interfaces() { return interfaces_; }
  FileSystemSnapshotResources& fileSystemSnapshots() { return fileSystemSnapshots_; }
  ChangeListResources& changeLists() { return changeLists_; }

  void registerRoutes(Router& router);
  // Back to an empty array with default identity; the change-list page size stays. Sequences
  // of assigned identifiers start again.
  void clear();

 private:
  std::recursive_mutex mutex_;
  ObjectStore store_;
  ResourceTable resources_;
  ArrayIdentityResources system_;
  FileSystemResources fileSystems_;
  InterfaceResources interfaces_;
  FileSystemSnapshotResources fileSystemSnapshots_;
  ChangeListResources changeLists_;
};

}  // namespace arraysim
