#include "HuaweiJSONGetTokenInfo.h"

#include "ConvertToString.h"
#include "HandBuiltBody.h"
#include "HuaweiVstore.h"
#include "ResponseReading.h"
#include "TkDebug.h"

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
  if (!HuaweiResponse::parseObject("HuaweiJSONGetTokenInfo::parseResponse", m_jobId, response, answer)) return false;
  const jsonxx::Object& data = answer.get<jsonxx::Object>("data");
  HuaweiResponse::readRequiredStrings(data, {{"deviceid", &m_deviceId}, {"iBaseToken", &m_baseToken}});
  HuaweiResponse::readOptionalString(data, "vstoreId", m_vstoreId);
  return true;
}

void HuaweiJSONGetTokenInfo::getTokenInformation(std::string& baseToken, std::string& deviceId, std::string& vstoreId) {
  baseToken = m_baseToken;
  deviceId = m_deviceId;
  vstoreId = m_vstoreId;
}
