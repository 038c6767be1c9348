#include "ArrayModel.h"

#include "resources/StoreFamilies.h"

namespace arraysim {

ArrayModel::ArrayModel(const std::string& deviceId)
    : store_(mutex_),
      resources_(store_),
      system_(mutex_, store_, deviceId),
      fileSystems_(mutex_),
      interfaces_(store_),
      fileSystemSnapshots_(mutex_, fileSystems_),
      changeLists_(mutex_, fileSystemSnapshots_) {
  ArrayIdentityResources::Declare(resources_);
  InterfaceResources::Declare(resources_);
  DeclareShares(resources_, fileSystems_);
  DeclareLunSnapshots(resources_);
  DeclareHosts(resources_);
  DeclareLunGroups(resources_);
  DeclareMappingViews(resources_);
  DeclareProvisioning(resources_);
  DeclareClones(resources_);
}

void ArrayModel::registerRoutes(Router& router) {
  system_.registerRoutes(router);
  fileSystems_.registerRoutes(router);
  fileSystemSnapshots_.registerRoutes(router);
  changeLists_.registerRoutes(router);
  resources_.registerRoutes(router);
}

void ArrayModel::clear() {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  changeLists_.clear();
  fileSystemSnapshots_.clear();
  fileSystems_.clear();
  system_.clear();
  store_.clear();
}

}  // namespace arraysim
