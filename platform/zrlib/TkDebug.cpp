#include "TkDebug.h"

#include <cstring>

#include "PrintfToString.h"
#include "TkLogSink.h"

namespace {

// The level test comes first so that lines nobody records cost no formatting.
void WriteLine(const char* name, int level, bool hasJobId, long long jobId, const char* format,
               va_list arguments) {
  tklog::LogLine line;
  line.name = name ? name : "";
  line.level = level;
  line.hasJobId = hasJobId;
  line.jobId = jobId;
  // Most lines are a fixed text or a text formatted before ("%s", as the operations pass theirs):
  // those are taken as they are, as printf would write them, without its machinery.
  if (format != nullptr && std::strchr(format, '%') == nullptr) {
    line.text = format;
  } else if (format != nullptr && format[0] == '%' && format[1] == 's' && format[2] == '\0') {
    const char* text = va_arg(arguments, const char*);
    line.text = text ? text : "(null)";  // what printf writes for a null string
  } else {
    line.text = zrplatform::VFormat(format, arguments);
  }
  tklog::Write(line);
}

}  // namespace

TkDebug::TkDebug(TkDebugFileInstance* file) : file_(file) {}

TkDebug::~TkDebug() = default;

void TkDebug::DebugLvl(const char* name, int level, long long jobId, const char* format, ...) {
  if (!tklog::Enabled(level)) return;
  va_list arguments;
  va_start(arguments, format);
  WriteLine(name, level, true, jobId, format, arguments);
  va_end(arguments);
}

void TkDebug::DebugLvl(const char* name, int level, const char* format, ...) {
  if (!tklog::Enabled(level)) return;
  va_list arguments;
  va_start(arguments, format);
  WriteLine(name, level, false, 0, format, arguments);
  va_end(arguments);
}

void TkDebug::Error(const char* name, const char* format, ...) {
  constexpr int kErrorLevel = -1;
  if (!tklog::Enabled(kErrorLevel)) return;
  va_list arguments;
  va_start(arguments, format);
  WriteLine(name, kErrorLevel, false, 0, format, arguments);
  va_end(arguments);
}

TkEvent::TkEvent() : TkDebug(nullptr) {}
