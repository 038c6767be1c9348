// The recorder's search for secrets: found wherever they stand, tail and block edges included,
// and never where only their rarer bytes stand at the right distance.
#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "NeedleSearch.h"

namespace {

using HuaweiTransport::NeedleSearch;

TEST(NeedleSearch, FindsEachNeedleAtEveryPlaceOfTextsOfEveryLength) {
  // A change-list-like filler, thick with the bytes the search takes for common.
  const std::string filler = R"({\"inode\":30342,\"filePath\":\"/d0/n7.dat\",\"size\":4096},)";
  EXPECT_FALSE(NeedleSearch().foundIn(filler));
  const std::vector<std::vector<std::string>> sets = {
      {"\"iBaseToken\""},
      {"\"iBaseToken\"", "Pass-W0rd!", "8c3fe1a0b2d94e7f8a6b5c4d3e2f1a0b", "2102351"},
      {"x", "AB", "a\"b", "Zz", "QQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQQ", "k9", "@@", "Yy",
       "#"},  // two groups
  };
  for (const auto& needles : sets) {
    NeedleSearch search;
    for (const std::string& needle : needles) search.add(needle);
    search.add("");
    const auto holds = [&needles](const std::string& text) {
      for (const std::string& needle : needles) {
        if (memmem(text.data(), text.size(), needle.data(), needle.size()) != nullptr) return true;
      }
      return false;
    };
    for (std::size_t length : {0u, 40u, 63u, 64u, 95u, 96u, 97u, 200u, 1000u}) {
      std::string text;
      while (text.size() < length) text += filler;
      text.resize(length);
      EXPECT_EQ(search.foundIn(text), holds(text)) << length;
      for (const std::string& needle : needles) {
        for (std::size_t at = 0; at + needle.size() <= length; at += (at < 70 || at + 70 > length) ? 1 : 13) {
          std::string with = text;
          with.replace(at, needle.size(), needle);
          ASSERT_TRUE(search.foundIn(with)) << needle << " at " << at << " of " << length;
          // One byte off at either end, its rarer bytes still stand at their distance: it matches
          // only where the text really holds a needle.
          for (std::size_t end : {at, at + needle.size() - 1}) {
            std::string off = with;
            off[end] ^= 0x20;
            ASSERT_EQ(search.foundIn(off), holds(off)) << needle << " at " << at << " of " << length;
          }
        }
      }
    }
  }
}

}  // namespace
