// A resource the simulator does not serve answers a code that no operation takes as done: an
// operation on it fails, even one that counts every "absent" code of the array as success.
#include <string>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONBaseV2.h"
#include "SelfDescribingDriver.h"

namespace zrtest {
namespace {

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

class UnservedRoute : public ArrayClientTest {};

TEST_F(UnservedRoute, FailsEvenWhereAbsentObjectsCountAsDone) {
  auto array = loggedInFacade();
  UnservedDeletion request;
  HuaweiJSONBaseV2* const pointer = &request;
  const HuaweiApi::ResultStatus status = SelfDescribingDriver::process(*array, "Unserved", pointer);
  EXPECT_TRUE(status.IsError());
  EXPECT_EQ(lastRequest().resource.substr(0, 18), "no_such_resource/7");
}

}  // namespace
}  // namespace zrtest
