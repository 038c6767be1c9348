// The array's error code is trusted only as an integer written in plain decimal that fits in 64
// bits, alike by the plain reader and by the document model (which an escape leaves it to).
#include <gtest/gtest.h>

#include <string>

#include "ErrorCode.h"
#include "ErrorObjectReader.h"
#include "jsonxx.h"

namespace {

TEST(ErrorCode, OnlyIntegersOf64BitsAreTrustedByBothReaders) {
  const struct {
    const char* text;
    bool trusted;
    unsigned long long code;
  } rows[] = {
      {"0", true, 0}, {"1077948996", true, 1077948996ULL}, {"-401", true, 18446744073709551215ULL},
      {"18446744073709551615", true, ~0ULL}, {"-9223372036854775808", true, 1ULL << 63},
      {"18446744073709551616", false, 0}, {"-9223372036854775809", false, 0}, {"1e400", false, 0},
      {"0e0", false, 0}, {"0.0", false, 0}, {"0.5", false, 0}, {"+5", false, 0}, {"\"0\"", false, 0},
      {"null", false, 0},
  };
  for (const auto& row : rows) {
    for (const std::string description : {"0", "a \\\"quoted\\\" 0"}) {
      const std::string text = R"({"data":{},"error":{"code":)" + std::string(row.text) + R"(,"description":")" +
                               description + "\"}}";
      unsigned long long plainCode = 7, modelCode = 7;
      std::string plainDescription;
      const bool plain = HuaweiTransport::readPlainErrorObject(text, plainCode, plainDescription);
      EXPECT_EQ(plain, row.trusted && description == "0") << text;
      jsonxx::Object answer;
      answer.parse(text);
      const jsonxx::Value& code = answer.get<jsonxx::Object>("error").get<jsonxx::Value>("code");
      EXPECT_EQ(HuaweiTransport::trustedCode(code, modelCode), row.trusted) << text;
      if (row.trusted) {
        EXPECT_EQ(modelCode, row.code) << text;
        EXPECT_EQ(plain ? plainCode : row.code, row.code) << text;
      }
    }
  }
  // A number whose text the parser did not see counts by its value.
  unsigned long long code = 0;
  EXPECT_TRUE(HuaweiTransport::trustedCode(jsonxx::Value(-401), code) && code == 18446744073709551215ULL);
  EXPECT_FALSE(HuaweiTransport::trustedCode(jsonxx::Value(0.5L), code));
  EXPECT_FALSE(HuaweiTransport::trustedCode(jsonxx::Value(18446744073709551616.0L), code));
}

}  // namespace
