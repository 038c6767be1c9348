#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "HuaweiJSONBaseV2.h"
#include "LogCapture.h"
#include "SelfDescribingDriver.h"
#include "SessionHelpers.h"

namespace {

using testing::ElementsAre;

// A self-describing request with nothing of its own.
class ProbeRequest : public HuaweiJSONBaseV2 {
 public:
  ProbeRequest() : HuaweiJSONBaseV2(5, "filesystem", HUAWEI_REQ_GET, "-12345", "") {}
  bool parseResponse(jsonxx::Object const&) override { return true; }
  using HuaweiJSONBaseV2::parseResponse;
};

class RequestDrivers : public zrtest::ArrayClientTest {
 protected:
  HuaweiApi::ResultStatus process(ZrManageHuawei& array, ProbeRequest& request) {
    HuaweiJSONBaseV2* const pointer = &request;
    return SelfDescribingDriver::process(array, "ProbeOperation", pointer);
  }
};

TEST_F(RequestDrivers, FailedLoginSendsNothingElseAndIsCodeOne) {
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  array.setCredentials("admin", "not-the-password", host());
  ProbeRequest request;
  const auto status = process(array, request);
  EXPECT_EQ(status.GetErrorCode(), 1ULL);
  EXPECT_EQ(status.GetErrorString(), "Failed to create session.");
  EXPECT_THAT(requestLines(), ElementsAre("POST sessions"));
  EXPECT_TRUE(log.HasLine(-1, "ProcessWithServer::ProbeOperation", "Failed to create session."));
}

}  // namespace
