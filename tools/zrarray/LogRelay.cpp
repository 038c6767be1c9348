#include "LogRelay.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <regex>

namespace zrarray {

namespace {

// The transport's line for a request the array refused.
const std::regex kArrayError(R"(API Error Code\[(\d+)\], API Error Message \[(.*)\]$)");

// The HTTPS client tells why an exchange failed at this level, under this name.
const int kClientFailureLevel = 3;
const char kClientLogName[] = "ZRLibCurl";

const char* Tag(int level) {
  if (level < 0) return "error";
  if (level == 0) return "info";
  return "debug";
}

}  // namespace

LogRelay::LogRelay(int level)
    : level_(level),
      terminal_(isatty(STDERR_FILENO) == 1),
      saved_(tklog::CurrentSink()),
      savedLevel_(tklog::MaxLevel()) {
  // Errors and the client's failures are always wanted, to explain a failure; they are printed
  // only up to level_.
  tklog::SetMaxLevel(std::max(level_, kClientFailureLevel));
  tklog::SetSink([this](const tklog::LogLine& line) { receive(line); });
}

LogRelay::~LogRelay() {
  tklog::SetSink(saved_);
  tklog::SetMaxLevel(savedLevel_);
}

void LogRelay::startOperation() {
  lastError_.clear();
  clientFailure_.clear();
  arrayCode_ = 0;
  arrayDescription_.clear();
}

void LogRelay::explain(Outcome& outcome) const {
  if (outcome.reason.empty()) outcome.reason = lastError_;
  if (outcome.arrayCode == 0 && arrayCode_ != 0) {
    outcome.arrayCode = arrayCode_;
    outcome.arrayDescription = arrayDescription_;
  }
  if (outcome.arrayCode == 0 && !clientFailure_.empty()) outcome.reason += " (" + clientFailure_ + ")";
}

void LogRelay::receive(const tklog::LogLine& line) {
  if (line.level < 0) {
    lastError_ = line.text;
    std::smatch found;
    if (std::regex_search(line.text, found, kArrayError)) {
      arrayCode_ = std::stoull(found[1].str());
      arrayDescription_ = found[2].str();
    }
  }
  if (line.level == kClientFailureLevel && line.name == kClientLogName) clientFailure_ = line.text;
  if (line.level > level_) return;
  // On a terminal a progress line may be standing: clear it first, it is redrawn after.
  std::fprintf(stderr, "%s[%s] %s: %s\n", terminal_ ? "\r\033[K" : "", Tag(line.level), line.name.c_str(),
               line.text.c_str());
}

}  // namespace zrarray
