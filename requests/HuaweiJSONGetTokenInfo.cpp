#include "HuaweiJSONGetTokenInfo.h"

#include "ConvertToString.h"
#include "HandBuiltBody.h"
#include "HuaweiVstore.h"
#include "ResponseReading.h"
#include "TkDebug.h"

namespace {

const char kParseLog[] = "HuaweiJSONGetTokenInfo::parseResponse";

// The device identifier becomes a segment of every later URL: one segment of plain characters.
bool isDeviceId(const std::string& text) {
  for (const char c : text) {
    const bool letterOrDigit = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    if (!letterOrDigit && c != '-' && c != '_') return false;
  }
  return true;
}

// The base token becomes a header value: visible ASCII, so that it cannot end the header or add one.
bool isBaseToken(const std::string& text) {
  for (const char c : text) {
    if (c < '!' || c > '~') return false;
  }
  return true;
}

}  // namespace

HuaweiJSONGetTokenInfo::HuaweiJSONGetTokenInfo(unsigned long long const& jobId, std::string const& userName,
                                               std::string const& password)
    : HuaweiJSONBase(jobId), m_userName(userName), m_password(password), m_vstoreId(HuaweiVstore::kNone) {}

bool HuaweiJSONGetTokenInfo::buildRequest(std::string& body) {
  body.clear();
  if (m_userName.empty() || m_password.empty()) {
    TkDebug(nullptr).DebugLvl("HuaweiJSONGetTokenInfo::buildRequest", -1, m_jobId,
                              "Unable to build the request. Invalid parameters!!");
    return false;
  }
  // The blanks matter: the transport masks the password up to the text that opens "scope".
  body = HandBuiltBody()
             .add("username", m_userName)
             .add("password", m_password)
             .add("scope", ConvertToString::to_string<int>(0))
             .str();
  return true;
}

bool HuaweiJSONGetTokenInfo::parseResponse(std::string& response) {
  jsonxx::Object answer;
  if (!HuaweiResponse::parseObject(kParseLog, m_jobId, response, answer)) return false;
  const jsonxx::Object& data = answer.get<jsonxx::Object>("data");
  HuaweiResponse::readRequiredStrings(data, {{"deviceid", &m_deviceId}, {"iBaseToken", &m_baseToken}});
  HuaweiResponse::readOptionalString(data, "vstoreId", m_vstoreId);
  // Nothing of an answer that fails here reaches the session.
  if (!isDeviceId(m_deviceId)) {
    TkDebug(nullptr).DebugLvl(kParseLog, -1, m_jobId,
                              "The deviceid of the login answer holds characters other than letters, digits, '-' "
                              "and '_'. The session is refused.");
  } else if (!isBaseToken(m_baseToken)) {
    TkDebug(nullptr).DebugLvl(kParseLog, -1, m_jobId,
                              "The iBaseToken of the login answer holds characters other than visible ASCII. The "
                              "session is refused.");
  } else {
    return true;
  }
  m_deviceId.clear();
  m_baseToken.clear();
  m_vstoreId = HuaweiVstore::kNone;
  return false;
}

void HuaweiJSONGetTokenInfo::getTokenInformation(std::string& baseToken, std::string& deviceId, std::string& vstoreId) {
  baseToken = m_baseToken;
  deviceId = m_deviceId;
  vstoreId = m_vstoreId;
}
