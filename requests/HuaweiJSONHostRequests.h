// The initiator lookup, whose answer is a list or a single object.
#pragma once

#include <string>
#include <vector>

#include "RecordRequests.h"

// Reads the list and the single-object answers alike into the caller's list, once the whole
// answer is read; a generic request (RecordRequests.h). Note that it stores PARENTNAME, the host's
// name, in `name`: callers of this lookup see the host's name there, never the initiator's.
class HuaweiJSONGetInitiatorInfo final : public HuaweiJSONBase {
 public:
  explicit HuaweiJSONGetInitiatorInfo(std::vector<_HuaweiInitiator>& destination) : m_destination(&destination) {}
  bool parseResponse(std::string& response) override;
  void forJob(unsigned long long jobId) { m_jobId = jobId; }

 private:
  bool readAnswer(std::string& response, std::vector<_HuaweiInitiator>& initiators) const;

  std::vector<_HuaweiInitiator>* m_destination;
};
