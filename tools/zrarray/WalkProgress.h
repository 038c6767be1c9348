// The progress line of a long walk on standard error: pages, entries, the array's per cent and the
// rate, redrawn in place. Only on a terminal: in a pipe or a log file it would be noise.
#pragma once

#include <chrono>
#include <string>

namespace zrarray {

class WalkProgress {
 public:
  explicit WalkProgress(bool terminal);
  // True when standard error is a terminal.
  static bool StandardErrorIsTerminal();

  void page(unsigned long long pages, unsigned long long entries, const std::string& arrayPercent);
  // Draws the last state and ends the line.
  void finish();

 private:
  void draw();

  using Clock = std::chrono::steady_clock;
  bool terminal_;
  bool drawn_ = false;
  Clock::time_point start_;
  Clock::time_point lastDraw_;
  unsigned long long pages_ = 0;
  unsigned long long entries_ = 0;
  std::string arrayPercent_;
};

}  // namespace zrarray
