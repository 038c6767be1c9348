// The initiator lookup, whose answer is a list or a single object.
#pragma once

#include <string>
#include <vector>

#include "RecordRequests.h"

// Reads the list and the single-object answers alike. Note that it stores PARENTNAME, the host's
// name, in `name`: callers of this lookup see the host's name there, never the initiator's.
class HuaweiJSONGetInitiatorInfo : public HuaweiJSONBase {
 public:
  explicit HuaweiJSONGetInitiatorInfo(unsigned long long const& jobId) : HuaweiJSONBase(jobId) {}
  bool parseResponse(std::string& response) override;
  void getInitiatorInfo(std::vector<_HuaweiInitiator>& initiators) { initiators = m_initiators; }

 private:
  std::vector<_HuaweiInitiator> m_initiators;
};
