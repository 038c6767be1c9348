// Log lines of the HTTPS client, under the log name "ZRLibCurl".
#pragma once

#include <cstdarg>

#include "PrintfToString.h"
#include "TkDebug.h"

namespace zrcurl {

constexpr const char* kLogName = "ZRLibCurl";
// The causes of a failed exchange (certificate refused, time-out, too slow, redirect, cookie file,
// an answer refused for its size) are errors: the caller's own error line cannot tell them.
constexpr int kErrorLevel = -1;
// Misuse and set-up failures that the caller reports by itself.
constexpr int kFailureLevel = 3;
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
