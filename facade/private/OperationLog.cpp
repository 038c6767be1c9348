#include "OperationLog.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "TkLogSink.h"

namespace {

// True when the format's only conversions are a plain %s or %%: then printf would copy the
// strings in and nothing more, which is what most lines of the operations do.
bool onlyPlainStrings(const char* format) {
  for (const char* p = std::strchr(format, '%'); p != nullptr; p = std::strchr(p + 2, '%')) {
    if (p[1] != 's' && p[1] != '%') return false;
  }
  return true;
}

// The text of one line, as printf writes it: on the stack when it fits, as most lines do.
class LineText {
 public:
  LineText(const char* format, va_list arguments) {
    m_small[0] = '\0';
    if (onlyPlainStrings(format)) {
      copyStrings(format, arguments);
    } else {
      printTo(format, arguments);
    }
  }
  LineText(const LineText&) = delete;
  LineText& operator=(const LineText&) = delete;

  const char* c_str() const { return m_spilled ? m_large.c_str() : m_small; }

 private:
  void append(const char* text, size_t size) {
    if (!m_spilled && m_used + size < sizeof m_small) {
      std::memcpy(m_small + m_used, text, size);
      m_used += size;
      m_small[m_used] = '\0';
      return;
    }
    if (!m_spilled) {
      m_large.assign(m_small, m_used);
      m_spilled = true;
    }
    m_large.append(text, size);
  }

  void copyStrings(const char* format, va_list arguments) {
    for (const char* p = format;;) {
      const char* percent = std::strchr(p, '%');
      if (percent == nullptr) {
        append(p, std::strlen(p));
        return;
      }
      append(p, static_cast<size_t>(percent - p));
      if (percent[1] == '%') {
        append("%", 1);
      } else {
        const char* text = va_arg(arguments, const char*);
        if (text == nullptr) text = "(null)";  // what printf writes for a null string
        append(text, std::strlen(text));
      }
      p = percent + 2;
    }
  }

  void printTo(const char* format, va_list arguments) {
    va_list copy;
    va_copy(copy, arguments);
    const int length = std::vsnprintf(m_small, sizeof m_small, format, copy);
    va_end(copy);
    if (length <= 0) {
      m_small[0] = '\0';  // as an empty text
      return;
    }
    if (static_cast<size_t>(length) < sizeof m_small) return;
    std::vector<char> text(static_cast<size_t>(length) + 1);
    std::vsnprintf(text.data(), text.size(), format, arguments);
    m_large.assign(text.data(), static_cast<size_t>(length));
    m_spilled = true;
  }

  char m_small[256];
  size_t m_used = 0;
  bool m_spilled = false;
  std::string m_large;
};

}  // namespace

void OperationLog::failure(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const LineText text(format, arguments);
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
  const LineText text(format, arguments);
  va_end(arguments);
  target().DebugLvl(m_name, level, static_cast<long long>(m_jobId), "%s", text.c_str());
}

void OperationLog::lineWithoutJob(int level, const char* format, ...) {
  if (!tklog::Enabled(level)) return;
  va_list arguments;
  va_start(arguments, format);
  const LineText text(format, arguments);
  va_end(arguments);
  target().DebugLvl(m_name, level, "%s", text.c_str());
}
