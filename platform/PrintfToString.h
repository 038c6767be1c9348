// printf into a std::string, shared by the platform libraries (header-only, so that each library
// keeps its own copy and none of them has to link another for it).
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

namespace zrplatform {

inline std::string VFormat(const char* format, va_list arguments) {
  if (format == nullptr) return std::string();
  char small[256];
  va_list copy;
  va_copy(copy, arguments);
  const int length = std::vsnprintf(small, sizeof small, format, copy);
  va_end(copy);
  if (length < 0) return std::string();
  if (static_cast<size_t>(length) < sizeof small) return std::string(small, static_cast<size_t>(length));

  std::string text(static_cast<size_t>(length) + 1, '\0');
  std::vsnprintf(&text[0], text.size(), format, arguments);
  text.resize(static_cast<size_t>(length));
  return text;
}

}  // namespace zrplatform
