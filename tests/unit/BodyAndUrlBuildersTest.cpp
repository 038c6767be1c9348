// The login body, the snapshot bodies and the masking of logged bodies are also checked end to
// end (e2e_session, e2e_file_system_snapshots); here stay the forms no end-to-end test reaches.
#include <initializer_list>
#include <tuple>

#include <gtest/gtest.h>

#include "CreatedIdentifier.h"
#include "HuaweiVstore.h"
#include "LogCapture.h"
#include "PasswordMask.h"
#include "RecordRequests.h"
#include "RequestUrl.h"
#include "ResourcePath.h"

namespace {

// A body that lacks a value it needs does not go out, and says so under the request's own name.
TEST(HandBuiltBodies, RequiredValuesKeepTheBodyBack) {
  zrtest::LogCapture log;
  std::string id, base = "8", none;
  std::string body = "stale";
  const auto creation = [&](std::initializer_list<const std::string*> values) {
    auto request = RecordRequest<CreatedSessionId>(id, &CreatedSessionId::id, HuaweiResponse::plainRules("parse"),
                                                   "{ }")
                       .requiring({"build", -1, values});
    request.forJob(4);
    return request;
  };
  EXPECT_FALSE(creation({&base, &none}).buildRequest(body));
  EXPECT_EQ(body, "");
  EXPECT_TRUE(log.HasLine(-1, "build", "Unable to build the request. Invalid parameters!!")) << log.Dump();
  log.Clear();
  ASSERT_TRUE(creation({&base}).buildRequest(body));
  EXPECT_EQ(body, "{ }");
  EXPECT_FALSE(log.ContainsText("Invalid parameters"));
}

TEST(RequestUrls, RequestsGoUnderTheDeviceAsWritten) {
  EXPECT_EQ(HuaweiTransport::formRequestUrl("array", "2102", "lungroup/7?vstoreId=4", 24),
            "https://array:8088/deviceManager/rest/2102/lungroup/7?vstoreId=4");
  EXPECT_EQ(HuaweiTransport::formRequestUrl("h", "", "x y", 7), "https://h:8088/deviceManager/rest//x y");
}

// The kept part before the resource follows a new login's device and a new host.
TEST(RequestUrls, KeptPrefixFollowsHostAndDevice) {
  HuaweiTransport::RequestUrlPrefix prefix;
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"a", "1", "https://a:8088/deviceManager/rest/1/lun"}, {"a", "1", "https://a:8088/deviceManager/rest/1/lun"},
      {"a", "2", "https://a:8088/deviceManager/rest/2/lun"}, {"b", "2", "https://b:8088/deviceManager/rest/2/lun"},
      {"", "", "https://:8088/deviceManager/rest//lun"}};
  for (const auto& [host, device, url] : rows) EXPECT_EQ(prefix.form(host, device, "lun"), url);
}

TEST(ResourcePaths, RenderTheArraysForms) {
  const std::pair<ResourcePath, std::string> rows[] = {
      {ResourcePath("filesystem").vstore("-12345"), "filesystem"},
      {ResourcePath("fssnapshot/1").add("DELINCREMENTALBACKUPSNAP", "true").vstore("3"),
       "fssnapshot/1?DELINCREMENTALBACKUPSNAP=true&vstoreId=3"},
      {ResourcePath("lun/1").vstore(""), "lun/1?vstoreId="},
      {ResourcePath("nfshare").add("filter", "FSID:12").add("range", "[0-1]").bareVstore("7"),
       "nfshare?filter=FSID:12&range=[0-1]&7"},
      {ResourcePath("nfshare").add("filter", "FSID:12").bareVstore("-12345"), "nfshare?filter=FSID:12"},
      {ResourcePath("storagepool").openQuery().raw("filter=NAME::pool 1").add("vstoreId", "2"),
       "storagepool?&filter=NAME::pool 1&vstoreId=2"},
      {ResourcePath("lun").id("", "lunId").openQuery(), "lun?"},
      {ResourcePath("lun").id("12", "lunId").openQuery(), "lun/12?"}};
  for (const auto& [built, expected] : rows) EXPECT_EQ(built.str(), expected);
}

// Bodies the end-to-end masking never logs: no password, no password key, no closing text.
TEST(PasswordMasking, HidesTheValueAndKeepsTheLength) {
  const std::tuple<std::string, std::string, std::string> rows[] = {
      {"{\"username\":\"u\", \"password\":\"\", \"scope\":\"0\" }", "",
       "{\"username\":\"u\", \"password\":\"\", \"scope\":\"0\" }"},
      {"{\"NAME\":\"x\"}", "abc", "{\"NAME\":\"x\"}"},
      {"{\"password\":\"abc\"} abc", "abc", "{\"password\":\"***\"} ***"}};
  for (const auto& [logged, password, masked] : rows) {
    std::string body = logged;
    HuaweiTransport::maskPassword(body, password);
    EXPECT_EQ(body, masked);
  }
}

}  // namespace
