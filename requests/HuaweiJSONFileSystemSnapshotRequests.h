// Requests of file-system snapshots.
#pragma once

#include <string>

#include "RecordRequests.h"
#include "HuaweiJSONBase.h"

class HuaweiJSONCreateFileSystemSnapshot : public HuaweiJSONBase {
 public:
  HuaweiJSONCreateFileSystemSnapshot(unsigned long long const& jobId, unsigned long long const& fileSystemId,
                           std::string const& snapshotName, bool enableSnapDiff, std::string vstoreId);

  bool buildRequest(std::string& body) override;
  bool parseResponse(std::string& response) override;
  // The array's identifier of the new snapshot once parsed; the requested name before.
  std::string getSnapshotUUID() { return m_snapshot; }

 private:
  unsigned long long m_fileSystemId;
  // Holds the requested name on the way out and the array's identifier on the way back.
  std::string m_snapshot;
  bool m_enableSnapDiff;
  std::string m_vstoreId;
};
