// The host product's log writer. One function of the system writes through it directly, asking
// the writer's level first. The default writer routes to the tklog sink.
#pragma once

#include <boost/shared_ptr.hpp>

class CLogWriterInterface {
 public:
  virtual ~CLogWriterInterface() = default;
  // Highest level that the writer records.
  virtual int GetLogLevel() = 0;
  // Writes one printf-style line; function is the caller's signature text, line its source line.
  virtual void WriteLog(int level, const char* function, int line, const char* format, ...)
      __attribute__((format(printf, 5, 6))) = 0;
};

extern boost::shared_ptr<CLogWriterInterface> g_ptrLogWriter;
