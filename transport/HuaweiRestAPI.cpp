#include "HuaweiRestAPI.h"

#include <cstring>

#include "AnswerParsing.h"
#include "ErrorCode.h"
#include "ErrorObjectReader.h"
#include "ExchangeRecorder.h"
#include "HuaweiOpTypes.h"
#include "HuaweiRequestTypes.h"
#include "PasswordMask.h"
#include "TkDebug.h"
#include "TkLogSink.h"
#include "YbString.h"
#include "ZRLibCurl.h"
#include "jsonxx.h"

using HuaweiApi::ResultStatus;

namespace {

const unsigned long long kSnapshotDoesNotExist = 1073754118ULL;  // 0x40003006

bool init(ZRLibCurl*& client, unsigned long long const& jobId) {
  TkDebug debug(nullptr);
  client = new ZRLibCurl();
  if (!client->ZRLibCurlInit("Content-Type: application/json", true, true, nullptr)) {
    debug.DebugLvl("HuaweiRestAPI::Init", -1, jobId, "Failed to initialize curl.");
    delete client;
    client = nullptr;
    return false;
  }
  debug.DebugLvl("HuaweiRestAPI::Init", 5, jobId, "Initialized curl library successfully.");
  return true;
}

void deInit(ZRLibCurl*& client) {
  if (client == nullptr) return;
  client->ZRLibCurlDeInit();
  delete client;
  client = nullptr;
}

bool toHttpMethod(int type, _http_req_type_& method) {
  switch (type) {
    case HUAWEI_REQ_GET: method = HTTP_REQ_GET; return true;
    case HUAWEI_REQ_POST: method = HTTP_REQ_POST; return true;
    case HUAWEI_REQ_PUT: method = HTTP_REQ_PUT; return true;
    case HUAWEI_REQ_DELETE: method = HTTP_REQ_DELETE; return true;
    default: return false;
  }
}

// The client's body as text up to its first zero byte, taken over rather than copied.
void keepResponse(ZRLibCurl& client, unsigned long& size, std::string& response) {
  if (client.GetHttpResponse(size, false) == nullptr || !client.ZRLibCurlTakeHttpResponse(response)) return;
  const void* zero = std::memchr(response.data(), '\0', response.size());
  if (zero != nullptr) response.resize(static_cast<std::size_t>(static_cast<const char*>(zero) - response.data()));
}

}  // namespace

HuaweiRestAPI::HuaweiRestAPI() : m_jobId(0) {}

HuaweiRestAPI::HuaweiRestAPI(unsigned long long const& jobId) : m_jobId(jobId) {}

HuaweiRestAPI::~HuaweiRestAPI() {
  ZRLibCurl* kept = m_clientKeptAfterHeaderFailure.release();
  deInit(kept);
}

void HuaweiRestAPI::getErrorInfo(unsigned long long& code, std::string& text) const {
  code = m_lastStatus.GetErrorCode();
  text = m_lastStatus.GetErrorString();
}

ResultStatus HuaweiRestAPI::get(std::string const& resource, std::string& response, int const& opType) {
  return sendReq(HUAWEI_REQ_GET, resource, std::string(), response, opType);
}

ResultStatus HuaweiRestAPI::post(std::string const& resource, std::string const& body, std::string& response,
                                 int const& opType) {
  return sendReq(HUAWEI_REQ_POST, resource, body, response, opType);
}

ResultStatus HuaweiRestAPI::put(std::string const& resource, std::string const& body, std::string& response,
                                int const& opType) {
  return sendReq(HUAWEI_REQ_PUT, resource, body, response, opType);
}

ResultStatus HuaweiRestAPI::del(std::string const& resource, std::string const& body, std::string& response,
                                int const& opType) {
  return sendReq(HUAWEI_REQ_DELETE, resource, body, response, opType);
}

ResultStatus HuaweiRestAPI::processReq(int type, std::string const& resource, std::string const& body,
                                       std::string& response, int const& opType) {
  return sendReq(type, resource, body, response, opType);
}

bool HuaweiRestAPI::validateServerParams(int const& opType) {
  const bool login = opType == HuaweiOpType::SET_TOKEN_INFO;
  bool valid = !m_userName.empty() && !m_password.empty() && !m_controlHost.empty();
  if (!login) valid = valid && !m_deviceId.empty() && !m_baseToken.empty();
  if (valid) return true;

  // The password itself is never logged, only whether it is there.
  std::string params = m_userName + ":password:" + (m_password.empty() ? "EMPTY" : "NON-EMPTY") + ":";
  params += login ? m_controlHost : m_deviceId + ":" + m_controlHost + ":" + m_baseToken;
  HuaweiTransport::hidePassword(params, m_password);
  TkDebug debug(nullptr);
  debug.DebugLvl("HuaweiRestAPI::validateServerParams", -1, m_jobId, "Set the server params correctly. Params: [%s]",
                 params.c_str());
  return false;
}

bool HuaweiRestAPI::setCommonCurlHeaders(int const& opType, void const*& client) {
  static const char kLog[] = "HuaweiRestAPI::setCommonCurlHeaders";
  TkDebug debug(nullptr);
  ZRLibCurl* curl = const_cast<ZRLibCurl*>(static_cast<const ZRLibCurl*>(client));
  if (curl == nullptr) {
    debug.DebugLvl(kLog, -1, m_jobId, "Curl library not initialized yet.");
    return false;
  }
  if (opType == HuaweiOpType::SET_TOKEN_INFO) {
    if (!curl->ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_JAR, m_cookieFile.c_str())) {
      debug.DebugLvl(kLog, -1, m_jobId, "Failed to set cookie jar information");
      return false;
    }
  } else {
    curl->ZRLibCurlFreeHttpHeaderList();
    static const char kTokenName[] = "iBaseToken: ";
    constexpr std::size_t kTokenNameLength = sizeof kTokenName - 1;
    if (m_tokenHeader.size() != kTokenNameLength + m_baseToken.size() ||
        m_tokenHeader.compare(kTokenNameLength, std::string::npos, m_baseToken) != 0) {
      m_tokenHeader.assign(kTokenName).append(m_baseToken);
    }
    if (!curl->ZRLibCurlAppendHeader(HTTP_HDR_CUSTOM, m_tokenHeader.c_str())) {
      debug.DebugLvl(kLog, -1, m_jobId, "Failed to set the Base Token header.");
      return false;
    }
    if (!curl->ZRLibCurlAppendHeader(HTTP_HDR_COOKIE_FILE, m_cookieFile.c_str())) {
      debug.DebugLvl(kLog, -1, m_jobId, "Failed to set cookie information.");
      return false;
    }
  }
  debug.DebugLvl(kLog, 4, m_jobId, "Successfully set the common curl headers.");
  return true;
}

std::string HuaweiRestAPI::formRequestURL(std::string resource, int const& opType) {
  if (opType == HuaweiOpType::SET_TOKEN_INFO) {
    return HuaweiTransport::formRequestUrl(m_controlHost, m_deviceId, resource, opType);
  }
  return m_urlPrefix.form(m_controlHost, m_deviceId, resource);
}

void HuaweiRestAPI::maskPasswordInRequestBody(std::string& body) {
  HuaweiTransport::maskPassword(body, m_password);
}

ResultStatus HuaweiRestAPI::sendReq(int type, std::string const& resource, std::string const& body,
                                    std::string& response, int const& opType) {
  static const char kLog[] = "HuaweiRestAPI::sendReq";
  TkDebug debug(nullptr);
  const bool login = opType == HuaweiOpType::SET_TOKEN_INFO;

  response.clear();
  if (resource.empty() && !login) {
    debug.DebugLvl(kLog, -1, m_jobId, "Empty Resource. Invalid arguement");
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Empty Resource. Invalid arguement");
  }

  // Copies for the log lines, made only when a line is written; the request always carries the
  // caller's body. No text logged here shows the password, wherever it stands.
  const auto shown = [this](const std::string& text) { return HuaweiTransport::withoutPassword(text, m_password); };
  const auto shownBody = [&] {
    std::string text = shown(body);
    if (login) maskPasswordInRequestBody(text);
    return text;
  };

  if (!validateServerParams(opType)) {
    debug.DebugLvl(kLog, -1, m_jobId, "Incorrect server params. Unable to send the request for Type[%d] Resource[%s] Body[%s]",
                   type, shown(resource).c_str(), shownBody().c_str());
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Incorrect server params");
  }

  const std::string url = formRequestURL(resource, opType);
  if (url.empty()) {
    debug.DebugLvl(kLog, -1, m_jobId, "Request URL is empty.");
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Request URL is empty");
  }

  _http_req_type_ method;
  if (!toHttpMethod(type, method)) {
    debug.DebugLvl(kLog, -1, m_jobId, "Invalid request type.");
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Invalid request type.");
  }

  // A recording asked for and impossible ends the login: running unrecorded would go unnoticed.
  std::string recordingFailure;
  if (login && !HuaweiTransport::ExchangeRecorder::startFromSettings(recordingFailure)) {
    debug.DebugLvl(kLog, -1, m_jobId, "%s", recordingFailure.c_str());
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, recordingFailure);
  }

  ZRLibCurl* client = nullptr;
  if (!init(client, m_jobId)) {
    debug.DebugLvl(kLog, -1, m_jobId, "Unable to initialize the curl llibrary.");
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Unable to initialize the curl library");
  }

  void const* headerClient = client;
  if (!setCommonCurlHeaders(opType, headerClient)) {
    debug.DebugLvl(kLog, -1, m_jobId, "Unable to set the required headers.");
    m_clientKeptAfterHeaderFailure.reset(client);
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Unable to set the required headers");
  }

  const bool sent = body.empty()
                        ? client->ZRLibCurlSendHttpReq(method, url.c_str(), nullptr, 0, false, nullptr)
                        : client->ZRLibCurlSendHttpReq(method, url.c_str(), body.c_str(), body.length(), false, nullptr);
  if (!sent) {
    if (body.empty()) {
      debug.DebugLvl(kLog, -1, m_jobId, "Error while sending the request. URL[%s] Resource[%s]", shown(url).c_str(),
                     shown(resource).c_str());
    } else {
      debug.DebugLvl(kLog, -1, m_jobId, "Error while sending the request. URL[%s] Resource[%s] Body[%s]",
                     shown(url).c_str(), shown(resource).c_str(), shownBody().c_str());
    }
    deInit(client);
    return ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Error while sending the request");
  }

  unsigned long size = 0;
  keepResponse(*client, size, response);
  const long httpCode = client->GetHttpErrorCode();
  deInit(client);

  const auto loggedResource = [&] { return login ? std::string("LOGIN") : shown(resource); };
  const auto loggedBody = [&] { return login ? std::string("LOGIN INFO") : shownBody(); };
  if (size == 0 || response.empty()) {
    debug.DebugLvl(kLog, -1, m_jobId, "Empty response received for request. Type[%d] URL[%s] Resource[%s] Body[%s]",
                   type, shown(url).c_str(), loggedResource().c_str(), loggedBody().c_str());
  } else if (tklog::Enabled(5)) {
    // An array that echoes the password back must not have it logged; masked only when shown.
    debug.DebugLvl(kLog, 5, m_jobId, "Response received for request. Type[%d] URL[%s] Resource[%s] Body[%s] Response[%s]",
                   type, shown(url).c_str(), loggedResource().c_str(), loggedBody().c_str(), shown(response).c_str());
  }

  ResultStatus status(HuaweiApi::RESULT_GENERIC_FAILURE, "Unknown error");
  if (isError(response, opType, status)) {
    debug.DebugLvl(kLog, -1, m_jobId,
                   "The HTTP request for Resource[%s] failed. URL[%s], Body[%s], HTTP Error Code[%ld], API Error "
                   "Code[%llu], API Error Message [%s]",
                   shown(resource).c_str(), shown(url).c_str(), shownBody().c_str(), httpCode, status.GetErrorCode(),
                   status.GetErrorString().c_str());
    return status;
  }
  return ResultStatus();
}

bool HuaweiRestAPI::isError(std::string const& response, int const& opType, ResultStatus& status) {
  static const char kLog[] = "HuaweiRestAPI::isError";
  TkDebug debug(nullptr);
  status = ResultStatus();
  if (response.empty()) {
    debug.DebugLvl(kLog, 0, m_jobId, "Empty response.");
    return false;
  }

  debug.DebugLvl(kLog, 5, m_jobId, "Parsing JSON response...");
  unsigned long long code = 0;
  std::string description;
  if (!HuaweiTransport::readPlainErrorObject(response, code, description)) {
    jsonxx::Object answer;
    HuaweiTransport::parseAnswer(kLog, m_jobId, response, answer);
    if (answer.empty()) {
      debug.DebugLvl(kLog, -1, m_jobId, "Error when parsing the JSON response.");
      status = ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Error when parsing the JSON response");
      m_lastStatus = status;
      return true;
    }
    // Every answer of the array carries a complete error object: these reads require it.
    jsonxx::Object& error = answer.get<jsonxx::Object>("error");
    description = error.get<std::string>("description");
    if (!HuaweiTransport::trustedCode(error.get<jsonxx::Value>("code"), code)) {
      // Read as a number it could wrap to 0, and a refusal would pass for a success.
      debug.DebugLvl(kLog, -1, m_jobId, "The error code of the JSON response is not an integer of 64 bits.");
      status = ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE, "Untrusted error code in the JSON response");
      m_lastStatus = status;
      return true;
    }
  }
  // The description travels on in error texts and log lines: it never carries the password.
  status = ResultStatus(code, HuaweiTransport::withoutPassword(YbString::Format(description), m_password));
  if (opType == HuaweiOpType::DELETE_FILE_SYSTEM_SNAPSHOT && status.GetErrorCode() == kSnapshotDoesNotExist) {
    debug.DebugLvl(kLog, 0, m_jobId,
                   "Tried to delete a snapshot that does not exist. Considering the operation as success.");
    status = ResultStatus();
  }
  m_lastStatus = status;
  return status.IsError();
}
