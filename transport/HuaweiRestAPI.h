// The one place where the system talks HTTP: holds the server parameters of one array connection,
// forms URLs, sets headers, sends each request through a fresh client and classifies the answer.
#pragma once

#include <memory>
#include <string>

#include "HuaweiApiResultStatus.h"
#include "RequestUrl.h"

class ZRLibCurl;

class HuaweiRestAPI {
 public:
  HuaweiRestAPI();
  explicit HuaweiRestAPI(unsigned long long const& jobId);
  ~HuaweiRestAPI();
  HuaweiRestAPI(const HuaweiRestAPI&) = delete;
  HuaweiRestAPI& operator=(const HuaweiRestAPI&) = delete;

  void setUserName(std::string const& userName) { m_userName = userName; }
  void setPassword(std::string const& password) { m_password = password; }
  void setControlHost(std::string const& controlHost) { m_controlHost = controlHost; }
  void setDeviceId(std::string const& deviceId) { m_deviceId = deviceId; }
  void setBaseToken(std::string const& baseToken) { m_baseToken = baseToken; }
  void setCookieFile(std::string const& cookieFile) { m_cookieFile = cookieFile; }
  void setJobID(unsigned long long const& jobId) { m_jobId = jobId; }

  std::string getUserName() const { return m_userName; }
  std::string getPassword() const { return m_password; }
  std::string getControlHost() const { return m_controlHost; }
  std::string getBaseToken() const { return m_baseToken; }

  // Code and text of the last classified response.
  void getErrorInfo(unsigned long long& code, std::string& text) const;

  HuaweiApi::ResultStatus get(std::string const& resource, std::string& response, int const& opType);
  HuaweiApi::ResultStatus post(std::string const& resource, std::string const& body, std::string& response,
                               int const& opType);
  HuaweiApi::ResultStatus put(std::string const& resource, std::string const& body, std::string& response,
                              int const& opType);
  HuaweiApi::ResultStatus del(std::string const& resource, std::string const& body, std::string& response,
                              int const& opType);
  HuaweiApi::ResultStatus processReq(int type, std::string const& resource, std::string const& body,
                                     std::string& response, int const& opType);
  // One complete exchange: check, form the URL, make the client, set headers, send, read, classify.
  // `response` keeps the array's body also on failure.
  HuaweiApi::ResultStatus sendReq(int type, std::string const& resource, std::string const& body,
                                  std::string& response, int const& opType);

 private:
  bool validateServerParams(int const& opType);
  bool setCommonCurlHeaders(int const& opType, void const*& client);
  std::string formRequestURL(std::string resource, int const& opType);
  bool isError(std::string const& response, int const& opType, HuaweiApi::ResultStatus& status);
  void maskPasswordInRequestBody(std::string& body);

  unsigned long long m_jobId;
  HuaweiApi::ResultStatus m_lastStatus;
  std::string m_userName;
  std::string m_password;
  std::string m_controlHost;
  std::string m_deviceId;
  std::string m_baseToken;
  std::string m_cookieFile;
  // Formed from the fields above when they change, not for every request.
  HuaweiTransport::RequestUrlPrefix m_urlPrefix;
  std::string m_tokenHeader;  // "iBaseToken: " and the base token
  // A client whose headers could not be set outlives its request by design; it is kept here, not
  // lost, and freed with the transport.
  std::unique_ptr<ZRLibCurl> m_clientKeptAfterHeaderFailure;
};
