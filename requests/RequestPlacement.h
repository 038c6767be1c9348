// Where a value from outside meets its place in a request. Each place lets the values that plain
// concatenation carries correctly through byte for byte, and keeps every other value inside its
// place: no value adds a body member, a query parameter or a path segment.
//
//   body string   escaped as JSON: '"', '\' and control characters
//   body number   digits stand bare; any other text becomes a JSON string
//   query value   percent-encoded where a byte would end, split or cut the query
//   path segment  percent-encoded where needed; '/', '\', '.', '..', control characters and the
//                 empty text are refused, and nothing is sent
#pragma once

#include <string>
#include <utility>

namespace RequestPlacement {

// The value as the inside of a JSON string, quotes not included.
std::string jsonString(const std::string& value);

// A value that the array reads as a number: digits stand bare, any other text goes quoted.
std::string jsonNumberOrString(const std::string& value);

// A value (or a "FIELD:value" filter) in a query. '&', '#', '?', '%', '+', '=', ';', blanks, control
// characters, bytes outside ASCII and the bytes a URL cannot hold are percent-encoded; the rest,
// the filter syntax ':', '[', ']', '-', ',' among it, stands as written.
std::string queryValue(const std::string& value);

// Why the value cannot be one path segment, or nullptr when it can.
const char* pathSegmentRefusal(const std::string& value);
// The value as one path segment, percent-encoded where needed. For values that
// pathSegmentRefusal accepts.
std::string pathSegment(const std::string& value);

}  // namespace RequestPlacement

// A value that could not take its place: the argument it came from and why. Requests that hold
// one are never sent.
class PlacementRefusal {
 public:
  PlacementRefusal() = default;
  PlacementRefusal(std::string argument, const char* reason) : m_argument(std::move(argument)), m_reason(reason) {}

  bool refused() const { return m_reason != nullptr; }
  // The failure line: "The input parameter [<argument>] cannot be placed in the request: <reason>".
  std::string text() const;

 private:
  std::string m_argument;
  const char* m_reason = nullptr;
};
