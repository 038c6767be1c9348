#include "TkDebug.h"

#include <cstring>
#include <string>

#include "PrintfToString.h"
#include "TkLogSink.h"

namespace {

// Each thread fills one line of its own again and again, so that a line takes no memory once
// lines as long have been written on the thread. The state is plain data, readable until the
// thread's storage goes: a line written after the kept one is destroyed (a static destructor at
// exit), or while it is in use (a sink that logs), is made for the call.
enum class KeptState : unsigned char { Unmade, Ready, Gone };
thread_local KeptState t_keptState = KeptState::Unmade;

struct KeptLine {
  KeptLine() { t_keptState = KeptState::Ready; }
  ~KeptLine() { t_keptState = KeptState::Gone; }
  KeptLine(const KeptLine&) = delete;
  KeptLine& operator=(const KeptLine&) = delete;

  tklog::LogLine line;
  bool busy = false;
};

constexpr size_t kKeptTextBytes = 4096;  // a longer text does not pin its memory to the thread

// The thread's line while this call uses it, or nullptr when the call must make its own.
class KeptLineUse {
 public:
  KeptLineUse() {
    if (t_keptState == KeptState::Gone) return;
    thread_local KeptLine kept;
    if (kept.busy) return;
    kept_ = &kept;
    kept_->busy = true;
  }
  ~KeptLineUse() {
    if (!kept_) return;
    if (kept_->line.text.capacity() > kKeptTextBytes) std::string().swap(kept_->line.text);
    kept_->busy = false;
  }
  KeptLineUse(const KeptLineUse&) = delete;
  KeptLineUse& operator=(const KeptLineUse&) = delete;
  tklog::LogLine* line() const { return kept_ ? &kept_->line : nullptr; }

 private:
  KeptLine* kept_ = nullptr;
};

// The level test comes first so that lines nobody records cost no formatting.
void WriteLine(const char* name, int level, bool hasJobId, long long jobId, const char* format,
               va_list arguments) {
  const KeptLineUse kept;
  tklog::LogLine ownLine;
  tklog::LogLine& line = kept.line() ? *kept.line() : ownLine;
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
