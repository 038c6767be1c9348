#include <gtest/gtest.h>

#include "CXoError.h"
#include "YbErrorUtil.h"
#include "YbString.h"

namespace {

// Texts from outside are rendered as formats given no arguments: "%%" gives "%", every other
// directive stands as written, and nothing is read beyond the text.
TEST(YbString, OutsideTextsAreRenderedWithoutReadingArguments) {
  const std::pair<std::string, std::string> cases[] = {
      {"plain text", "plain text"},
      {"", ""},
      {"100%% done", "100% done"},
      {"%%%%", "%%"},
      {"%s and %d items", "%s and %d items"},
      {"%%s%%s%%s%%s", "%s%s%s%s"},
      {"%%%", "%%"},
      {"rate %5.2f%%", "rate %5.2f%"},
      {"%-08lld|%zu|%*d|%.*s", "%-08lld|%zu|%*d|%.*s"},
      {"ends with %", "ends with %"},
      {std::string("cut\0%s here", 12), "cut"},
      {"a\nb\t%", "a\nb\t%"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(YbString::Format(text), expected) << text;
  // Rendering twice, as an array's description is (transport, then error): "%%%%" comes out "%".
  EXPECT_EQ(YbString::Format(YbString::Format("At 100%%%% load")), "At 100% load");

  const std::string longText = std::string(5000, 'x') + "%%" + std::string(3000, '%') + "%s";
  EXPECT_EQ(YbString::Format(longText), std::string(5000, 'x') + "%" + std::string(1500, '%') + "%s");
  EXPECT_EQ(YbString::Format("%s-%d-%05.1f-%%", "a", 42, 3.14159), "a-42-003.1-%");
  EXPECT_EQ(YbString::Format("[%s]", std::string(5000, 'x').c_str()), "[" + std::string(5000, 'x') + "]");
}

TEST(YbErrorUtil, ErrorsAreNegativeCodesWithTheirFormattedText) {
  EXPECT_FALSE(CXoError::Success().IsError());
  EXPECT_EQ(CXoError::Success().AsString(), "");
  const YbCodeLocation here(__FILE__, __func__, __LINE__);
  EXPECT_FALSE(CXoError(0, "text", here).IsError());
  EXPECT_FALSE(CXoError(5, "text", here).IsError());
  const CXoError error = YbErrorUtil::ErrorErrNo(here, -1, "LUN %s has %d%% used", "lun7", 80);
  EXPECT_TRUE(error.IsError());
  EXPECT_EQ(error.AsString(), "LUN lun7 has 80% used");
}

}  // namespace
