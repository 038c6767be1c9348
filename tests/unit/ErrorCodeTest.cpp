// The array's error code is read only where it can be trusted, the same way by the plain reader
// and by the document model: every other code fails the exchange instead of wrapping to a value.
#include <gtest/gtest.h>

#include <string>

#include "ErrorCode.h"
#include "ErrorObjectReader.h"
#include "jsonxx.h"

namespace {

struct CodeRow {
  const char* text;  // as it stands in the answer
  bool trusted;
  unsigned long long code;
};

const CodeRow kCodes[] = {
    {"0", true, 0},
    {"1077948996", true, 1077948996ULL},
    {"1073754118", true, 1073754118ULL},
    {"-401", true, 18446744073709551215ULL},
    {"18446744073709551615", true, 18446744073709551615ULL},
    {"-9223372036854775808", true, 9223372036854775808ULL},
    {"-0", true, 0},
    {"18446744073709551616", false, 0},
    {"100000000000000000000000", false, 0},
    {"-9223372036854775809", false, 0},
    {"1e400", false, 0},
    {"1e3", false, 0},
    {"0e0", false, 0},
    {"0.0", false, 0},
    {"0.5", false, 0},
    {"1077948996.0", false, 0},
    {"+5", false, 0},
    {".5", false, 0},
    {"\"0\"", false, 0},
    {"\"1077948996\"", false, 0},
    {"true", false, 0},
    {"null", false, 0},
    {"{}", false, 0},
};

std::string Answer(const std::string& code, const std::string& description) {
  return R"({"data":{"ID":"1"},"error":{"code":)" + code + R"(,"description":")" + description + R"("}})";
}

TEST(ErrorCode, OnlyIntegersOf64BitsAreTrustedByBothReaders) {
  for (const CodeRow& row : kCodes) {
    // A plain description, and one with an escape, which only the document model reads.
    for (const char* description : {"0", "a \\\"quoted\\\" word"}) {
      const std::string text = Answer(row.text, description);
      unsigned long long plainCode = 7;
      std::string plainDescription;
      const bool plain = HuaweiTransport::readPlainErrorObject(text, plainCode, plainDescription);
      EXPECT_EQ(plain, row.trusted && description[0] == '0') << text;
      if (plain) EXPECT_EQ(plainCode, row.code) << text;

      jsonxx::Object answer;
      answer.parse(text);
      ASSERT_TRUE(answer.has<jsonxx::Object>("error")) << text;
      unsigned long long modelCode = 7;
      EXPECT_EQ(HuaweiTransport::trustedCode(answer.get<jsonxx::Object>("error").get<jsonxx::Value>("code"), modelCode),
                row.trusted)
          << text;
      if (row.trusted) EXPECT_EQ(modelCode, row.code) << text;
    }
  }
}

// Numbers whose text the parser did not see count by their value alone.
TEST(ErrorCode, NumbersBuiltInCodeCountByTheirValue) {
  unsigned long long code = 7;
  EXPECT_TRUE(HuaweiTransport::trustedCode(jsonxx::Value(1077948996), code));
  EXPECT_EQ(code, 1077948996ULL);
  EXPECT_TRUE(HuaweiTransport::trustedCode(jsonxx::Value(-401), code));
  EXPECT_EQ(code, 18446744073709551215ULL);
  EXPECT_FALSE(HuaweiTransport::trustedCode(jsonxx::Value(0.5L), code));
  EXPECT_FALSE(HuaweiTransport::trustedCode(jsonxx::Value(18446744073709551616.0L), code));
  EXPECT_FALSE(HuaweiTransport::trustedCode(jsonxx::Value(__builtin_infl()), code));
  EXPECT_FALSE(HuaweiTransport::trustedCode(jsonxx::Value(__builtin_nanl("")), code));
}

}  // namespace
