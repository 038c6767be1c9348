#include <gtest/gtest.h>

#include "CXoError.h"
#include "YbErrorUtil.h"
#include "YbString.h"

namespace {

// The transport passes the array's description as the format: directives without arguments
// must render as nothing rather than read beyond the call.
TEST(YbString, PercentTextsWithoutArgumentsReadNothing) {
  const std::pair<const char*, const char*> cases[] = {
      {"plain text", "plain text"}, {"100%% done", "100% done"}, {"%%%%", "%%"}, {"%s and %d items", " and  items"},
      {"rate %5.2f%%", "rate %"},   {"%-08lld|%zu|%*d|%.*s", "|||"}, {"%n%p%x", ""}, {"ends with %", "ends with "},
      {"%l", ""},                   {"", ""}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(YbString::Format(std::string(text)), expected) << text;
  EXPECT_EQ(YbString::Format("%s-%d-%05.1f-%%", "a", 42, 3.14159), "a-42-003.1-%");
  const std::string longText(5000, 'x');
  EXPECT_EQ(YbString::Format("[%s]", longText.c_str()), "[" + longText + "]");
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
