#pragma once

#include "CXoError.h"
#include "YbCodeLocation.h"

class YbErrorUtil {
 public:
  // A CXoError with errorNumber as code and the printf-formatted text.
  static CXoError ErrorErrNo(const YbCodeLocation& location, int errorNumber, const char* format, ...)
      __attribute__((format(printf, 3, 4)));
};
