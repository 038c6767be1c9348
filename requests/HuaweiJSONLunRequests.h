// Requests of LUNs and LUN snapshots: lookups, and a snapshot's life from creation to deletion.
#pragma once

#include <string>
#include <vector>

#include "SanDataRequests.h"
#include "SanRecordReaders.h"

class HuaweiJSONGetLUNInfo : public HuaweiJSONBase {
 public:
  explicit HuaweiJSONGetLUNInfo(unsigned long long const& jobId) : HuaweiJSONBase(jobId) {}
  bool parseResponse(std::string& response) override;
  void getLUNInfo(_HuaweiLUNInfo& info) { info = m_lun; }

 private:
  _HuaweiLUNInfo m_lun;
};

class HuaweiJSONGetLUNSnapshotInfo : public HuaweiJSONSanDataObject<_HuaweiLUNSnapshotInfo> {
 public:
  explicit HuaweiJSONGetLUNSnapshotInfo(unsigned long long const& jobId)
      : HuaweiJSONSanDataObject(jobId, "HuaweiJSONGetLUNSnapshotInfo::parseResponse", HuaweiSanRecords::read) {}
  void getLUNSnapshotInfo(_HuaweiLUNSnapshotInfo& info) { info = m_record; }
};

class HuaweiJSONGetLUNSnapshotInfoByName : public HuaweiJSONSanDataList<_HuaweiLUNSnapshotInfo> {
 public:
  explicit HuaweiJSONGetLUNSnapshotInfoByName(unsigned long long const& jobId)
      : HuaweiJSONSanDataList(jobId, "HuaweiJSONGetLUNSnapshotInfoByName::parseResponse", HuaweiSanRecords::read,
                              MissingList::EmptyOnCodeZero) {}
  void getLUNSnapshotInfoByName(std::vector<_HuaweiLUNSnapshotInfo>& snapshots) { snapshots = m_records; }
};

// Creates a snapshot of the LUN in parentId, or, when isCopy is set, a copy of the snapshot in
// parentId. Its lines carry job 0: the job identifier is not kept.
class HuaweiJSONCreateLUNSnapshot : public HuaweiJSONSanDataObject<_HuaweiLUNSnapshotInfo> {
 public:
  HuaweiJSONCreateLUNSnapshot(unsigned long long const&, _HuaweiLUNSnapshotInfo const& snapshot)
      : HuaweiJSONSanDataObject(0, "HuaweiJSONCreateLUNSnapshot::parseResponse", HuaweiSanRecords::read, snapshot) {}
  bool buildRequest(std::string& body) override;
  void getLUNSnapshotInfo(_HuaweiLUNSnapshotInfo& info) { info = m_record; }
};

class HuaweiJSONActivateLUNSnapshot : public HuaweiJSONSanStatus {
 public:
  // snapshotList: the identifiers joined by commas, sent bare.
  HuaweiJSONActivateLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotList,
                                std::string const& vstoreId)
      : HuaweiJSONSanStatus(jobId, "HuaweiJSONActivateLUNSnapshot::parseResponse"),
        m_snapshotList(snapshotList),
        m_vstoreId(vstoreId) {}
  bool buildRequest(std::string& body) override;

 private:
  std::string m_snapshotList;
  std::string m_vstoreId;
};

class HuaweiJSONDeActivateLUNSnapshot : public HuaweiJSONSanStatus {
 public:
  HuaweiJSONDeActivateLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotId,
                                  std::string const& vstoreId)
      : HuaweiJSONSanStatus(jobId, "HuaweiJSONDeActivateLUNSnapshot::parseResponse"),
        m_snapshotId(snapshotId),
        m_vstoreId(vstoreId) {}
  bool buildRequest(std::string& body) override;

 private:
  std::string m_snapshotId;
  std::string m_vstoreId;
};

class HuaweiJSONDeleteLUNSnapshot : public HuaweiJSONSanStatus {
 public:
  HuaweiJSONDeleteLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotId)
      : HuaweiJSONSanStatus(jobId, "HuaweiJSONDeleteLUNSnapshot::parseResponse"), m_snapshotId(snapshotId) {}

 private:
  std::string m_snapshotId;
};

class HuaweiJSONRevertLUNSnapshot : public HuaweiJSONSanStatus {
 public:
  HuaweiJSONRevertLUNSnapshot(unsigned long long const& jobId, std::string const& snapshotId,
                              std::string const& rollbackSpeed, std::string const& vstoreId)
      : HuaweiJSONSanStatus(jobId, "HuaweiJSONRevertLUNSnapshot::parseResponse",
                            HuaweiSanAnswer::CodeWidth::Unsigned64),
        m_snapshotId(snapshotId),
        m_rollbackSpeed(rollbackSpeed),
        m_vstoreId(vstoreId) {}
  bool buildRequest(std::string& body) override;

 private:
  std::string m_snapshotId;
  std::string m_rollbackSpeed;
  std::string m_vstoreId;
};
