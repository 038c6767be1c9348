// Whether a text holds any of a few short texts, in one pass over it: for the recorder, which asks
// it of every answer, change-list pages of hundreds of kilobytes included.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace HuaweiTransport {

class NeedleSearch {
 public:
  NeedleSearch();
  // Empty needles are left out: they would match everywhere.
  void add(std::string_view needle);
  bool empty() const { return needles_.empty(); }
  // Also learns, from a sample of the text's bytes, which bytes to look for first next time.
  bool foundIn(std::string_view text);

 private:
  static constexpr std::uint32_t kHalving = 1u << 30;  // a count that reaches it halves them all

  void learn(std::string_view text);
  void chooseAnchors();

  std::vector<std::string> needles_;
  // Two places of each needle whose bytes the texts searched hold least often, the rarer first:
  // looked for before the rest.
  std::vector<std::size_t> anchors_;
  std::array<std::uint32_t, 256> seen_{};  // how often each byte was met
};

}  // namespace HuaweiTransport
