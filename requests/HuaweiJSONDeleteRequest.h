#pragma once

#include <string>

#include "HuaweiJSONBase.h"

// Serves every deletion whose only question is whether the array reports code 0.
class HuaweiJSONDeleteRequest : public HuaweiJSONBase {
 public:
  HuaweiJSONDeleteRequest() = default;
  explicit HuaweiJSONDeleteRequest(unsigned long long const& jobId) : HuaweiJSONBase(jobId) {}
  bool parseResponse(std::string& response) override;
  // Handed to a call by value, which gives it the operation's job.
  void forJob(unsigned long long jobId) { m_jobId = jobId; }
};
