#pragma once

#include <string>

namespace HuaweiTransport {

// Replaces the password value of a login body with asterisks, in place and keeping the length.
// The value is found between `password":"` and the next `", "scope"` behind it. Every occurrence
// of knownPassword (the password that was sent) is hidden as well, so that no part of it survives
// whatever the user name or the password itself holds.
void maskPassword(std::string& body, const std::string& knownPassword = std::string());

// Every occurrence of the password in the text replaced by asterisks of the same length.
void hidePassword(std::string& text, const std::string& password);
std::string withoutPassword(std::string text, const std::string& password);

}  // namespace HuaweiTransport
