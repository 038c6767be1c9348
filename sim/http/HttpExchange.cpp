#include "http/HttpExchange.h"

#include <strings.h>

namespace arraysim {

std::string IncomingRequest::header(const std::string& name) const {
  for (const auto& [key, value] : headers) {
    if (strcasecmp(key.c_str(), name.c_str()) == 0) return value;
  }
  return {};
}

}  // namespace arraysim
