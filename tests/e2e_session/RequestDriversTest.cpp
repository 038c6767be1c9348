// The driver of self-describing requests: a login that fails ends the operation, and a resource
// the simulator does not serve answers a code that no operation takes as done, not even one that
// counts every "absent" code of the array as success.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "HuaweiArrayCodes.h"
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

class UnservedDeletion final : public HuaweiJSONBaseV2 {
 public:
  UnservedDeletion() : HuaweiJSONBaseV2(1, "no_such_resource", HUAWEI_REQ_DELETE, "-12345", "7") {
    m_ignorableErrorCodes = {HuaweiArrayCode::FS_SNAPSHOT_DOES_NOT_EXIST,  HuaweiArrayCode::NFS_PERMISSION_DOES_NOT_EXIST,
                             HuaweiArrayCode::LUN_DOES_NOT_EXIST,          HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST,
                             HuaweiArrayCode::HOST_DOES_NOT_EXIST,         HuaweiArrayCode::INITIATOR_DOES_NOT_EXIST,
                             HuaweiArrayCode::HOST_GROUP_DOES_NOT_EXIST,   HuaweiArrayCode::LUN_GROUP_DOES_NOT_EXIST,
                             HuaweiArrayCode::MAPPING_VIEW_DOES_NOT_EXIST};
  }
  bool parseResponse(jsonxx::Object const&) override { return true; }
};

class RequestDrivers : public zrtest::ArrayClientTest {
 protected:
  HuaweiApi::ResultStatus process(ZrManageHuawei& array, HuaweiJSONBaseV2& request, const char* operation) {
    HuaweiJSONBaseV2* const pointer = &request;
    return SelfDescribingDriver::process(array, operation, pointer);
  }
};

TEST_F(RequestDrivers, FailedLoginSendsNothingElseAndIsCodeOne) {
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  array.setCredentials("admin", "not-the-password", host());
  ProbeRequest request;
  const auto status = process(array, request, "ProbeOperation");
  EXPECT_EQ(status.GetErrorCode(), 1ULL);
  EXPECT_EQ(status.GetErrorString(), "Failed to create session.");
  EXPECT_THAT(requestLines(), ElementsAre("POST sessions"));
  EXPECT_TRUE(log.HasLine(-1, "ProcessWithServer::ProbeOperation", "Failed to create session."));
}

TEST_F(RequestDrivers, UnservedRouteFailsEvenWhereAbsentObjectsCountAsDone) {
  auto array = loggedInFacade();
  UnservedDeletion request;
  EXPECT_TRUE(process(*array, request, "Unserved").IsError());
  EXPECT_EQ(lastRequest().resource.substr(0, 18), "no_such_resource/7");
}

}  // namespace
