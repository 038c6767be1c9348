// Every request that reached /deviceManager/rest/, kept exactly as it came and as the simulator
// decoded it, for tests to assert on. Thread-safe; readers get copies.
#pragma once

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

namespace arraysim {

struct RecordedRequest {
  std::uint64_t sequence = 0;  // 1 for the first request after start or clear
  std::string method;
  std::string target;    // the request target as received: path and query, nothing decoded
  std::string path;      // target before '?'
  std::string query;     // target after '?', empty when there is none
  std::string device;    // the path segment after /deviceManager/rest/ ("xxxxx" at login)
  std::string resource;  // what follows /deviceManager/rest/<device>/, query included
  std::vector<std::pair<std::string, std::string>> headers;  // sorted by name
  std::string body;
  // What the simulator read, for tests to compare with what the caller meant.
  std::vector<std::string> segments;  // the resource path after the device, split at '/' then decoded
  std::vector<std::pair<std::string, std::string>> parameters;  // the query's keys and values, decoded
  nlohmann::json members;             // the parsed body; null without a body or when it was refused
  std::string refusal;                // why the request was refused unread ("the body is not valid JSON")

  // The first value of a header, compared without case; empty when absent.
  std::string header(std::string_view name) const;
  bool hasHeader(std::string_view name) const;
};

class RequestLog {
 public:
  void record(RecordedRequest request);
  std::vector<RecordedRequest> all() const;
  // Requests of this method (empty: any) whose resource starts with `resourcePrefix`.
  std::vector<RecordedRequest> matching(std::string_view method, std::string_view resourcePrefix) const;
  std::optional<RecordedRequest> last() const;
  std::size_t size() const;
  void clear();
  // Recording costs little, but a benchmark may switch it off.
  void setEnabled(bool enabled);

 private:
  mutable std::mutex mutex_;
  std::vector<RecordedRequest> requests_;
  std::uint64_t nextSequence_ = 1;
  bool enabled_ = true;
};

}  // namespace arraysim
