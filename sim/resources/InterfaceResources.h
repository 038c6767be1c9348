// Logical interfaces: GET lif.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "http/Router.h"

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
  explicit InterfaceResources(std::recursive_mutex& mutex);

  // Adds an interface and answers its identifier; interfaces are listed in the order added.
  std::string add(LogicalInterface lif);
  void remove(const std::string& id);
  std::vector<LogicalInterface> list() const;

  void clear();
  void registerRoutes(Router& router);

 private:
  Reply listAll() const;

  std::recursive_mutex& mutex_;
  std::vector<LogicalInterface> interfaces_;
  unsigned nextId_ = 1;
};

}  // namespace arraysim
