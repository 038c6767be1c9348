#pragma once

#include <string>

#include <boost/shared_ptr.hpp>

#include "YbCodeLocation.h"

// Result of second-generation operations: an integer code and a shared private part that holds
// the text and where it was made. Code 0 without private part is success; a negative code is an error.
class CXoError {
 public:
  CXoError();
  CXoError(int code, const std::string& text, const YbCodeLocation& location);

  static CXoError Success();

  bool IsError() const;
  int GetCode() const;
  std::string AsString() const;
  // Where the error was made; empty fields for success.
  YbCodeLocation Location() const;

 private:
  struct Private;
  int code_;
  boost::shared_ptr<const Private> private_;
};
