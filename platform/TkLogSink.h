// The process-wide destination of every log line. By default lines up to level 4 go to standard
// error with a time stamp; an embedder installs its own sink, tests install a capturing one.
#pragma once

#include <functional>
#include <string>

namespace tklog {

struct LogLine {
  std::string name;     // log name, such as "HuaweiRestAPI::sendReq"
  int level = 0;        // -1 error ... 7 noise
  bool hasJobId = false;
  long long jobId = 0;
  std::string text;     // the formatted message
};

using Sink = std::function<void(const LogLine&)>;

// Installs a sink; an empty function restores the default standard-error sink. Thread-safe.
void SetSink(Sink sink);
// The sink installed now; empty while the default one is in use. Lets a temporary sink (such as
// a capture in tests) put back what it replaced.
Sink CurrentSink();
// Lines above this level are dropped before they are formatted. Default 4.
void SetMaxLevel(int level);
int MaxLevel();
// True when a line at this level would reach the sink.
bool Enabled(int level);
// Hands one line to the sink (after the level filter), its control characters escaped so that it
// stays one line (LogLineText.h). Thread-safe.
void Write(const LogLine& line);

}  // namespace tklog
