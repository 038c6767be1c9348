#pragma once

#include <string>

namespace HuaweiTransport {

// The management port of the array.
const int kManagementPort = 8088;

// https://<host>:8088/deviceManager/rest/<device id>/<resource>, or the login URL for opType 1
// (the device identifier is not known before login, so "xxxxx" stands in its place). Nothing is escaped.
std::string formRequestUrl(const std::string& controlHost, const std::string& deviceId, const std::string& resource,
                           int opType);

// The URLs of one connection's requests but the login: the part before the resource is formed
// again only when the host or the device identifier it was formed from changes.
class RequestUrlPrefix {
 public:
  std::string form(const std::string& controlHost, const std::string& deviceId, const std::string& resource);

 private:
  bool m_formed = false;
  std::string m_controlHost;
  std::string m_deviceId;
  std::string m_prefix;  // https://<host>:8088/deviceManager/rest/<device id>/
};

}  // namespace HuaweiTransport
