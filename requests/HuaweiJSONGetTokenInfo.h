#pragma once

#include <string>

#include "HuaweiJSONBase.h"

// The login request: a hand-built body with user and password, and the token, device identifier
// and vStore of the answer.
class HuaweiJSONGetTokenInfo : public HuaweiJSONBase {
 public:
  HuaweiJSONGetTokenInfo(unsigned long long const& jobId, std::string const& userName, std::string const& password);

  bool buildRequest(std::string& body) override;
  bool parseResponse(std::string& response) override;
  void getTokenInformation(std::string& baseToken, std::string& deviceId, std::string& vstoreId);

 private:
  std::string m_baseToken;
  std::string m_deviceId;
  std::string m_userName;
  std::string m_password;
  std::string m_vstoreId;
};
