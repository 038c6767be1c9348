// Finds the recorded exchange that answers a request: the same method, resource and body, and
// among equal requests (the pages of a change list) the first one not yet served, so that they
// come back in recorded order. A login matches by method and resource alone: its recorded body
// holds a masked password. Not thread-safe.
#pragma once

#include <cstddef>
#include <deque>
#include <map>
#include <string>
#include <vector>

#include "replay/Recording.h"

namespace arraysim {

struct ReplaySummary {
  std::size_t exchanges = 0;
  std::size_t served = 0;
  // "METHOD resource" of each request the recording did not hold, in the order they came.
  std::vector<std::string> unmatched;
  // The exchanges no request asked for, in recorded order.
  std::vector<RecordedExchange> neverRequested;
  // Whether the served exchanges came in recorded order.
  bool inOrder = true;

  bool complete() const { return unmatched.empty() && neverRequested.empty(); }
};

class ExchangeMatcher {
 public:
  explicit ExchangeMatcher(std::vector<RecordedExchange> exchanges);

  // The exchange that answers, or nullptr; a request left unanswered is counted as unmatched.
  const RecordedExchange* take(const std::string& method, const std::string& resource, const std::string& body);
  ReplaySummary summary() const;

  static bool IsLogin(const std::string& method, const std::string& resource);

 private:
  static std::string Key(const std::string& method, const std::string& resource, const std::string& body);

  std::vector<RecordedExchange> exchanges_;
  std::map<std::string, std::deque<std::size_t>> waiting_;
  std::vector<bool> served_;
  std::vector<std::string> unmatched_;
  std::size_t servedCount_ = 0;
  std::size_t lastServed_ = 0;
  bool inOrder_ = true;
};

}  // namespace arraysim
