#pragma once

#include <string>

class YbString {
 public:
  // printf into a string.
  static std::string Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
  // A format that is given no arguments, such as a text received from the array: "%%" gives "%",
  // and every other directive stands as written; nothing is ever read as an argument. Every text
  // from outside that is used as a format goes through here, never through the form above.
  // (A string, not a pointer, so that it cannot be confused with the form above.)
  static std::string Format(const std::string& format);
};
