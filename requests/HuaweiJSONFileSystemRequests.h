// Requests of the file-system and interface lists.
#pragma once

#include "DataReadingRequests.h"

class HuaweiJSONGetFileSystems : public HuaweiJSONGetDataList<_HuaweiFileSystemsInfo> {
 public:
  explicit HuaweiJSONGetFileSystems(unsigned long long const& jobId)
      : HuaweiJSONGetDataList(jobId, "HuaweiJSONGetFileSystems::parseResponse") {}
  void getFileSystems(std::list<_HuaweiFileSystemsInfo>& fileSystems) { fileSystems = m_records; }
};

class HuaweiJSONGetArrayInterfaces : public HuaweiJSONGetDataList<_HuaweiArrayInterfaces> {
 public:
  explicit HuaweiJSONGetArrayInterfaces(unsigned long long const& jobId)
      : HuaweiJSONGetDataList(jobId, "HuaweiJSONGetArrayInterfaces::parseResponse") {}
  void getArrayInterfaces(std::list<_HuaweiArrayInterfaces>& interfaces) { interfaces = m_records; }
};
