#include <gtest/gtest.h>

#include "HuaweiJSONBaseV2.h"
#include "LogCapture.h"

namespace {

// The smallest self-describing request: keeps what it parsed. (Bodies, the vStore member and
// a bare object read as a list of one are checked end to end: e2e_provisioning.)
class ProbeRequest : public HuaweiJSONBaseV2 {
 public:
  ProbeRequest() : HuaweiJSONBaseV2(9, "lun", HUAWEI_REQ_GET, "-12345", "") {}
  bool parseResponse(jsonxx::Object const& response) override { return parseResponseForDataAsArray(items, response); }
  using HuaweiJSONBaseV2::parseResponse;
  jsonxx::Array items;
};

TEST(SelfDescribingAnswer, MissingDataIsLoggedNotFatal) {
  zrtest::LogCapture log;
  ProbeRequest request;
  for (std::string answer : {std::string("{\"error\":{\"code\":0,\"description\":\"0\"}}"), std::string("garbage")}) {
    EXPECT_FALSE(request.parseResponse(answer));
  }
  EXPECT_TRUE(log.HasLine(-1, "parseResponseForData", "Error when parsing the JSON response. [data] field not present "))
      << log.Dump();
  EXPECT_TRUE(log.HasLine(5, "parseResponse", "Delegating parse json response..."));
}

TEST(SelfDescribingAnswerDeathTest, DataThatIsNeitherListNorObjectEndsTheProcess) {
  ProbeRequest request;
  std::string answer = "{\"data\":\"text\",\"error\":{\"code\":0,\"description\":\"0\"}}";
  EXPECT_DEATH(request.parseResponse(answer), "\\[JSONXX\\] expression 'is<Object>\\(\\)' failed");
}

}  // namespace
