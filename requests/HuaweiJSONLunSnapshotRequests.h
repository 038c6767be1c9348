// Requests of LUNs and LUN snapshots: lookups, and a snapshot's life from creation to deletion.
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
  bool readPlainData(jsonxx::PlainReader&, HuaweiKeys::PlainKeys<_HuaweiLUNInfo>&) override { return false; }
};

class HuaweiJSONGetLUNSnapshotInfo : public HuaweiJSONRecordObject<_HuaweiLUNSnapshotInfo> {
 public:
  explicit HuaweiJSONGetLUNSnapshotInfo(unsigned long long const& jobId)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::sanRules("HuaweiJSONGetLUNSnapshotInfo::parseResponse")) {}
  void getLUNSnapshotInfo(_HuaweiLUNSnapshotInfo& info) { info = m_record; }
};

class HuaweiJSONGetLUNSnapshotInfoByName : public HuaweiJSONRecordList<_HuaweiLUNSnapshotInfo> {
 public:
  explicit HuaweiJSONGetLUNSnapshotInfoByName(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, HuaweiResponse::sanRules("HuaweiJSONGetLUNSnapshotInfoByName::parseResponse",
                                                             HuaweiResponse::WithoutData::Status)) {}
  void getLUNSnapshotInfoByName(std::vector<_HuaweiLUNSnapshotInfo>& snapshots) { snapshots = m_records; }
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

class HuaweiJSONActivateLUNSnapshot : public HuaweiJSONStatusAnswer {
 public:
  // snapshotList: the identifiers joined by commas, sent bare.
  HuaweiJSONActivateLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotList,
                                std::string const& vstoreId)
      : HuaweiJSONStatusAnswer(jobId, "HuaweiJSONActivateLUNSnapshot::parseResponse"),
        m_snapshotList(snapshotList),
        m_vstoreId(vstoreId) {}
  bool buildRequest(std::string& body) override;

 private:
  std::string m_snapshotList;
  std::string m_vstoreId;
};

class HuaweiJSONDeActivateLUNSnapshot : public HuaweiJSONStatusAnswer {
 public:
  HuaweiJSONDeActivateLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotId,
                                  std::string const& vstoreId)
      : HuaweiJSONStatusAnswer(jobId, "HuaweiJSONDeActivateLUNSnapshot::parseResponse"),
        m_snapshotId(snapshotId),
        m_vstoreId(vstoreId) {}
  bool buildRequest(std::string& body) override;

 private:
  std::string m_snapshotId;
  std::string m_vstoreId;
};

class HuaweiJSONDeleteLUNSnapshot : public HuaweiJSONStatusAnswer {
 public:
  HuaweiJSONDeleteLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotId)
      : HuaweiJSONStatusAnswer(jobId, "HuaweiJSONDeleteLUNSnapshot::parseResponse"), m_snapshotId(snapshotId) {}

 private:
  std::string m_snapshotId;
};

class HuaweiJSONRevertLUNSnapshot : public HuaweiJSONStatusAnswer {
 public:
  HuaweiJSONRevertLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotId,
                              std::string const& rollbackSpeed, std::string const& vstoreId)
      : HuaweiJSONStatusAnswer(jobId, "HuaweiJSONRevertLUNSnapshot::parseResponse",
                               {HuaweiResponse::CodeWidth::Unsigned64}),
        m_snapshotId(snapshotId),
        m_rollbackSpeed(rollbackSpeed),
        m_vstoreId(vstoreId) {}
  bool buildRequest(std::string& body) override;

 private:
  std::string m_snapshotId;
  std::string m_rollbackSpeed;
  std::string m_vstoreId;
};
