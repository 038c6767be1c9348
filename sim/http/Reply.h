// What a resource handler answers, before it is put into the array's envelope
// {"data": ..., "error": {"code": N, "description": "..."}}; errors also carry "errorParam"
// and "suggestion", as the array sends them.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace arraysim {

// One request to a resource under /deviceManager/rest/<device id>/, after the session check.
struct ArrayRequest {
  std::string method;
  std::string path;                          // e.g. "fssnapshot/7@1", without the query, as sent
  std::map<std::string, std::string> query;  // keys and values percent-decoded; the first of a key wins
  std::string queryText;                     // everything after the "?", as sent
  std::string body;
  std::vector<std::string> parameters;       // the values of the route's {} segments, decoded
  std::string accountVStoreId;               // the vStore of the logged-in account, if any

  std::optional<std::string> queryValue(const std::string& key) const;
  // The body as JSON; nothing when it is not a JSON object.
  std::optional<nlohmann::json> jsonBody() const;
};

// A member of a JSON object that holds a string; nothing when it is absent or holds anything else.
std::optional<std::string> StringMember(const nlohmann::json& object, const char* key);
// The same, empty when there is none.
std::string TextMember(const nlohmann::json& object, const char* key);

struct Reply {
  long long code = 0;
  std::string description = "0";
  nlohmann::json data = nlohmann::json::object();
  bool isList = false;    // `data` is an array: the route's list style applies
  std::string dataText;   // pre-rendered `data`, used instead of `data` when not empty
  std::string suggestion; // of an error

  static Reply Object(nlohmann::json data);
  static Reply List(nlohmann::json items);
  static Reply Text(std::string dataText);
  static Reply Error(long long code, std::string description,
                     std::string suggestion = "Rectify the fault based on the error description and try again.");
};

}  // namespace arraysim
