// Misbehaviour on demand: a rule picks requests by method and resource and spoils their
// answer a number of times or always. Rules are tried in the order they were added; the first
// one that matches and has uses left applies, and one use is spent.
//
//   sim.faults().add(FaultRule::On("POST", "fssnapshot").arrayError(1073754130, "No SnapDiff").times(2));
//   sim.faults().add(FaultRule::On("GET", "system/").exactly().httpStatus(500));
//   sim.faults().add(FaultRule::On("", "fs_snapchangelist_result").dropConnection().always());
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace arraysim {

enum class FaultKind {
  ArrayError,          // the envelope with this code and description, "data":{}
  HttpStatus,          // the genuine answer under another HTTP status
  EmptyBody,           // status 200, no body at all
  EmptyObject,         // the body "{}"
  HtmlPage,            // an HTML error page, as a proxy in front of the array would send
  TruncatedJson,       // the genuine answer cut off in the middle
  WithoutErrorObject,  // the genuine answer without its "error" object
  CannedBody,          // exactly the given body, for shapes that no other kind makes
  Delay,               // the genuine answer, late
  DropConnection,      // the connection is closed without a byte of answer
  AbortAnswer,         // status and headers go out, then the connection closes before the body
};

constexpr int kAlways = -1;

struct FaultRule {
  std::string method;     // empty: any method
  std::string resource;   // e.g. "fssnapshot"; "sessions" is the login and the logout
  bool exact = false;     // false: also matches "fssnapshot/<anything>"
  int remaining = 1;      // uses left, or kAlways
  FaultKind kind = FaultKind::ArrayError;
  long long code = 0;
  std::string description;
  int status = 200;       // HTTP status of ArrayError, HttpStatus, HtmlPage and CannedBody
  std::string body;       // CannedBody
  std::chrono::milliseconds delay{0};
  // Whether the array does the work before the answer is spoiled (a snapshot is made, a
  // session is closed). Off by default for the kinds that replace the answer, on for those
  // that alter the genuine one.
  bool processed = false;

  // Matches the resource path, query left out, at a '/' boundary: "fssnapshot" matches
  // "fssnapshot" and "fssnapshot/7@1" but not "fssnapshots"; "" matches everything.
  static FaultRule On(std::string method, std::string resource);

  FaultRule& exactly();
  FaultRule& times(int count);
  FaultRule& always();
  FaultRule& arrayError(long long code, std::string description, int status = 200);
  FaultRule& httpStatus(int status);
  FaultRule& emptyBody();
  FaultRule& emptyObject();
  FaultRule& htmlPage(int status = 200);
  FaultRule& truncatedJson();
  FaultRule& withoutErrorObject();
  FaultRule& cannedBody(std::string body, int status = 200);
  FaultRule& delayed(std::chrono::milliseconds by);
  // A client that reuses a kept-alive connection may retry once on a fresh one when the
  // server closes it without answering (libcurl does): use times(2) or always() to make sure
  // it sees the failure, or abortAnswer(), which it never retries.
  FaultRule& dropConnection();
  FaultRule& abortAnswer();
  FaultRule& afterProcessing(bool processedFirst = true);

  bool matches(const std::string& requestMethod, const std::string& resourcePath) const;
};

// Thread-safe.
class FaultInjector {
 public:
  void add(FaultRule rule);
  // The rule that applies to this request, with one use spent.
  std::optional<FaultRule> take(const std::string& method, const std::string& resourcePath);
  // Rules that still have uses left.
  std::size_t pending() const;
  void clear();

 private:
  mutable std::mutex mutex_;
  std::vector<FaultRule> rules_;
};

}  // namespace arraysim
