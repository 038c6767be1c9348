#include "LogRelay.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <regex>

namespace zrarray {

namespace {

// The transport's line for a request the array refused.
const std::regex kArrayError(R"(API Error Code\[(\d+)\], API Error Message \[(.*)\]$)");
// The HTTPS client's line begins with the request; the cause follows.
const std::regex kRequestPrefix(R"(^(GET|POST|PUT|DELETE) \S+:? (failed: )?)");

const char kClientLogName[] = "ZRLibCurl";
const char kTransportLogName[] = "HuaweiRestAPI";
// A failed login closes the session it began; that failure is a consequence, not the cause.
const char kCloseSessionLogName[] = "ZrManageHuawei::closeSession";
// A value refused before sending: the operation then says only that its request could not be built.
const char kRefusedValue[] = " cannot be placed in the request: ";
// An array that finds nothing answers without "data"; each generation of reader says so its own way,
// the list readers of the SAN requests at level 3.
const char* const kNoData[] = {"[data] field not present", "lacks a required value: key \"data\""};
const char kNoDataList[] = "[ERROR] Unable to parse JSON response";
const int kNoDataListLevel = 3;

const char* Tag(int level) {
  if (level < 0) return "error";
  if (level == 0) return "info";
  return "debug";
}

bool StartsWith(const std::string& text, const char* prefix) { return text.rfind(prefix, 0) == 0; }

}  // namespace

LogRelay::LogRelay(int level)
    : level_(level),
      terminal_(isatty(STDERR_FILENO) == 1),
      saved_(tklog::CurrentSink()),
      savedLevel_(tklog::MaxLevel()) {
  // Errors, and the list readers' word for an empty answer, are always wanted to explain a failure;
  // they are printed only up to level_.
  tklog::SetMaxLevel(std::max(level_, kNoDataListLevel));
  tklog::SetSink([this](const tklog::LogLine& line) { receive(line); });
}

LogRelay::~LogRelay() {
  tklog::SetSink(saved_);
  tklog::SetMaxLevel(savedLevel_);
}

void LogRelay::startOperation() {
  operationError_.clear();
  transportCause_.clear();
  arrayCode_ = 0;
  arrayWords_.clear();
  answeredNothing_ = false;
}

void LogRelay::explain(Outcome& outcome) const {
  if (outcome.reason.empty()) outcome.reason = operationError_;
  if (outcome.arrayCode == 0 && arrayCode_ != 0) outcome.arrayCode = arrayCode_;
  // The library's text for the code may wrap the array's words in its own: the words alone.
  if (outcome.arrayCode != 0 && outcome.arrayCode == arrayCode_) outcome.arrayDescription = arrayWords_;
  if (outcome.arrayCode == 0 && outcome.reason.find(transportCause_) == std::string::npos) {
    outcome.cause = transportCause_;
  }
  outcome.answeredNothing = answeredNothing_;
}

void LogRelay::remember(const tklog::LogLine& line) {
  if (line.name == kClientLogName) {
    // The first is the root: a CA file that cannot be read, then the exchange that failed for it.
    if (transportCause_.empty()) transportCause_ = std::regex_replace(line.text, kRequestPrefix, "");
    return;
  }
  if (StartsWith(line.name, kTransportLogName)) {
    std::smatch found;
    if (std::regex_search(line.text, found, kArrayError)) {
      arrayCode_ = std::stoull(found[1].str());
      arrayWords_ = found[2].str();
    }
    return;
  }
  for (const char* noData : kNoData) {
    if (line.text.find(noData) != std::string::npos) answeredNothing_ = true;
  }
  if (transportCause_.empty() && line.text.find(kRefusedValue) != std::string::npos) transportCause_ = line.text;
  if (line.name != kCloseSessionLogName) operationError_ = line.text;
}

void LogRelay::receive(const tklog::LogLine& line) {
  if (line.level < 0) remember(line);
  if (line.level == kNoDataListLevel && line.text == kNoDataList) answeredNothing_ = true;
  if (line.level > level_) return;
  // On a terminal a progress line may be standing: clear it first, it is redrawn after.
  std::fprintf(stderr, "%s[%s] %s: %s\n", terminal_ ? "\r\033[K" : "", Tag(line.level), line.name.c_str(),
               line.text.c_str());
}

}  // namespace zrarray
