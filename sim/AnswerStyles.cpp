#include "AnswerStyles.h"

namespace arraysim {

void AnswerStyles::set(const std::string& method, const std::string& route, const AnswerStyle& style) {
  std::lock_guard<std::mutex> lock(mutex_);
  styles_[{method, route}] = style;
}

std::optional<AnswerStyle> AnswerStyles::find(const std::string& method, const std::string& route) const {
  std::lock_guard<std::mutex> lock(mutex_);
  const auto it = styles_.find({method, route});
  if (it == styles_.end()) return std::nullopt;
  return it->second;
}

void AnswerStyles::clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  styles_.clear();
}

}  // namespace arraysim
