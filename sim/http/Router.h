// Finds the handler of a resource path. Patterns are paths whose "{}" segments match any one
// non-empty segment ("fssnapshot/{}"); a trailing slash counts ("system/" is not "system").
// Of several matching patterns, the one with the fewest "{}" segments serves. The path is taken
// as sent; each segment is percent-decoded after the split, and parameters hold decoded values.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "AnswerStyles.h"
#include "http/Reply.h"

namespace arraysim {

using RouteHandler = std::function<Reply(const ArrayRequest&)>;

class Router {
 public:
  struct Match {
    std::string pattern;
    const RouteHandler* handler;
    std::vector<std::string> parameters;
    AnswerStyle style;  // the route's own shape, unless a test sets another in AnswerStyles
  };

  void add(std::string method, std::string pattern, RouteHandler handler, AnswerStyle style = {});
  std::optional<Match> match(const std::string& method, std::string_view path) const;

 private:
  struct Route {
    std::string method;
    std::string pattern;
    std::vector<std::string> segments;
    RouteHandler handler;
    AnswerStyle style;
  };
  std::vector<Route> routes_;
};

}  // namespace arraysim
