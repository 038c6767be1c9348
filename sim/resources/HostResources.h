// Hosts, iSCSI and FC initiators (identifiers given by the caller, bound to a host through
// PARENTID or free), host groups, and hosts in host groups. Records of the object store.
#pragma once

#include "store/ResourceTable.h"

namespace arraysim {

namespace codes {
constexpr long long kHostInGroup = 1077937501;
constexpr long long kInitiatorExists = 1077948997;
constexpr long long kHostNotFound = 1077950337;
constexpr long long kInitiatorNotFound = 1077951220;
}  // namespace codes

struct HostResources {
  static void Declare(ResourceTable& table);

  static constexpr const char* kHost = "host";
  static constexpr const char* kHostGroup = "hostgroup";
  static constexpr const char* kIscsiInitiator = "iscsi_initiator";
  static constexpr const char* kFcInitiator = "fc_initiator";
};

}  // namespace arraysim
