// Log lines of the HTTPS client, under the log name "ZRLibCurl".
#pragma once

#include "TkDebug.h"

namespace zrcurl {

constexpr const char* kLogName = "ZRLibCurl";
// Failures of an exchange are details for the caller, which logs its own error line.
constexpr int kFailureLevel = 3;
constexpr int kWarningLevel = 0;
constexpr int kNoiseLevel = 7;

template <typename... Args>
void Log(int level, const char* format, Args... args) {
  TkDebug log(nullptr);
  log.DebugLvl(kLogName, level, format, args...);
}

}  // namespace zrcurl
