// Facts of the array itself: its system record, the NDMP service settings, a vStore.
#pragma once

#include <string>

struct _HuaweiSystemInformation {
  std::string id;
  std::string healthStatus;
  std::string name;
  std::string productVersion;
  std::string runningStatus;

  _HuaweiSystemInformation() { clear(); }
  void clear() {
    id.clear();
    healthStatus.clear();
    name.clear();
    productVersion.clear();
    runningStatus.clear();
  }
};
typedef _HuaweiSystemInformation HuaweiSystemInformation_t;

struct _HuaweiNDMPServiceSettings {
  bool isEnabled;
  std::string ip;
  std::string port;
  std::string version;
  std::string vstoreId;
  std::string vstoreName;
  bool isSupportSnapshot;

  _HuaweiNDMPServiceSettings() { clear(); }
  void clear() {
    isEnabled = false;
    ip.clear();
    port.clear();
    version.clear();
    vstoreId.clear();
    vstoreName.clear();
    isSupportSnapshot = false;
  }
};
typedef _HuaweiNDMPServiceSettings HuaweiNDMPServiceSettings_t;

struct _HuaweiVStoreInfo {
  std::string id;
  std::string name;
  std::string runningStatus;

  _HuaweiVStoreInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    runningStatus.clear();
  }
};
typedef _HuaweiVStoreInfo HuaweiVStoreInfo_t;
