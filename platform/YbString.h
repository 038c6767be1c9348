#pragma once

#include <string>

class YbString {
 public:
  // printf into a string.
  static std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
  // A format with no arguments, such as a text received from the array: "%%" gives "%", and any
  // other conversion has no argument to read, so it renders as nothing instead of reading the stack.
  // (A string, not a pointer, so that it cannot be confused with the form above.)
  static std::string Format(const std::string& format);
};
