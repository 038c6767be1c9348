// How successful answers of a route are shaped. Lists come as arrays, a list of one item too, as
// answers captured from arrays show; an empty list comes without "data", and some answers carry
// no "data" at all. A test can switch a route to answering a list of one as the bare item, for
// the readers that are meant to take that shape.
#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace arraysim {

enum class EmptyListAnswer {
  WithoutData,  // {"error":{...}}: what the array does
  EmptyArray,   // {"data":[],"error":{...}}
};

struct AnswerStyle {
  bool omitData = false;           // leave "data" out of a successful answer
  bool singleItemAsObject = false;  // list routes: a list of one item as the bare item
  EmptyListAnswer emptyList = EmptyListAnswer::WithoutData;
};

// Styles per route, keyed by method and route pattern as the resources register them, e.g.
// ("GET", "filesystem"), ("GET", "fssnapshot/{}"), ("GET", "system/"). Thread-safe.
class AnswerStyles {
 public:
  void set(const std::string& method, const std::string& route, const AnswerStyle& style);
  // The style a test set for the route, if any.
  std::optional<AnswerStyle> find(const std::string& method, const std::string& route) const;
  void clear();

 private:
  mutable std::mutex mutex_;
  std::map<std::pair<std::string, std::string>, AnswerStyle> styles_;
};

}  // namespace arraysim
