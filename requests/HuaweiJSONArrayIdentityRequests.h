// Requests of the array's identity: system record, NDMP settings, vStore.
#pragma once

#include "DataReadingRequests.h"

class HuaweiJSONGetSystemInformation : public HuaweiJSONGetDataObject<_HuaweiSystemInformation> {
 public:
  explicit HuaweiJSONGetSystemInformation(unsigned long long const& jobId)
      : HuaweiJSONGetDataObject(jobId, "HuaweiJSONGetSystemInformation::parseResponse") {}
  void getSystemInfo(_HuaweiSystemInformation& info) { info = m_record; }
};

class HuaweiJSONGetNDMPSettingsInfo : public HuaweiJSONGetDataObject<_HuaweiNDMPServiceSettings> {
 public:
  explicit HuaweiJSONGetNDMPSettingsInfo(unsigned long long const& jobId)
      : HuaweiJSONGetDataObject(jobId, "HuaweiJSONGetNDMPSettingsInfo::parseResponse") {}
  void getNDMPSettings(_HuaweiNDMPServiceSettings& settings) { settings = m_record; }
};

class HuaweiJSONGetVStoreInfo : public HuaweiJSONGetDataObject<_HuaweiVStoreInfo> {
 public:
  explicit HuaweiJSONGetVStoreInfo(unsigned long long const& jobId)
      : HuaweiJSONGetDataObject(jobId, "HuaweiJSONGetVStoreInfo::parseResponse") {}
  void getVStoreInfo(_HuaweiVStoreInfo& info) { info = m_record; }
};
