// Whether a text holds any of a few short texts, in one pass over it: for the recorder, which asks
// it of every answer, change-list pages of hundreds of kilobytes included.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace HuaweiTransport {

class NeedleSearch {
 public:
  // Empty needles are left out: they would match everywhere.
  void add(std::string_view needle);
  bool empty() const { return needles_.empty(); }
  bool foundIn(std::string_view text) const;

 private:
  std::vector<std::string> needles_;
  // Two places of each needle whose bytes JSON texts seldom hold, the rarer first: looked for
  // before the rest.
  std::vector<std::size_t> anchors_;
};

}  // namespace HuaweiTransport
