#include "RequestUrl.h"

#include "HuaweiOpTypes.h"

namespace HuaweiTransport {

std::string formRequestUrl(const std::string& controlHost, const std::string& deviceId, const std::string& resource,
                           int opType) {
  // Appended in place: one allocation per URL, on the path of every request.
  static const std::string port = std::to_string(kManagementPort);
  static const char kSessions[] = "/deviceManager/rest/xxxxx/sessions";
  static const char kRest[] = "/deviceManager/rest/";
  const bool login = opType == HuaweiOpType::SET_TOKEN_INFO;
  std::string url;
  url.reserve(controlHost.size() + deviceId.size() + resource.size() + sizeof kSessions + 16);
  url.append("https://").append(controlHost).append(":").append(port);
  // Appended, then returned by name: a returned append() would be copied.
  if (login) {
    url.append(kSessions);
  } else {
    url.append(kRest).append(deviceId).append("/").append(resource);
  }
  return url;
}

std::string RequestUrlPrefix::form(const std::string& controlHost, const std::string& deviceId,
                                   const std::string& resource) {
  if (!m_formed || controlHost != m_controlHost || deviceId != m_deviceId) {
    m_prefix = formRequestUrl(controlHost, deviceId, std::string(), 0);
    m_controlHost = controlHost;
    m_deviceId = deviceId;
    m_formed = true;
  }
  std::string url;
  url.reserve(m_prefix.size() + resource.size());
  url.append(m_prefix).append(resource);
  return url;
}

}  // namespace HuaweiTransport
