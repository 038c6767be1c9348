// The session of the facade: credentials, login, logout, the cookie file, and the driver of
// self-describing requests.
#include <cstdio>
#include <ctime>

#include "ConvertToString.h"
#include "FirstGenerationCall.h"
#include "HuaweiJSONBaseV2.h"
#include "HuaweiJSONGetTokenInfo.h"
#include "HuaweiOpTypes.h"
#include "HuaweiRestAPI.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "RequiredValueContainment.h"
#include "SecondGenerationCall.h"
#include "ThirdGenerationCall.h"
#include "SessionCookieFiles.h"
#include "YbString.h"
#include "ZrLibrarySettings.h"
#include "ZrManageHuawei.h"

using PlainCalls::post;

ZrManageHuawei::ZrManageHuawei(unsigned long long const& jobId)
    : m_restApi(std::make_unique<HuaweiRestAPI>()),
      m_jobId(jobId),
      m_initialized(false),
      m_vstoreId(HuaweiVstore::kNone),
      m_debug(nullptr) {}

ZrManageHuawei::~ZrManageHuawei() {
  static const char kLog[] = "ZrManageHuawei::~ZrManageHuawei";
  closeSession();
  SessionCookieFiles::release(this);
  m_debug.DebugLvl(kLog, 5, m_jobId, "Removing the cookie file [%s]", m_cookieFile.c_str());
  if (std::remove(m_cookieFile.c_str()) != 0) m_debug.DebugLvl(kLog, -1, m_jobId, "Unable to delete the cookie file...");
}

void ZrManageHuawei::setCredentials(std::string const& userName, std::string const& password,
                                    std::string const& controlHost) {
  m_userName = userName;
  m_password = password;
  m_controlHost = controlHost;
}

bool ZrManageHuawei::createSession(std::string const& userName, std::string const& password,
                                   std::string const& controlHost) {
  setCredentials(userName, password, controlHost);
  return createSession();
}

bool ZrManageHuawei::createSession() {
  static const char kLog[] = "ZrManageHuawei::createSession";
  // The login and the logout of a failed login are one operation.
  RequiredValueContainment::OperationScope operation;
  if (m_initialized) {
    m_debug.DebugLvl(kLog, 0, m_jobId, "Huawei params already initialized.");
    return true;
  }
  if (m_controlHost.empty()) {
    m_debug.DebugLvl(kLog, -1, m_jobId, "Control host is empty. Error initializing Huawei Params");
    return false;
  }
  m_debug.DebugLvl(kLog, 0, m_jobId, "Initializing Huawei params.");

  m_restApi->setJobID(m_jobId);
  m_restApi->setUserName(m_userName);
  m_restApi->setPassword(m_password);
  m_restApi->setControlHost(m_controlHost);

  // "HUAWEI-<job>_<time>_<host>_<address>", glued to "/tmp" in the root directory unless the
  // embedder chose a directory for cookie files.
  const std::string now = YbString::Format("%u", static_cast<unsigned int>(std::time(nullptr)));
  const std::string name = std::string("HUAWEI-") + ConvertToString::to_string(m_jobId) + "_" + now + "_" +
                           m_controlHost + "_" + ConvertToString::to_string(static_cast<const void*>(this));
  const std::string& directory = ZrLibraryGetSettings().cookieDirectory;
  if (directory.empty()) {
    m_cookieFile = "/tmp" + name;
  } else {
    m_cookieFile = directory.back() == '/' ? directory + name : directory + "/" + name;
  }
  m_restApi->setCookieFile(m_cookieFile);
  SessionCookieFiles::hold(this, m_cookieFile);

  // Set before the login: setTokenInfo and the clean-up below test it.
  m_initialized = true;
  if (setTokenInfo()) return true;
  closeSession();
  return false;
}

bool ZrManageHuawei::setTokenInfo() {
  HuaweiJSONGetTokenInfo request(m_jobId, m_restApi->getUserName(), m_restApi->getPassword());
  FirstGenerationCall call = firstGeneration("ZrManageHuawei::setTokenInfo", LogKind::Facade);
  const bool done =
      call.sends(request, post("", HuaweiOpType::SET_TOKEN_INFO), "Unable to get the base token information")
          .run([&](FirstGenerationCall&) {
            std::string baseToken;
            std::string deviceId;
            request.getTokenInformation(baseToken, deviceId, m_vstoreId);
            m_restApi->setBaseToken(baseToken);
            m_restApi->setDeviceId(deviceId);
            call.line(5, "Successfully set the Base Token[%s], Device ID[%s] and vStoreId[%s]", baseToken, deviceId,
                      m_vstoreId.empty() ? "NA" : m_vstoreId.c_str());
          });
  // GetErrorInfo tells the outcome of the login's send; a login that never went out leaves it.
  if (call.sent()) m_lastResult = call.status();
  return done;
}

bool ZrManageHuawei::closeSession() {
  static const char kLog[] = "ZrManageHuawei::closeSession";
  if (!m_initialized) {
    m_debug.DebugLvl(kLog, 7, m_jobId, "File server session already closed.");
    return true;
  }
  m_debug.DebugLvl(kLog, 5, m_jobId, "Closing the file server session with token[%s].",
                   m_restApi->getBaseToken().c_str());
  // Closed from here on, whatever the array answers.
  m_initialized = false;
  // A login whose answer lacked a required value sends nothing more.
  if (RequiredValueContainment::failed()) return false;
  std::string response;
  if (!m_restApi->del("sessions", std::string(), response, HuaweiOpType::CLOSE_SESSION)) {
    m_debug.DebugLvl(kLog, -1, m_jobId, "Unable to close the file server session.");
    return false;
  }
  return true;
}

void ZrManageHuawei::GetErrorInfo(unsigned long long& code, std::string& text) {
  code = m_lastResult.GetErrorCode();
  text = m_lastResult.GetErrorString();
}

std::string ZrManageHuawei::getvStoreId() { return m_vstoreId; }

FirstGenerationCall ZrManageHuawei::firstGeneration(const char* logName, LogKind kind) {
  return FirstGenerationCall(*m_restApi, m_initialized, kind, m_debug, logName, m_jobId);
}

SecondGenerationCall ZrManageHuawei::secondGeneration(const char* signature) {
  return SecondGenerationCall(*m_restApi, m_initialized, m_debug, signature, LogName::Operation, m_jobId);
}

SecondGenerationCall ZrManageHuawei::qualifiedSecondGeneration(const char* signature) {
  return SecondGenerationCall(*m_restApi, m_initialized, m_debug, signature, LogName::Qualified, m_jobId);
}

ThirdGenerationCall ZrManageHuawei::thirdGeneration(const char* logName, const char* operationName) {
  return ThirdGenerationCall(*this, m_debug, logName, operationName, m_jobId);
}

HuaweiApi::ResultStatus ZrManageHuawei::ProcessWithServer(std::string const& operationName,
                                                          HuaweiJSONBaseV2* const& request) {
  const std::string logName = "ProcessWithServer::" + operationName;
  const char* kLog = logName.c_str();
  RequiredValueContainment::OperationScope operation;
  const auto missingValue = [&] {
    return HuaweiApi::ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, RequiredValueContainment::failureText());
  };
  // An earlier request of the same operation failed on a missing required value.
  if (RequiredValueContainment::failed()) return missingValue();
  // A value that cannot take its place fails the call before anything, the login too, is sent.
  const std::string url = request->getResourceUrl();
  const PlacementRefusal& refusal = request->placementRefusal();
  if (refusal.refused()) {
    m_debug.DebugLvl(kLog, -1, m_jobId, "%s", refusal.text().c_str());
    return HuaweiApi::ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, refusal.text());
  }
  if (!m_initialized && !createSession()) {
    if (RequiredValueContainment::failed()) return missingValue();
    m_debug.Error(kLog, "Failed to create session.");
    return HuaweiApi::ResultStatus(HuaweiApi::RESULT_GENERIC_FAILURE, "Failed to create session.");
  }

  const int type = request->getHttpReqType();
  std::string body;
  request->buildRequest(body);
  m_debug.DebugLvl(kLog, 3, m_jobId, "Sending request... [%s]. URL [%s]", body.c_str(), url.c_str());

  std::string response;
  const HuaweiApi::ResultStatus status = m_restApi->processReq(type, url, body, response, request->getOpType());
  if (!status) {
    if (!request->isIgnorableErrorCode(status.GetErrorCode())) {
      m_debug.Error(kLog, "Unable to process the req for operation [%s]", operationName.c_str());
      return status;
    }
    m_debug.DebugLvl(kLog, 0, m_jobId, "Ignore flag set for error [%llu] [%s]! Treating this as success.",
                     status.GetErrorCode(), status.GetErrorString().c_str());
  }

  m_debug.DebugLvl("ProcessWithServer", 5, m_jobId, "Parsing the JSON response...");
  if (!RequiredValueContainment::read([&] { return request->parseResponse(response); })) {
    if (RequiredValueContainment::failed()) {
      m_debug.DebugLvl(kLog, -1, m_jobId, "%s", RequiredValueContainment::failureText().c_str());
      return missingValue();
    }
    m_debug.Error(kLog, "Unable to parse the JSON Response");
    return HuaweiApi::ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Unable to parse the JSON Response");
  }
  m_debug.DebugLvl(kLog, 3, m_jobId, "Successfully completed the operation");
  return HuaweiApi::ResultStatus();
}
