// Base of every request object: renders the body and reads the response of one array request.
#pragma once

#include <string>

class HuaweiJSONBase {
 public:
  HuaweiJSONBase() : m_jobId(0) {}
  explicit HuaweiJSONBase(unsigned long long const& jobId) : m_jobId(jobId) {}

  // The base leaves the body alone: right for every request without one.
  virtual bool buildRequest(std::string& body) {
    (void)body;
    return true;
  }
  virtual bool parseResponse(std::string& response) = 0;

 protected:
  // Request objects are always destroyed as what they were made, never through this base.
  ~HuaweiJSONBase() = default;
  HuaweiJSONBase(const HuaweiJSONBase&) = default;
  HuaweiJSONBase& operator=(const HuaweiJSONBase&) = default;

  unsigned long long m_jobId;
};
