#include "http/Reply.h"

namespace arraysim {

std::optional<std::string> ArrayRequest::queryValue(const std::string& key) const {
  const auto it = query.find(key);
  if (it == query.end()) return std::nullopt;
  return it->second;
}

std::optional<nlohmann::json> ArrayRequest::jsonBody() const {
  auto parsed = nlohmann::json::parse(body, nullptr, false);
  if (parsed.is_discarded() || !parsed.is_object()) return std::nullopt;
  return parsed;
}

std::optional<std::string> StringMember(const nlohmann::json& object, const char* key) {
  const auto it = object.find(key);
  if (it == object.end() || !it->is_string()) return std::nullopt;
  return it->get<std::string>();
}

std::string TextMember(const nlohmann::json& object, const char* key) {
  return StringMember(object, key).value_or(std::string());
}

Reply Reply::Object(nlohmann::json data) {
  Reply reply;
  reply.data = std::move(data);
  return reply;
}

Reply Reply::List(nlohmann::json items) {
  Reply reply;
  reply.data = std::move(items);
  reply.isList = true;
  return reply;
}

Reply Reply::Text(std::string dataText) {
  Reply reply;
  reply.dataText = std::move(dataText);
  return reply;
}

Reply Reply::Error(long long code, std::string description, std::string suggestion) {
  Reply reply;
  reply.code = code;
  reply.description = std::move(description);
  reply.suggestion = std::move(suggestion);
  return reply;
}

}  // namespace arraysim
