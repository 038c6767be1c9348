#include "OperationLog.h"

#include <cstdarg>
#include <cstdio>
#include <string>
#include <vector>

#include "TkLogSink.h"

namespace {

// Most lines fit the buffer on the stack and are formatted once.
std::string formatArguments(const char* format, va_list arguments) {
  char small[256];
  va_list copy;
  va_copy(copy, arguments);
  const int length = std::vsnprintf(small, sizeof small, format, copy);
  va_end(copy);
  if (length <= 0) return std::string();
  if (static_cast<size_t>(length) < sizeof small) return std::string(small, static_cast<size_t>(length));
  std::vector<char> text(static_cast<size_t>(length) + 1);
  std::vsnprintf(text.data(), text.size(), format, arguments);
  return std::string(text.data(), static_cast<size_t>(length));
}

}  // namespace

void OperationLog::failure(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = formatArguments(format, arguments);
  va_end(arguments);
  if (m_failuresByError) {
    target().Error(m_name, "%s", text.c_str());
  } else {
    target().DebugLvl(m_name, -1, static_cast<long long>(m_jobId), "%s", text.c_str());
  }
}

void OperationLog::line(int level, const char* format, ...) {
  if (!tklog::Enabled(level)) return;  // a line nobody records is not formatted
  va_list arguments;
  va_start(arguments, format);
  const std::string text = formatArguments(format, arguments);
  va_end(arguments);
  target().DebugLvl(m_name, level, static_cast<long long>(m_jobId), "%s", text.c_str());
}

void OperationLog::lineWithoutJob(int level, const char* format, ...) {
  if (!tklog::Enabled(level)) return;
  va_list arguments;
  va_start(arguments, format);
  const std::string text = formatArguments(format, arguments);
  va_end(arguments);
  target().DebugLvl(m_name, level, "%s", text.c_str());
}
