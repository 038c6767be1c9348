#include "resources/InterfaceResources.h"

#include <utility>

namespace arraysim {
namespace {

using Field = std::pair<std::string LogicalInterface::*, const char*>;

// The wire key of each field; the vStore keys only when set.
constexpr Field kFields[] = {{&LogicalInterface::name, "NAME"},
                             {&LogicalInterface::ipv4Address, "IPV4ADDR"},
                             {&LogicalInterface::ipv6Address, "IPV6ADDR"},
                             {&LogicalInterface::supportProtocol, "SUPPORTPROTOCOL"},
                             {&LogicalInterface::role, "ROLE"},
                             {&LogicalInterface::managementAccess, "MANAGEMENTACCESS"},
                             {&LogicalInterface::vstoreId, "vstoreId"},
                             {&LogicalInterface::vstoreName, "vstoreName"}};

bool Optional(const char* key) { return key[0] == 'v'; }

}  // namespace

std::string InterfaceResources::add(const LogicalInterface& lif) {
  Record record = Record::object();
  if (!lif.id.empty()) record["ID"] = lif.id;
  for (const auto& [field, key] : kFields) {
    if (!Optional(key) || !(lif.*field).empty()) record[key] = lif.*field;
  }
  return store_.insert(kType, std::move(record));
}

void InterfaceResources::remove(const std::string& id) { store_.erase(kType, id); }

std::vector<LogicalInterface> InterfaceResources::list() const {
  std::vector<LogicalInterface> interfaces;
  for (const auto& record : store_.list(kType)) {
    LogicalInterface lif;
    lif.id = record["ID"];
    for (const auto& [field, key] : kFields) lif.*field = record.value(key, "");
    interfaces.push_back(std::move(lif));
  }
  return interfaces;
}

void InterfaceResources::Declare(ResourceTable& table) { table.add(ResourceRoute("GET", "lif", kType, Action::List)); }

}  // namespace arraysim
