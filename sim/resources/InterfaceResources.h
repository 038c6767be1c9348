// Logical interfaces: GET lif. Records of the object store, read and written here as
// LogicalInterface for tests.
#pragma once

#include <string>
#include <vector>

#include "store/ObjectStore.h"
#include "store/ResourceTable.h"

namespace arraysim {

struct LogicalInterface {
  std::string id;  // given by add() when empty
  std::string name;
  std::string ipv4Address;
  std::string ipv6Address;
  std::string supportProtocol = "3";   // NFS and CIFS
  std::string role = "2";              // service
  std::string managementAccess = "1";
  std::string vstoreId;    // left out of the answer when empty
  std::string vstoreName;  // left out of the answer when empty
};

class InterfaceResources {
 public:
  explicit InterfaceResources(ObjectStore& store) : store_(store) {}

  // Adds an interface and answers its identifier; without given identifiers, interfaces are
  // listed in the order added.
  std::string add(const LogicalInterface& lif);
  void remove(const std::string& id);
  std::vector<LogicalInterface> list() const;

  static void Declare(ResourceTable& table);
  static constexpr const char* kType = "lif";

 private:
  ObjectStore& store_;
};

}  // namespace arraysim
