// The lists of LUN groups, read by the group's own reader, and the rules of every group list.
#pragma once

#include <string>
#include <vector>

#include "HuaweiIncludes.h"
#include "RecordRequests.h"

// The lists of LUN groups and mapping views: an answer without "data" is read by its status.
inline HuaweiResponse::ReadingRules groupListRules(const char* logName, HuaweiResponse::StatusReport status) {
  return HuaweiResponse::sanRules(logName, HuaweiResponse::WithoutData::Status, status);
}

// LUN groups, each through the record's own reader, whose refusal fails the list.
class HuaweiJSONLunGroupList : public HuaweiJSONRecordList<_HuaweiLunGroupInfo> {
 protected:
  HuaweiJSONLunGroupList(unsigned long long jobId, const char* logName, HuaweiResponse::StatusReport status)
      : HuaweiJSONRecordList(jobId, groupListRules(logName, status)) {}
  ~HuaweiJSONLunGroupList() = default;

 private:
  bool readElement(const jsonxx::Object& element, _HuaweiLunGroupInfo& group) override {
    return group.parseFromJson(element);
  }
};

class HuaweiJSONGetLunGroupInfo : public HuaweiJSONLunGroupList {
 public:
  explicit HuaweiJSONGetLunGroupInfo(unsigned long long const& jobId)
      : HuaweiJSONLunGroupList(jobId, "HuaweiJSONGetLunGroupInfo::parseResponse",
                               {HuaweiResponse::CodeWidth::Unsigned64}) {}
  void getLunGroupInfo(std::vector<_HuaweiLunGroupInfo>& groups) { groups = m_records; }
};
