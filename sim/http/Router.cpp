#include "http/Router.h"

#include "http/PercentDecoding.h"

namespace arraysim {
namespace {

std::vector<std::string> Segments(std::string_view path) {
  std::vector<std::string> segments;
  std::size_t start = 0;
  while (true) {
    const auto slash = path.find('/', start);
    segments.emplace_back(path.substr(start, slash - start));
    if (slash == std::string_view::npos) break;
    start = slash + 1;
  }
  return segments;
}

}  // namespace

void Router::add(std::string method, std::string pattern, RouteHandler handler, AnswerStyle style) {
  auto segments = Segments(pattern);
  routes_.push_back(Route{std::move(method), std::move(pattern), std::move(segments), std::move(handler), style});
}

std::optional<Router::Match> Router::match(const std::string& method, std::string_view path) const {
  // Split first, then decode: an identifier holding "%2F" stays one segment.
  const auto segments = DecodedSegments(path);
  // A named segment wins over "{}": "lungroup/associate" is no identifier of "lungroup/{}".
  std::optional<Match> best;
  for (const auto& route : routes_) {
    if (route.method != method || route.segments.size() != segments.size()) continue;
    std::vector<std::string> parameters;
    bool matches = true;
    for (std::size_t i = 0; i < segments.size() && matches; ++i) {
      if (route.segments[i] == "{}") {
        matches = !segments[i].empty();
        parameters.push_back(segments[i]);
      } else {
        matches = route.segments[i] == segments[i];
      }
    }
    if (matches && (!best || parameters.size() < best->parameters.size())) {
      best = Match{route.pattern, &route.handler, std::move(parameters), route.style};
    }
  }
  return best;
}

}  // namespace arraysim
