#include "WalkProgress.h"

#include <unistd.h>

#include <cstdio>

namespace zrarray {

namespace {
// Often enough to look alive, rarely enough that a fast walk does not spend its time drawing.
const auto kRedrawInterval = std::chrono::milliseconds(100);
}  // namespace

WalkProgress::WalkProgress(bool terminal) : terminal_(terminal), start_(Clock::now()), lastDraw_(start_) {}

bool WalkProgress::StandardErrorIsTerminal() { return isatty(STDERR_FILENO) == 1; }

void WalkProgress::page(unsigned long long pages, unsigned long long entries, const std::string& arrayPercent) {
  pages_ = pages;
  entries_ = entries;
  arrayPercent_ = arrayPercent;
  if (terminal_ && (!drawn_ || Clock::now() - lastDraw_ >= kRedrawInterval)) draw();
}

void WalkProgress::finish() {
  if (!terminal_ || pages_ == 0) return;
  draw();
  std::fputc('\n', stderr);
  drawn_ = false;
}

void WalkProgress::draw() {
  lastDraw_ = Clock::now();
  const double seconds = std::chrono::duration<double>(lastDraw_ - start_).count();
  const double rate = seconds > 0 ? static_cast<double>(entries_) / seconds : 0.0;
  // "\r\033[K": back to the start of the line and clear it, so a shorter line leaves no tail.
  std::fprintf(stderr, "\r\033[K%llu pages, %llu entries, array %s%%, %.0f entries/s", pages_, entries_,
               arrayPercent_.c_str(), rate);
  std::fflush(stderr);
  drawn_ = true;
}

}  // namespace zrarray
