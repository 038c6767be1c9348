#include <boost/make_shared.hpp>

#include "CLogWriterInterface.h"
#include "PrintfToString.h"
#include "TkLogSink.h"

namespace {

// Stands in for the host product's writer: records what the tklog sink records, under the
// caller's function text as log name.
class SinkLogWriter : public CLogWriterInterface {
 public:
  int GetLogLevel() override { return tklog::MaxLevel(); }

  void WriteLog(int level, const char* function, int /*line*/, const char* format, ...) override {
    if (!tklog::Enabled(level)) return;
    tklog::LogLine line;
    line.name = function ? function : "";
    line.level = level;
    va_list arguments;
    va_start(arguments, format);
    line.text = zrplatform::VFormat(format, arguments);
    va_end(arguments);
    tklog::Write(line);
  }
};

}  // namespace

boost::shared_ptr<CLogWriterInterface> g_ptrLogWriter = boost::make_shared<SinkLogWriter>();
