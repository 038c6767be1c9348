#pragma once

#include <string>

namespace HuaweiTransport {

// The management port of the array.
const int kManagementPort = 8088;

// https://<host>:8088/deviceManager/rest/<device id>/<resource>, or the login URL for opType 1
// (the device identifier is not known before login, so "xxxxx" stands in its place). Nothing is escaped.
std::string formRequestUrl(const std::string& controlHost, const std::string& deviceId, const std::string& resource,
                           int opType);

}  // namespace HuaweiTransport
