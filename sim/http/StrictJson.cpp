#include "http/StrictJson.h"

#include <set>
#include <vector>

namespace arraysim {

StrictJson StrictJson::Parse(const std::string& text) {
  using json = nlohmann::json;
  // The keys seen so far in each object being read, innermost last.
  std::vector<std::set<std::string>> open;
  std::string duplicate;
  bool hasDuplicate = false;
  const json::parser_callback_t watch = [&](int, json::parse_event_t event, json& parsed) {
    if (event == json::parse_event_t::object_start) {
      open.emplace_back();
    } else if (event == json::parse_event_t::object_end && !open.empty()) {
      open.pop_back();
    } else if (event == json::parse_event_t::key && !open.empty() && !hasDuplicate &&
               !open.back().insert(parsed.get<std::string>()).second) {
      hasDuplicate = true;
      duplicate = parsed.get<std::string>();
    }
    return true;
  };
  StrictJson result;
  result.value = json::parse(text, watch, false);
  if (result.value.is_discarded()) {
    result.fault = "the body is not valid JSON";
  } else if (hasDuplicate) {
    result.value = json(json::value_t::discarded);
    // Written as a JSON string, so that the log line shows any control character escaped.
    result.fault = "the body holds the key " + json(duplicate).dump(-1, ' ', true, json::error_handler_t::replace) + " twice";
  }
  return result;
}

}  // namespace arraysim
