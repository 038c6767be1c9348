#include "RequestLog.h"

#include <algorithm>
#include <cctype>

namespace arraysim {
namespace {

bool SameWithoutCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
         });
}

}  // namespace

std::string RecordedRequest::header(std::string_view name) const {
  for (const auto& [key, value] : headers) {
    if (SameWithoutCase(key, name)) return value;
  }
  return {};
}

bool RecordedRequest::hasHeader(std::string_view name) const {
  return std::any_of(headers.begin(), headers.end(), [&](const auto& h) { return SameWithoutCase(h.first, name); });
}

void RequestLog::record(RecordedRequest request) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!enabled_) return;
  request.sequence = nextSequence_++;
  requests_.push_back(std::move(request));
}

std::vector<RecordedRequest> RequestLog::all() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return requests_;
}

std::vector<RecordedRequest> RequestLog::matching(std::string_view method, std::string_view resourcePrefix) const {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<RecordedRequest> found;
  for (const auto& request : requests_) {
    if ((method.empty() || request.method == method) &&
        std::string_view(request.resource).substr(0, resourcePrefix.size()) == resourcePrefix) {
      found.push_back(request);
    }
  }
  return found;
}

std::optional<RecordedRequest> RequestLog::last() const {
  std::lock_guard<std::mutex> lock(mutex_);
  if (requests_.empty()) return std::nullopt;
  return requests_.back();
}

std::size_t RequestLog::size() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return requests_.size();
}

void RequestLog::clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  requests_.clear();
  nextSequence_ = 1;
}

void RequestLog::setEnabled(bool enabled) {
  std::lock_guard<std::mutex> lock(mutex_);
  enabled_ = enabled;
}

}  // namespace arraysim
