#include "Faults.h"

#include <algorithm>

namespace arraysim {

FaultRule FaultRule::On(std::string method, std::string resource) {
  FaultRule rule;
  rule.method = std::move(method);
  rule.resource = std::move(resource);
  return rule;
}

FaultRule& FaultRule::exactly() {
  exact = true;
  return *this;
}

FaultRule& FaultRule::times(int count) {
  remaining = count;
  return *this;
}

FaultRule& FaultRule::always() { return times(kAlways); }

FaultRule& FaultRule::arrayError(long long errorCode, std::string errorDescription, int httpStatus) {
  kind = FaultKind::ArrayError;
  code = errorCode;
  description = std::move(errorDescription);
  status = httpStatus;
  processed = false;
  return *this;
}

FaultRule& FaultRule::httpStatus(int httpStatus) {
  kind = FaultKind::HttpStatus;
  status = httpStatus;
  processed = true;
  return *this;
}

FaultRule& FaultRule::emptyBody() {
  kind = FaultKind::EmptyBody;
  processed = false;
  return *this;
}

FaultRule& FaultRule::emptyObject() {
  kind = FaultKind::EmptyObject;
  processed = false;
  return *this;
}

FaultRule& FaultRule::htmlPage(int httpStatus) {
  kind = FaultKind::HtmlPage;
  status = httpStatus;
  processed = false;
  return *this;
}

FaultRule& FaultRule::truncatedJson() {
  kind = FaultKind::TruncatedJson;
  processed = true;
  return *this;
}

FaultRule& FaultRule::withoutErrorObject() {
  kind = FaultKind::WithoutErrorObject;
  processed = true;
  return *this;
}

FaultRule& FaultRule::cannedBody(std::string text, int httpStatus) {
  kind = FaultKind::CannedBody;
  body = std::move(text);
  status = httpStatus;
  processed = false;
  return *this;
}

FaultRule& FaultRule::delayed(std::chrono::milliseconds by) {
  kind = FaultKind::Delay;
  delay = by;
  processed = true;
  return *this;
}

FaultRule& FaultRule::dropConnection() {
  kind = FaultKind::DropConnection;
  processed = false;
  return *this;
}

FaultRule& FaultRule::abortAnswer() {
  kind = FaultKind::AbortAnswer;
  processed = false;
  return *this;
}

FaultRule& FaultRule::afterProcessing(bool processedFirst) {
  processed = processedFirst;
  return *this;
}

bool FaultRule::matches(const std::string& requestMethod, const std::string& resourcePath) const {
  if (!method.empty() && method != requestMethod) return false;
  if (exact) return resourcePath == resource;
  if (resource.empty()) return true;
  if (resourcePath.compare(0, resource.size(), resource) != 0) return false;
  return resourcePath.size() == resource.size() || resource.back() == '/' || resourcePath[resource.size()] == '/';
}

void FaultInjector::add(FaultRule rule) {
  std::lock_guard<std::mutex> lock(mutex_);
  rules_.push_back(std::move(rule));
}

std::optional<FaultRule> FaultInjector::take(const std::string& method, const std::string& resourcePath) {
  std::lock_guard<std::mutex> lock(mutex_);
  for (auto& rule : rules_) {
    if (rule.remaining == 0 || !rule.matches(method, resourcePath)) continue;
    if (rule.remaining > 0) --rule.remaining;
    return rule;
  }
  return std::nullopt;
}

std::size_t FaultInjector::pending() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return static_cast<std::size_t>(
      std::count_if(rules_.begin(), rules_.end(), [](const FaultRule& rule) { return rule.remaining != 0; }));
}

void FaultInjector::clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  rules_.clear();
}

}  // namespace arraysim
