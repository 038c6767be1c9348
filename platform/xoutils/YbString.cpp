#include "YbString.h"

#include <cstring>

#include "PrintfToString.h"

std::string YbString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text = zrplatform::VFormat(format, arguments);
  va_end(arguments);
  return text;
}

namespace {

// Skips one conversion after its '%': flags, width, precision, length and the conversion letter.
const char* SkipConversion(const char* p) {
  while (*p != '\0' && std::strchr("-+ #0'", *p) != nullptr) ++p;
  while (*p != '\0' && (std::strchr("0123456789*.$", *p) != nullptr)) ++p;
  while (*p != '\0' && std::strchr("hlLqjzZt", *p) != nullptr) ++p;
  return *p != '\0' ? p + 1 : p;
}

}  // namespace

// Texts that arrive from outside come through here as formats; with no argument to give, every
// conversion but "%%" renders as nothing rather than letting printf read whatever is on the stack.
std::string YbString::Format(const std::string& format) {
  std::string text;
  const char* p = format.c_str();  // like a C format, the text ends at its first zero byte
  while (*p != '\0') {
    if (*p != '%') {
      text.push_back(*p++);
    } else if (p[1] == '%') {
      text.push_back('%');
      p += 2;
    } else {
      p = SkipConversion(p + 1);
    }
  }
  return text;
}
