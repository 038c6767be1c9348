// Texts of the operations are printf formats; their values are handed over as they are, and a
// std::string goes in as its C string.
#pragma once

#include <string>

#include "YbString.h"

namespace FormatArgument {
inline const char* of(const std::string& text) { return text.c_str(); }
template <typename Value>
Value of(Value value) {
  return value;
}
}  // namespace FormatArgument

// The format with its values; for texts that have at least one.
template <typename First, typename... Rest>
std::string formatted(const char* format, const First& first, const Rest&... rest) {
  return YbString::Format(format, FormatArgument::of(first), FormatArgument::of(rest)...);
}
