#include "PasswordMask.h"

namespace HuaweiTransport {

namespace {
const char kValueOpening[] = "password\":\"";
const char kValueClosing[] = "\", \"scope\"";
const std::string::size_type kQuoteOffset = 10;  // the quote that opens the value
}  // namespace

void hidePassword(std::string& text, const std::string& password) {
  if (password.empty()) return;
  for (std::string::size_type at = text.find(password); at != std::string::npos;
       at = text.find(password, at + password.size())) {
    text.replace(at, password.size(), password.size(), '*');
  }
}

std::string withoutPassword(std::string text, const std::string& password) {
  hidePassword(text, password);
  return text;
}

void maskPassword(std::string& body, const std::string& knownPassword) {
  hidePassword(body, knownPassword);
  const std::string::size_type opening = body.find(kValueOpening);
  if (opening == std::string::npos) return;
  // Searched behind the value's start: a user name holding the closing text comes before it.
  std::string::size_type pos = opening + kQuoteOffset;
  const std::string::size_type closing = body.find(kValueClosing, pos + 1);
  if (closing == std::string::npos) return;

  body[pos++] = '"';
  while (pos < closing && body[pos] != '\0') body[pos++] = '*';
  body[pos] = '"';
}

}  // namespace HuaweiTransport
