// Requests of LUNs and LUN snapshots that read more than a key table: the LUN lookup and the
// creation of a snapshot or a copy.
#pragma once

#include <string>
#include <vector>

#include "RecordRequests.h"

// The LUN's own reader decides: a record it refuses is a parse failure.
class HuaweiJSONGetLUNInfo : public HuaweiJSONRecordObject<_HuaweiLUNInfo> {
 public:
  explicit HuaweiJSONGetLUNInfo(unsigned long long const& jobId)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::sanRules("HuaweiJSONGetLUNInfo::parseResponse")) {}
  void getLUNInfo(_HuaweiLUNInfo& info) { info = m_record; }

 private:
  bool readData(const jsonxx::Object& data) override { return m_record.parseFromJson(data); }
};

// Creates a snapshot of the LUN in parentId, or, when isCopy is set, a copy of the snapshot in
// parentId. Its lines carry job 0: the job identifier is not kept.
class HuaweiJSONCreateLUNSnapshot : public HuaweiJSONRecordObject<_HuaweiLUNSnapshotInfo> {
 public:
  HuaweiJSONCreateLUNSnapshot(unsigned long long const&, _HuaweiLUNSnapshotInfo const& snapshot)
      : HuaweiJSONRecordObject(0, HuaweiResponse::sanRules("HuaweiJSONCreateLUNSnapshot::parseResponse"), snapshot) {}
  bool buildRequest(std::string& body) override;
  void getLUNSnapshotInfo(_HuaweiLUNSnapshotInfo& info) { info = m_record; }
};
