#include "resources/InterfaceResources.h"

#include <algorithm>

namespace arraysim {

InterfaceResources::InterfaceResources(std::recursive_mutex& mutex) : mutex_(mutex) {}

std::string InterfaceResources::add(LogicalInterface lif) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  if (lif.id.empty()) lif.id = std::to_string(nextId_++);
  interfaces_.push_back(std::move(lif));
  return interfaces_.back().id;
}

void InterfaceResources::remove(const std::string& id) {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  interfaces_.erase(std::remove_if(interfaces_.begin(), interfaces_.end(),
                                   [&](const LogicalInterface& lif) { return lif.id == id; }),
                    interfaces_.end());
}

std::vector<LogicalInterface> InterfaceResources::list() const {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  return interfaces_;
}

void InterfaceResources::clear() {
  std::lock_guard<std::recursive_mutex> lock(mutex_);
  interfaces_.clear();
  nextId_ = 1;
}

void InterfaceResources::registerRoutes(Router& router) {
  router.add("GET", "lif", [this](const ArrayRequest&) { return listAll(); });
}

Reply InterfaceResources::listAll() const {
  auto items = nlohmann::json::array();
  for (const auto& lif : interfaces_) {
    nlohmann::json record = {{"ID", lif.id},
                             {"NAME", lif.name},
                             {"IPV4ADDR", lif.ipv4Address},
                             {"IPV6ADDR", lif.ipv6Address},
                             {"SUPPORTPROTOCOL", lif.supportProtocol},
                             {"ROLE", lif.role},
                             {"MANAGEMENTACCESS", lif.managementAccess}};
    if (!lif.vstoreId.empty()) record["vstoreId"] = lif.vstoreId;
    if (!lif.vstoreName.empty()) record["vstoreName"] = lif.vstoreName;
    items.push_back(std::move(record));
  }
  return Reply::List(std::move(items));
}

}  // namespace arraysim
