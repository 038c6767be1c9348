#include "TkLogSink.h"

#include <sys/time.h>

#include <atomic>
#include <cstdio>
#include <ctime>
#include <mutex>

#include "LogLineText.h"

namespace tklog {
namespace {

constexpr int kDefaultMaxLevel = 4;

// Process-wide state, never destroyed: lines may still be written from static destructors of
// other libraries at exit.
struct SinkState {
  std::atomic<int> maxLevel{kDefaultMaxLevel};
  std::mutex mutex;  // held around every sink call, so that SetSink waits for lines in flight
  Sink sink;
};

SinkState& State() {
  static SinkState* state = new SinkState;
  return *state;
}

std::string TimeStamp() {
  timeval now{};
  gettimeofday(&now, nullptr);
  tm local{};
  localtime_r(&now.tv_sec, &local);
  char text[40];
  const size_t length = std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", &local);
  std::snprintf(text + length, sizeof text - length, ".%03ld", static_cast<long>(now.tv_usec / 1000));
  return text;
}

void WriteToStandardError(const LogLine& line) {
  std::string out = TimeStamp();
  out += " [" + std::to_string(line.level) + "] " + line.name;
  if (line.hasJobId) out += " (job " + std::to_string(line.jobId) + ")";
  out += ": " + line.text + "\n";
  // One write per line keeps lines of several threads from interleaving.
  std::fwrite(out.data(), 1, out.size(), stderr);
}

}  // namespace

void SetSink(Sink sink) {
  SinkState& state = State();
  std::lock_guard<std::mutex> lock(state.mutex);
  state.sink = std::move(sink);
}

Sink CurrentSink() {
  SinkState& state = State();
  std::lock_guard<std::mutex> lock(state.mutex);
  return state.sink;
}

void SetMaxLevel(int level) { State().maxLevel.store(level, std::memory_order_relaxed); }

int MaxLevel() { return State().maxLevel.load(std::memory_order_relaxed); }

bool Enabled(int level) { return level <= MaxLevel(); }

void Write(const LogLine& line) {
  if (!Enabled(line.level)) return;
  // Whatever a line carries, it reaches every sink as one line.
  if (!IsOneLine(line.text) || !IsOneLine(line.name)) {
    LogLine escaped = line;
    escaped.text = OneLine(line.text);
    escaped.name = OneLine(line.name);
    Write(escaped);
    return;
  }
  SinkState& state = State();
  std::lock_guard<std::mutex> lock(state.mutex);
  if (state.sink) {
    state.sink(line);
  } else {
    WriteToStandardError(line);
  }
}

}  // namespace tklog
