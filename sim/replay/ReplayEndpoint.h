// Serves a recording as the array that made it: the login answers as recorded with a fresh
// token and a device identifier of this replay in place of the placeholders; every later request
// is answered by the exchange that ExchangeMatcher finds for it, the device identifier mapped
// back to its placeholder first. A request the recording does not hold gets an error answer and
// a line on the diagnostics stream.
//
//   GET /simulator/replay    {"exchanges", "served", "unmatched": [...], "neverRequested": [...],
//                             "inOrder"}
//
// Thread-safe.
#pragma once

#include <functional>
#include <mutex>
#include <ostream>
#include <random>
#include <string>

#include "http/HttpExchange.h"
#include "replay/ExchangeMatcher.h"
#include "replay/Recording.h"

namespace arraysim {

class ReplayEndpoint {
 public:
  // `onUnmatched` runs after each unmatched request has been answered and reported.
  ReplayEndpoint(Recording recording, std::ostream& diagnostics, std::function<void()> onUnmatched = {});

  HttpAnswer handle(const IncomingRequest& request);
  ReplaySummary summary() const;
  const std::string& deviceId() const { return deviceId_; }

  static constexpr const char* kSummaryPath = "/simulator/replay";

 private:
  HttpAnswer unmatched(const IncomingRequest& request, const std::string& resource, const std::string& body);
  std::string randomText(std::size_t length, const char* alphabet);

  mutable std::mutex mutex_;
  ExchangeMatcher matcher_;
  std::ostream& diagnostics_;
  std::function<void()> onUnmatched_;
  std::mt19937_64 random_;
  std::string deviceId_;
  std::string token_;  // of the last login
};

// What a replay did, for its end: served and recorded counts, then each unmatched request and
// each exchange never requested on a line of its own.
std::string DescribeReplay(const ReplaySummary& summary);

}  // namespace arraysim
