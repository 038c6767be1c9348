#include <gtest/gtest.h>

#include "HuaweiJSONBaseV2.h"
#include "LogCapture.h"

namespace {

// The smallest self-describing request: keeps what it was given and what it parsed.
class ProbeRequest : public HuaweiJSONBaseV2 {
 public:
  ProbeRequest(REQ_TYPE_HUAWEI type, const std::string& vstore, const std::string& object = "")
      : HuaweiJSONBaseV2(9, "lun", type, vstore, object) {}
  void buildRequest(jsonxx::Object& body) override {
    body.import("NAME", jsonxx::Value(std::string("a/b")));
    body.import("ALLOCTYPE", jsonxx::Value(std::string("1")));
  }
  bool parseResponse(jsonxx::Object const& response) override { return parseResponseForDataAsArray(items, response); }
  using HuaweiJSONBaseV2::buildRequest;
  using HuaweiJSONBaseV2::parseResponse;
  jsonxx::Array items;
};

TEST(SelfDescribingBody, PostCarriesSortedKeysAndTheVstore) {
  ProbeRequest request(HUAWEI_REQ_POST, "3");
  std::string body = "stale";
  ASSERT_TRUE(request.buildRequest(body));
  EXPECT_EQ(body, "{\"ALLOCTYPE\": \"1\", \"NAME\": \"a\\/b\", \"vstoreId\": \"3\"}");
}

TEST(SelfDescribingBody, NoneVstoreAddsNoKeyAndGetHasNoBody) {
  ProbeRequest post(HUAWEI_REQ_PUT, "-12345");
  std::string body;
  ASSERT_TRUE(post.buildRequest(body));
  EXPECT_EQ(body, "{\"ALLOCTYPE\": \"1\", \"NAME\": \"a\\/b\"}");
  ProbeRequest get(HUAWEI_REQ_GET, "3");
  body = "stale";
  ASSERT_TRUE(get.buildRequest(body));
  EXPECT_EQ(body, "");
  EXPECT_EQ(get.getOpType(), 100);
  EXPECT_EQ(get.getHttpReqType(), 0);
}

TEST(SelfDescribingAnswer, ABareObjectBecomesAListOfOne) {
  ProbeRequest request(HUAWEI_REQ_GET, "-12345");
  std::string single = "{\"data\":{\"ID\":\"1\"},\"error\":{\"code\":0,\"description\":\"0\"}}";
  ASSERT_TRUE(request.parseResponse(single));
  ASSERT_EQ(request.items.size(), 1u);
  EXPECT_EQ(request.items.get<jsonxx::Object>(0).get<std::string>("ID"), "1");

  std::string list = "{\"data\":[{\"ID\":\"1\"},{\"ID\":\"2\"}],\"error\":{\"code\":0,\"description\":\"0\"}}";
  ASSERT_TRUE(request.parseResponse(list));
  EXPECT_EQ(request.items.size(), 2u);
}

TEST(SelfDescribingAnswer, MissingDataIsLoggedNotFatal) {
  zrtest::LogCapture log;
  ProbeRequest request(HUAWEI_REQ_GET, "-12345");
  for (std::string answer : {std::string("{\"error\":{\"code\":0,\"description\":\"0\"}}"), std::string("garbage")}) {
    EXPECT_FALSE(request.parseResponse(answer));
  }
  EXPECT_TRUE(log.HasLine(-1, "parseResponseForData", "Error when parsing the JSON response. [data] field not present "))
      << log.Dump();
  EXPECT_TRUE(log.HasLine(5, "parseResponse", "Delegating parse json response..."));
}

TEST(SelfDescribingAnswerDeathTest, DataThatIsNeitherListNorObjectEndsTheProcess) {
  ProbeRequest request(HUAWEI_REQ_GET, "-12345");
  std::string answer = "{\"data\":\"text\",\"error\":{\"code\":0,\"description\":\"0\"}}";
  EXPECT_DEATH(request.parseResponse(answer), "\\[JSONXX\\] expression 'is<Object>\\(\\)' failed");
}

}  // namespace
