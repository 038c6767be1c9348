#include "replay/ExchangeMatcher.h"

namespace arraysim {

ExchangeMatcher::ExchangeMatcher(std::vector<RecordedExchange> exchanges)
    : exchanges_(std::move(exchanges)), served_(exchanges_.size(), false) {
  for (std::size_t i = 0; i < exchanges_.size(); ++i) {
    const auto& exchange = exchanges_[i];
    waiting_[Key(exchange.method, exchange.resource, exchange.request)].push_back(i);
  }
}

bool ExchangeMatcher::IsLogin(const std::string& method, const std::string& resource) {
  static const std::string kSessions = "/sessions";
  const auto path = resource.substr(0, resource.find('?'));
  return method == "POST" && path.size() >= kSessions.size() &&
         path.compare(path.size() - kSessions.size(), kSessions.size(), kSessions) == 0;
}

std::string ExchangeMatcher::Key(const std::string& method, const std::string& resource, const std::string& body) {
  // The separators cannot occur in a method or in a resource as sent.
  return method + '\n' + resource + '\n' + (IsLogin(method, resource) ? std::string() : body);
}

const RecordedExchange* ExchangeMatcher::take(const std::string& method, const std::string& resource,
                                              const std::string& body) {
  const auto it = waiting_.find(Key(method, resource, body));
  if (it == waiting_.end() || it->second.empty()) {
    unmatched_.push_back(method + " " + resource);
    return nullptr;
  }
  const std::size_t index = it->second.front();
  it->second.pop_front();
  if (servedCount_ > 0 && index < lastServed_) inOrder_ = false;
  served_[index] = true;
  lastServed_ = index;
  ++servedCount_;
  return &exchanges_[index];
}

ReplaySummary ExchangeMatcher::summary() const {
  ReplaySummary summary;
  summary.exchanges = exchanges_.size();
  summary.served = servedCount_;
  summary.unmatched = unmatched_;
  summary.inOrder = inOrder_;
  for (std::size_t i = 0; i < exchanges_.size(); ++i) {
    if (!served_[i]) summary.neverRequested.push_back(exchanges_[i]);
  }
  return summary;
}

}  // namespace arraysim
