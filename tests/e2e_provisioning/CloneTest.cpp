// Clones over HTTPS: a secondary LUN's pair through its states, and the records as read.
#include <list>
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

class Clones : public ProvisioningTest {
 protected:
  std::string mirrorsOf(const char* lun) { return (*sim().store().get("lun", lun))["SPLITMIRRORIDS"]; }
};

TEST_F(Clones, ASecondaryLunSynchronisesSplitsAndLeaves) {
  _HuaweiCloneInfo clone;
  clone.id = "99";  // never sent
  clone.name = "nightly";
  clone.priLunId = "4";
  std::string cloneId;
  ASSERT_FALSE(array_->createClone(cloneId, clone).IsError());
  EXPECT_EQ(lastRequest().body, R"({"NAME": "nightly", "PRILUNID": "4"})");
  EXPECT_EQ(mirrorsOf("4"), "[\"" + cloneId + "\"]");

  sim().store().erase("splitmirrortargetlun", "2");
  ASSERT_FALSE(array_->addCloneSecondaryLun(Secondary("2", cloneId), HuaweiApiValue::FIRST_SYNC_YES).IsError());

  // The first synchronisation moves on with every read until the pair is normal.
  std::list<_HuaweiCloneSecondaryLUN> pairs(3);
  std::vector<int> progress;
  do {
    ASSERT_FALSE(array_->getCloneSecondaryLuns(pairs, cloneId).IsError());
    ASSERT_EQ(pairs.size(), 1u);
    progress.push_back(pairs.front().process);
  } while (pairs.front().runningStatus.getValue() == HuaweiApiValue::CLONE_SEC_LUN_RUNNING_STATUS_SYNC.getValue());
  EXPECT_THAT(progress, ElementsAre(40, 80, 100));
  EXPECT_EQ(pairs.front().runningStatus.getValue(), HuaweiApiValue::CLONE_SEC_LUN_RUNNING_STATUS_NORM.getValue());
  EXPECT_EQ(pairs.front().speed.getSpeed(), 3);

  // A pair that synchronises cannot be synced again; a split one can.
  EXPECT_EQ(array_->syncCloneSecondaryLun("2", cloneId).GetErrorCode(), 1077951831ULL);
  ASSERT_FALSE(array_->splitCloneSecondaryLun("2", cloneId).IsError());
  ASSERT_FALSE(array_->syncCloneSecondaryLun("2", cloneId).IsError());

  const auto refused = array_->deleteClone(cloneId);
  EXPECT_EQ(refused.GetErrorCode(), 1077948998ULL);
  EXPECT_EQ(refused.GetErrorString(),
            "API Error [The clone still has secondary LUNs.] Unable to delete clone with ID  [" + cloneId + "]");
  ASSERT_FALSE(array_->removeCloneSecondaryLun("2", cloneId).IsError());
  ASSERT_FALSE(array_->deleteClone(cloneId).IsError());
  EXPECT_EQ(mirrorsOf("4"), "[]");
  EXPECT_EQ(array_->getCloneInfo(clone, cloneId).GetErrorCode(), 1077948996ULL);
}

TEST_F(Clones, RecordsKeepWhatTheArraySendsAndTheListIsReplaced) {
  // A list of one, answered as the bare item.
  sim().faults().add(arraysim::FaultRule::On("GET", "SPLITMIRRORTARGETLUN/targetLUN")
                         .cannedBody(R"({"data":{"NAME":"s","ID":"8","PARENTID":"1","SPEED":"9","RESUMEPOLICY":"7",)"
                                     R"("RUNNINGSTATUS":"99","PROCESS":"abc"},"error":{"code":0,"description":"0"}})"));
  std::list<_HuaweiCloneSecondaryLUN> pairs(2);
  ASSERT_FALSE(array_->getCloneSecondaryLuns(pairs, "1").IsError());
  ASSERT_EQ(pairs.size(), 1u);
  EXPECT_TRUE(pairs.front().speed.isEmpty());
  EXPECT_EQ(pairs.front().resumePolicy.getValue(), "7");
  EXPECT_EQ(pairs.front().runningStatus.getValue(), "99");
  EXPECT_EQ(pairs.front().process, 0);

  _HuaweiCloneSecondaryLUN slow = Secondary("4", "2");
  slow.speed = HuaweiApi::CopySpeedValue(5);
  EXPECT_EQ(array_->addCloneSecondaryLun(slow, HuaweiApiValue::FIRST_SYNC_NO).GetErrorString(),
            "The input parameter [speed] is empty");
  // A LUN in a clone stays until the clone lets it go.
  EXPECT_EQ(array_->deleteLun("1", "-12345").GetErrorCode(), 1077948998ULL);
  EXPECT_EQ(array_->deleteLun("2", "-12345").GetErrorCode(), 1077948998ULL);
}

// Readers of the third generation take a list of one answered as the bare item as that list (the
// secondary LUNs above are answered so).
TEST_F(Clones, ListsOfOneAnsweredAsTheBareItemReadAsListsOfOne) {
  arraysim::AnswerStyle bare;
  bare.singleItemAsObject = true;
  sim().answerStyles().set("GET", "storagepool", bare);
  _HuaweiStoragePoolInfo pool;
  ASSERT_FALSE(array_->getStoragePoolInfoForName(pool, "pool1").IsError());
  EXPECT_EQ(pool.id, "0");
}

}  // namespace
}  // namespace zrtest
