// File systems and the logical network interfaces of the array.
#pragma once

#include <string>

struct _HuaweiFileSystemsInfo {
  std::string id;
  std::string name;
  std::string healthStatus;

  _HuaweiFileSystemsInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    healthStatus.clear();
  }
};
typedef _HuaweiFileSystemsInfo HuaweiFileSystemsInfo_t;

struct _HuaweiArrayInterfaces {
  std::string name;
  std::string ipv4Address;
  std::string ipv6Address;
  std::string vstoreId;
  std::string vstoreName;
  std::string supportProtocol;
  std::string role;
  std::string managementAccess;
  // Set by getArrayInterfaces on the interface that carries the NDMP service.
  bool ndmpMonitoringIp;

  _HuaweiArrayInterfaces() { clear(); }
  void clear() {
    name.clear();
    ipv4Address.clear();
    ipv6Address.clear();
    vstoreId = "-12345";
    vstoreName.clear();
    supportProtocol.clear();
    role.clear();
    managementAccess.clear();
    ndmpMonitoringIp = false;
  }
};
typedef _HuaweiArrayInterfaces HuaweiArrayInterfaces_t;
