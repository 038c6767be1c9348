// One HTTP exchange as the simulator sees it, free of the HTTP library's types.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace arraysim {

struct IncomingRequest {
  std::string method;
  std::string target;  // path and query exactly as received
  std::vector<std::pair<std::string, std::string>> headers;
  std::string body;

  std::string header(const std::string& name) const;  // first value, name without case
};

enum class Delivery {
  Normal,
  Drop,         // close the connection, send nothing
  AbortBody,    // send status and headers, then close before the body
};

struct HttpAnswer {
  int status = 200;
  std::string body;
  std::string contentType = "application/json;charset=UTF-8";
  std::vector<std::pair<std::string, std::string>> headers;
  Delivery delivery = Delivery::Normal;
};

}  // namespace arraysim
