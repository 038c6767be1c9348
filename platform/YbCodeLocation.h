#pragma once

#include <string>

// Where an error was made: a plain value of three fields.
class YbCodeLocation {
 public:
  YbCodeLocation(const char* file, const char* function, int line)
      : file_(file ? file : ""), function_(function ? function : ""), line_(line) {}
  const std::string& File() const { return file_; }
  const std::string& Function() const { return function_; }
  int Line() const { return line_; }

 private:
  std::string file_;
  std::string function_;
  int line_;
};
