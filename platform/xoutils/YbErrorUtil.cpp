#include "YbErrorUtil.h"

#include "PrintfToString.h"

CXoError YbErrorUtil::ErrorErrNo(const YbCodeLocation& location, int errorNumber, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  std::string text = zrplatform::VFormat(format, arguments);
  va_end(arguments);
  return CXoError(errorNumber, text, location);
}
