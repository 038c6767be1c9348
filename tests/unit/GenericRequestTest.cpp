// Generic requests hand the caller's record or list over only once the whole answer is read, and
// send the body they were given.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "RecordRequests.h"

namespace {

const char kOk[] = "\"error\":{\"code\":0,\"description\":\"0\"}";
const char kRefused[] = "\"error\":{\"code\":1077948993,\"description\":\"Busy.\"}";

bool read(HuaweiJSONBase& request, const std::string& answer) {
  std::string text = answer;
  return request.parseResponse(text);
}

TEST(GenericRequests, TheRecordIsTheCallersOnlyOnceTheAnswerIsRead) {
  _HuaweiHostGroupInfo sent;
  sent.vstoreId = "7";
  _HuaweiHostGroupInfo group;
  group.name = "before";
  RecordRequest request(group, HuaweiResponse::sanIdentityRules("test"), "{ }", sent);
  EXPECT_FALSE(read(request, std::string("{") + kOk + "}"));
  EXPECT_EQ(group.name, "before");
  ASSERT_TRUE(read(request, std::string("{\"data\":{\"ID\":\"1\",\"NAME\":\"g\",\"vstoreName\":\"v\"},") + kOk + "}"));
  // Only the required keys are read; the rest is what was sent.
  EXPECT_EQ(group.id + group.name + group.vstoreId + group.vstoreName, "1g7");
}

TEST(GenericRequests, AListWithoutDataIsReadByItsStatus) {
  std::vector<_HuaweiHostGroupInfo> groups(1);
  RecordListRequest request(groups, HuaweiResponse::sanRules("test", HuaweiResponse::WithoutData::Status));
  EXPECT_FALSE(read(request, std::string("{") + kRefused + "}"));
  EXPECT_EQ(groups.size(), 1u);
  EXPECT_TRUE(read(request, std::string("{") + kOk + "}"));
  EXPECT_TRUE(groups.empty());
  ASSERT_TRUE(read(request, std::string("{\"data\":[{\"ID\":\"1\",\"NAME\":\"a\"},{\"ID\":\"2\",\"NAME\":\"b\"}],") +
                                kOk + "}"));
  ASSERT_EQ(groups.size(), 2u);
  EXPECT_EQ(groups[1].name, "b");
}

TEST(GenericRequests, AStatusAnswerSendsItsBodyAndReadsTheCode) {
  StatusRequest request("test", "{\"ID\":\"1\" }");
  std::string body;
  ASSERT_TRUE(request.buildRequest(body));
  EXPECT_EQ(body, "{\"ID\":\"1\" }");
  EXPECT_TRUE(read(request, std::string("{") + kOk + "}"));
  EXPECT_FALSE(read(request, std::string("{") + kRefused + "}"));
}

}  // namespace
