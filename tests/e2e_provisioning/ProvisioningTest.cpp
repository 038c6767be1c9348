// LUN provisioning over HTTPS: what the array receives and how its answers come back.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "ProvisioningScene.h"

namespace zrtest {
namespace {

using testing::ElementsAre;

class Provisioning : public ProvisioningTest {};

TEST_F(Provisioning, CreateRenameAndDeleteALun) {
  _HuaweiLUNInfo lun = NewLun("lunA");
  lun.vstoreId = "3";  // never sent: a LUN is made where the session is
  std::string id;
  ASSERT_FALSE(array_->createLUN(id, lun).IsError());
  EXPECT_EQ(lastRequest().body,
            R"({"ALLOCTYPE": "1", "CAPACITY": "2097152", "NAME": "lunA", "OWNINGCONTROLLER": "0A", "PARENTID": "0"})");

  // The checks run in the order name (the shape table's empty LUN), capacity, allocation type,
  // pool, controller.
  _HuaweiLUNInfo partial = NewLun("lunB");
  partial.allocType.clear();
  partial.parentId.clear();
  EXPECT_EQ(array_->createLUN(id, partial).GetErrorString(), "The input parameter [AllocType] is not set");

  // A record with an empty name renames nothing: the PUT carries an empty object.
  _HuaweiLUNInfo rename;
  rename.id = id;
  ASSERT_FALSE(array_->modifyLun(rename).IsError());
  EXPECT_EQ(lastRequest().body, "{}");

  // An absent LUN is no deletion done.
  ASSERT_FALSE(array_->deleteLun(id, "-12345").IsError());
  EXPECT_EQ(array_->deleteLun(id, "").GetErrorCode(), 1077948996ULL);
}

TEST_F(Provisioning, VStoreGoesIntoTheQueryOfDeletesAndTheBodyOfPosts) {
  sim().store().insert("lun", {{"ID", "9"}, {"NAME", "v"}, {"PARENTID", "0"}, {"RUNNINGSTATUS", "27"}, {"vstoreId", "3"}});
  sim().store().insert("lungroup", {{"ID", "7"}, {"NAME", "vgroup"}, {"vstoreId", "3"}});
  LogCapture log;
  ASSERT_FALSE(array_->addLuntoLunGroup("7", "9", "3").IsError());
  EXPECT_EQ(lastRequest().body, R"({"ASSOCIATEOBJID": "9", "ASSOCIATEOBJTYPE": "11", "ID": "7", "vstoreId": "3"})");
  // Already a member: the array's refusal is taken as success.
  ASSERT_FALSE(array_->addLuntoLunGroup("7", "9", "3").IsError());
  EXPECT_TRUE(log.HasLine(0, "ProcessWithServer::AddLuntoLunGroup",
                          "Ignore flag set for error [1077948997] [The object is already in the LUN group.]! Treating this "
                          "as success."));

  std::vector<_HuaweiLunGroupInfo> groups;
  ASSERT_FALSE(array_->getLunGroupsAssociatedToLun(groups, "9", "3").IsError());
  ASSERT_FALSE(array_->removeLunFromLunGroup("7", "9", "3").IsError());
  ASSERT_FALSE(array_->deleteLun("9", "3").IsError());
  EXPECT_THAT(requestLines(),
              ElementsAre("POST lungroup/associate?", "POST lungroup/associate?",
                          "GET lungroup/associate?&ASSOCIATEOBJID=9&ASSOCIATEOBJTYPE=11&vstoreId=3",
                          "DELETE lungroup/associate?&ID=7&ASSOCIATEOBJID=9&ASSOCIATEOBJTYPE=11&vstoreId=3",
                          "DELETE lun/9?&vstoreId=3"));
}

TEST_F(Provisioning, MembershipIsAnErrorStatusWhenTheLunIsNotInTheGroup) {
  EXPECT_FALSE(array_->isLunAssociatedToLunGroup("1", "1").IsError());
  const auto absent = array_->isLunAssociatedToLunGroup("1", "4");
  EXPECT_EQ(absent.GetErrorCode(), 2ULL);
  EXPECT_EQ(absent.GetErrorString(), "Unable to find required lun id [4], in the lun group [1]");
  EXPECT_EQ(array_->isLunAssociatedToLunGroup("", "4").GetErrorString(), "The input parameter [lun group id] is empty");

  // An empty group is a failure unless the array sends an empty list.
  sim().store().insert("lungroup", {{"ID", "2"}, {"NAME", "empty"}});
  std::vector<_HuaweiLUNInfo> luns(1);
  EXPECT_TRUE(array_->getLunAssociatedToLunGroup("2", luns).IsError());
  EXPECT_EQ(luns.size(), 1u);
  arraysim::AnswerStyle emptyArray;
  emptyArray.emptyList = arraysim::EmptyListAnswer::EmptyArray;
  sim().answerStyles().set("GET", "lun/associate", emptyArray);
  EXPECT_FALSE(array_->getLunAssociatedToLunGroup("2", luns).IsError());
  EXPECT_TRUE(luns.empty());
}

TEST_F(Provisioning, StoragePoolsMatchTheWholeNameWhateverTheArrayAnswers) {
  const auto answer = [](const std::string& pools) {
    return R"({"data":[)" + pools + R"(],"error":{"code":0,"description":"0"}})";
  };
  const std::string longer = R"({"NAME":"pool10","ID":"10","PARENTID":"0"})";
  sim().faults().add(arraysim::FaultRule::On("GET", "storagepool")
                         .cannedBody(answer(longer + R"(,{"NAME":"pool1","ID":"1","PARENTID":"0"},{"NAME":"pool1","ID":"2","PARENTID":"0"})")));
  sim().faults().add(arraysim::FaultRule::On("GET", "storagepool").cannedBody(answer(longer)));
  _HuaweiStoragePoolInfo pool;
  ASSERT_FALSE(array_->getStoragePoolInfoForName(pool, "pool1").IsError());
  EXPECT_EQ(pool.id, "1");
  EXPECT_TRUE(array_->getStoragePoolInfoForName(pool, "pool1").IsError());  // a longer name only
}

}  // namespace
}  // namespace zrtest
