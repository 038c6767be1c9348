#include <gtest/gtest.h>

#include "CXoError.h"
#include "YbErrorUtil.h"
#include "YbString.h"

namespace {

struct UnformattedCase {
  const char* text;
  const char* expected;
};

class YbStringWithoutArguments : public testing::TestWithParam<UnformattedCase> {};

TEST_P(YbStringWithoutArguments, RendersPercentTextsWithoutReadingArguments) {
  EXPECT_EQ(YbString::Format(std::string(GetParam().text)), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    YbString, YbStringWithoutArguments,
    testing::Values(UnformattedCase{"plain text", "plain text"},
                    UnformattedCase{"100%% done", "100% done"},
                    UnformattedCase{"%%%%", "%%"},
                    UnformattedCase{"%s and %d items", " and  items"},
                    UnformattedCase{"rate %5.2f%%", "rate %"},
                    UnformattedCase{"%-08lld|%zu|%*d|%.*s", "|||"},
                    UnformattedCase{"%n%p%x", ""},
                    UnformattedCase{"ends with %", "ends with "},
                    UnformattedCase{"%l", ""},
                    UnformattedCase{"", ""}));

TEST(YbString, FormatsArgumentsLikePrintf) {
  EXPECT_EQ(YbString::Format("%s-%d-%05.1f-%%", "a", 42, 3.14159), "a-42-003.1-%");
}

TEST(YbString, FormatsTextsLongerThanTheInlineBuffer) {
  const std::string longText(5000, 'x');
  EXPECT_EQ(YbString::Format("[%s]", longText.c_str()), "[" + longText + "]");
}

TEST(CXoError, SuccessHasCodeZeroAndNoText) {
  const CXoError success = CXoError::Success();
  EXPECT_FALSE(success.IsError());
  EXPECT_EQ(success.GetCode(), 0);
  EXPECT_EQ(success.AsString(), "");
  EXPECT_EQ(success.Location().Line(), 0);
}

TEST(CXoError, IsErrorOnlyForNegativeCodes) {
  const YbCodeLocation here(__FILE__, __func__, __LINE__);
  for (const auto& [code, isError] : {std::pair{-1, true}, {-22, true}, {0, false}, {5, false}}) {
    EXPECT_EQ(CXoError(code, "text", here).IsError(), isError) << "code " << code;
  }
}

TEST(YbErrorUtil, ErrorErrNoKeepsCodeFormattedTextAndLocation) {
  const CXoError error =
      YbErrorUtil::ErrorErrNo(YbCodeLocation("file.cpp", "CXoError Op()", 17), -1, "LUN %s has %d%% used", "lun7", 80);
  EXPECT_TRUE(error.IsError());
  EXPECT_EQ(error.GetCode(), -1);
  EXPECT_EQ(error.AsString(), "LUN lun7 has 80% used");
  EXPECT_EQ(error.Location().File(), "file.cpp");
  EXPECT_EQ(error.Location().Function(), "CXoError Op()");
  EXPECT_EQ(error.Location().Line(), 17);
}

}  // namespace
