#include "YbString.h"

#include "PrintfToString.h"

std::string YbString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text = zrplatform::VFormat(format, arguments);
  va_end(arguments);
  return text;
}

// Texts from outside (the array's descriptions, error texts that hold a caller's names) come
// through here where a format is expected. Nothing is read beyond the text: "%%" gives "%", and
// every other directive, a lone "%" at the end included, is copied as it stands.
std::string YbString::Format(const std::string& format) {
  std::string text;
  const char* p = format.c_str();  // like a C format, the text ends at its first zero byte
  text.reserve(format.size());
  while (*p != '\0') {
    text.push_back(*p);
    p += (p[0] == '%' && p[1] == '%') ? 2 : 1;
  }
  return text;
}
