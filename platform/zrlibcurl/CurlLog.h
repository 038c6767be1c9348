// Log lines of the HTTPS client, under the log name "ZRLibCurl".
#pragma once

#include <cstdarg>

#include "PrintfToString.h"
#include "TkDebug.h"

namespace zrcurl {

constexpr const char* kLogName = "ZRLibCurl";
// Failures of an exchange are details for the caller, which logs its own error line.
constexpr int kFailureLevel = 3;
// What the caller cannot tell from its own line: an answer refused for its size.
constexpr int kErrorLevel = -1;
constexpr int kWarningLevel = 0;
constexpr int kNoiseLevel = 7;

inline void Log(int level, const char* format, ...) __attribute__((format(printf, 2, 3)));
inline void Log(int level, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = zrplatform::VFormat(format, arguments);
  va_end(arguments);
  TkDebug(nullptr).DebugLvl(kLogName, level, "%s", text.c_str());
}

}  // namespace zrcurl
