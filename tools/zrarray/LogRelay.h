// The library's log lines on standard error, up to the chosen level, and what its errors said:
// first-generation operations answer only true or false and tell the reason in the log.
#pragma once

#include <string>

#include "Command.h"
#include "TkLogSink.h"

namespace zrarray {

class LogRelay {
 public:
  // Installs itself as the library's log sink; the destructor puts back the one before. Lines up
  // to `level` are printed: none below -1.
  explicit LogRelay(int level);
  ~LogRelay();
  LogRelay(const LogRelay&) = delete;
  LogRelay& operator=(const LogRelay&) = delete;

  // Forgets the errors seen so far: each operation is judged by its own.
  void startOperation();
  // Fills what the outcome lacks from the error lines of the operation: its own text as the
  // reason (the last, but never the log-out that follows a failed login), the array's code and own
  // words from the transport's line of a refused request, and the first thing the HTTPS client
  // said of a failed exchange (refused connection, untrusted certificate, unreadable CA file), and
  // whether an answer came without the data its reader needed.
  void explain(Outcome& outcome) const;

 private:
  void receive(const tklog::LogLine& line);
  void remember(const tklog::LogLine& line);

  int level_;
  bool terminal_;
  tklog::Sink saved_;
  int savedLevel_;
  std::string operationError_;
  std::string transportCause_;
  unsigned long long arrayCode_ = 0;
  std::string arrayWords_;
  bool answeredNothing_ = false;
};

}  // namespace zrarray
