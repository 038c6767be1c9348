// Requests of file-system snapshots.
#pragma once

#include <string>

#include "RecordRequests.h"
#include "HuaweiJSONBase.h"

// The caller's snapshot string holds the requested name on the way out and the array's identifier
// of the new snapshot once the answer is parsed.
class HuaweiJSONCreateFileSystemSnapshot : public HuaweiJSONBase {
 public:
  HuaweiJSONCreateFileSystemSnapshot(unsigned long long const& jobId, unsigned long long const& fileSystemId,
                                     std::string& snapshot, bool enableSnapDiff, std::string vstoreId);

  bool buildRequest(std::string& body) override;
  bool parseResponse(std::string& response) override;
  // For the next send: the file system could not take the SnapDiff option.
  void withoutSnapDiff() { m_enableSnapDiff = false; }

 private:
  unsigned long long m_fileSystemId;
  std::string& m_snapshot;
  bool m_enableSnapDiff;
  std::string m_vstoreId;
};
