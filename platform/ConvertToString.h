#pragma once

#include <sstream>
#include <string>

namespace ConvertToString {

// Renders a value through an output string stream (pointers come out in hexadecimal).
template <typename T>
std::string to_string(T const& value) {
  std::ostringstream out;
  out << value;
  return out.str();
}

}  // namespace ConvertToString
