#include "PasswordMask.h"

namespace HuaweiTransport {

namespace {
const char kValueOpening[] = "password\":\"";
const char kValueClosing[] = "\", \"scope\"";
const std::string::size_type kQuoteOffset = 10;  // the quote that opens the value
}  // namespace

void maskPassword(std::string& body, const std::string& knownPassword) {
  const std::string::size_type opening = body.find(kValueOpening);
  if (opening == std::string::npos) return;
  const std::string::size_type closing = body.find(kValueClosing);
  if (closing == std::string::npos) return;

  std::string::size_type pos = opening + kQuoteOffset;
  body[pos++] = '"';
  while (pos > 0 && closing > 0 && pos < closing && body[pos] != '\0') body[pos++] = '*';
  if (pos < body.size()) body[pos] = '"';

  // A password holding the closing text stops the walk inside the value: mask the rest of it too.
  const std::string::size_type valueStart = opening + kQuoteOffset + 1;
  if (!knownPassword.empty() && knownPassword.find(kValueClosing) != std::string::npos &&
      valueStart + knownPassword.size() <= body.size()) {
    for (std::string::size_type i = valueStart; i < valueStart + knownPassword.size(); ++i) body[i] = '*';
  }
}

}  // namespace HuaweiTransport
