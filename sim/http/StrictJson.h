// A request body read as strictly as the array must read it for a test to trust it: valid JSON
// (UTF-8, no raw control characters in strings) and no object holding the same key twice. A
// body the client failed to escape shows up here instead of as a record with a forged member.
#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace arraysim {

struct StrictJson {
  nlohmann::json value;  // discarded when refused
  std::string fault;     // why it was refused; empty when accepted

  bool accepted() const { return fault.empty(); }
  static StrictJson Parse(const std::string& text);
};

}  // namespace arraysim
