// Requests of the file-system and interface lists.
#pragma once

#include "RecordRequests.h"

class HuaweiJSONGetFileSystems : public HuaweiJSONRecordList<_HuaweiFileSystemsInfo, std::list> {
 public:
  explicit HuaweiJSONGetFileSystems(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, HuaweiResponse::plainRules("HuaweiJSONGetFileSystems::parseResponse")) {}
  void getFileSystems(std::list<_HuaweiFileSystemsInfo>& fileSystems) { fileSystems = m_records; }
};

class HuaweiJSONGetArrayInterfaces : public HuaweiJSONRecordList<_HuaweiArrayInterfaces, std::list> {
 public:
  explicit HuaweiJSONGetArrayInterfaces(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, HuaweiResponse::plainRules("HuaweiJSONGetArrayInterfaces::parseResponse")) {}
  void getArrayInterfaces(std::list<_HuaweiArrayInterfaces>& interfaces) { interfaces = m_records; }
};
