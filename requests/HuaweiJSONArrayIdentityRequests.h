// Requests of the array's identity: system record, NDMP settings, vStore.
#pragma once

#include "RecordRequests.h"

class HuaweiJSONGetSystemInformation : public HuaweiJSONRecordObject<_HuaweiSystemInformation> {
 public:
  explicit HuaweiJSONGetSystemInformation(unsigned long long const& jobId)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::plainRules("HuaweiJSONGetSystemInformation::parseResponse")) {}
  void getSystemInfo(_HuaweiSystemInformation& info) { info = m_record; }
};

class HuaweiJSONGetNDMPSettingsInfo : public HuaweiJSONRecordObject<_HuaweiNDMPServiceSettings> {
 public:
  explicit HuaweiJSONGetNDMPSettingsInfo(unsigned long long const& jobId)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::plainRules("HuaweiJSONGetNDMPSettingsInfo::parseResponse")) {}
  void getNDMPSettings(_HuaweiNDMPServiceSettings& settings) { settings = m_record; }
};

class HuaweiJSONGetVStoreInfo : public HuaweiJSONRecordObject<_HuaweiVStoreInfo> {
 public:
  explicit HuaweiJSONGetVStoreInfo(unsigned long long const& jobId)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::plainRules("HuaweiJSONGetVStoreInfo::parseResponse")) {}
  void getVStoreInfo(_HuaweiVStoreInfo& info) { info = m_record; }
};
