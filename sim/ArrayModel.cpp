#include "ArrayModel.h"

namespace arraysim {

ArrayModel::ArrayModel(const std::string& deviceId)
    : system_(mutex_, deviceId),
      fileSystems_(mutex_),
      interfaces_(mutex_),
      snapshots_(mutex_, fileSystems_),
      changeLists_(mutex_, snapshots_) {}

void ArrayModel::registerRoutes(Router& router) {
  system_.registerRoutes(router);
  fileSystems_.registerRoutes(router);
  interfaces_.registerRoutes(router);
  snapshots_.registerRoutes(router);
  changeLists_.registerRoutes(router);
}

void ArrayModel::clear() {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  changeLists_.clear();
  snapshots_.clear();
  interfaces_.clear();
  fileSystems_.clear();
  system_.clear();
}

}  // namespace arraysim
