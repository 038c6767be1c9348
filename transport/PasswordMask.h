#pragma once

#include <string>

namespace HuaweiTransport {

// Replaces the password value of a login body with asterisks, in place and keeping the length.
// The value is found between `password":"` and the first `", "scope"` of the body. When the
// password itself holds that closing text, the value would be masked only up to it; knownPassword
// (the password that was sent) closes that gap so that no part of it survives.
void maskPassword(std::string& body, const std::string& knownPassword = std::string());

}  // namespace HuaweiTransport
