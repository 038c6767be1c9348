// LUN and LUN snapshot operations: what is their own beyond the shared shape.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "LunSnapshotAndHostScene.h"

namespace zrtest {
namespace {

using testing::ElementsAre;

class LunSnapshots : public LunSnapshotAndHostTest {
 protected:
  std::string state(const std::string& id) { return sim().store().get("snapshot", id)->value("RUNNINGSTATUS", ""); }
};

TEST_F(LunSnapshots, LunLookupReadsSplitMirrorsAndSaysWhenTheLunIsAbsent) {
  sim().store().update("lun", "7", {{"SPLITMIRRORIDS", "[\"12\",\"3\"]"}, {"CAPACITY", "1024"}});
  LogCapture log;
  _HuaweiLUNInfo lun;
  ASSERT_FALSE(array_->getLUNInfo(lun, "7", "3").IsError());
  EXPECT_EQ(lun.name, "lun7");
  EXPECT_THAT(lun.splitMirrorIds, ElementsAre("12", "3"));
  EXPECT_EQ(lun.capacity, "1024");
  EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::getLUNInfo", "VStore Name [[EMPTY]]")) << log.Dump();
  EXPECT_EQ(array_->getLUNInfo(lun, "8", "3").AsString(), "[ERROR] LUN with ID [8] does not exist");
  EXPECT_EQ(lun.name, "lun7");
}

TEST_F(LunSnapshots, LifeOfASnapshotFromCreationToDeletion) {
  _HuaweiLUNSnapshotInfo made;
  ASSERT_FALSE(array_->createLUNSnapshot(made, "7", "s1", "3").IsError());
  EXPECT_EQ(lastRequest().body, R"({"PARENTID":"7", "NAME":"s1" ,"vstoreId":"3" })");
  EXPECT_EQ(made.parentName, "lun7");
  EXPECT_EQ(made.vstoreId, "3");
  EXPECT_FALSE(made.isCopy);

  // All or nothing: one active snapshot in the list refuses the lot, in the operation's words.
  EXPECT_EQ(array_->activateLUNSnapshot({made.id, scene_["active"]}, "3").AsString(),
            "[ERROR] The snapshot is not in the inactive state. Confirm the snapshot is in the inactive state and retry.");
  EXPECT_EQ(lastRequest().body, "{\"SNAPSHOTLIST\":[" + made.id + "," + scene_["active"] + "],\"vstoreId\":\"3\" }");
  EXPECT_EQ(state(made.id), "43");
  EXPECT_EQ(array_->activateLUNSnapshot({"99"}, "3").AsString(),
            "[ERROR] The snapshot LUN does not exist.Enter a valid snapshot ID.");
  ASSERT_FALSE(array_->activateLUNSnapshot({made.id}, "-12345").IsError());
  EXPECT_EQ(state(made.id), "41");

  // The array refuses an empty speed; the library passes the array's refusal on as "[ERROR] ".
  EXPECT_EQ(array_->revertLUNSnapshot(made.id, "", "-12345").AsString(), "[ERROR] ");
  EXPECT_EQ(lastRequest().body, "{\"ID\":\"" + made.id + "\",\"ROLLBACKSPEED\":\"\" }");
  ASSERT_FALSE(array_->revertLUNSnapshot(made.id, "2", "3").IsError());
  EXPECT_EQ(state(made.id), "44");

  _HuaweiLUNSnapshotInfo copy;
  ASSERT_FALSE(array_->createLUNSnapshotCopy(copy, made.id, "s1-copy", "-12345").IsError());
  EXPECT_EQ(lastRequest().body, "{\"ID\":\"" + made.id + "\", \"NAME\":\"s1-copy\" }");
  EXPECT_TRUE(copy.isCopy);
  EXPECT_EQ(copy.parentName, "lun7");

  bool notExist = false;
  ASSERT_FALSE(array_->deActivateLUNSnapshot(made.id, notExist, "3").IsError());
  EXPECT_FALSE(notExist);
  EXPECT_EQ(state(made.id), "43");
  ASSERT_FALSE(array_->deleteLUNSnapshot(made.id, "-12345").IsError());
  EXPECT_FALSE(sim().store().get("snapshot", made.id));
}

TEST_F(LunSnapshots, AGoneSnapshotIsStoppedAndDeletedButNotFound) {
  LogCapture log;
  bool notExist = false;
  EXPECT_FALSE(array_->deActivateLUNSnapshot("99", notExist, "3").IsError());
  EXPECT_TRUE(notExist);
  EXPECT_FALSE(array_->deleteLUNSnapshot("99", "3").IsError());
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::deleteLUNSnapshot",
                          "The snapshot LUN with ID [99] does not exist. The snapshot may have been externally deleted."));
  EXPECT_FALSE(log.ContainsLineWith(0, "Successfully"));

  _HuaweiLUNSnapshotInfo info;
  notExist = false;
  EXPECT_EQ(array_->getLUNSnapshotInfo(info, "99", notExist, "3").AsString(),
            "[ERROR] Snapshot LUN with ID [99] does not exist");
  EXPECT_TRUE(notExist);
  notExist = false;
  EXPECT_TRUE(array_->getLUNSnapshotInfoByName(info, "gone", notExist, "3").IsError());
  EXPECT_FALSE(notExist);
}

// Any other refusal of a lookup by ID fails in the operation's words, with the array's code and
// message on the line, and leaves the absence flag alone.
TEST_F(LunSnapshots, OtherRefusalsOfLookupsByIdCarryTheArraysCodeOnTheLine) {
  sim().faults().add(arraysim::FaultRule::On("GET", "lun").arrayError(1077948996, "lun refused"));
  sim().faults().add(arraysim::FaultRule::On("GET", "snapshot").arrayError(1077949002, "Busy."));
  LogCapture log;
  _HuaweiLUNInfo lun;
  EXPECT_EQ(array_->getLUNInfo(lun, "7", "3").AsString(), "[ERROR] Unable to find the LUN with ID [7]");
  EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::getLUNInfo",
                          "[ERROR] Unable to find the LUN with ID [7] [ERRORCODE: [1077948996]] [MESSAGE: [lun refused]]"))
      << log.Dump();
  _HuaweiLUNSnapshotInfo info;
  bool notExist = false;
  EXPECT_EQ(array_->getLUNSnapshotInfo(info, "99", notExist, "3").AsString(),
            "[ERROR] Unable to find the snapshot LUN with ID [99]");
  EXPECT_FALSE(notExist);
  EXPECT_TRUE(log.HasLine(3, "ZrManageHuawei::getLUNSnapshotInfo",
                          "[ERROR] Unable to find the snapshot LUN with ID [99] [ERRORCODE: [1077949002]] [MESSAGE: [Busy.]]"))
      << log.Dump();
}

TEST_F(LunSnapshots, LookupByNameTakesOnlyTheSameName) {
  sim().store().insert("snapshot", {{"NAME", "snap-longer"}, {"PARENTID", "7"}, {"PARENTNAME", "lun7"},
                                    {"RUNNINGSTATUS", "43"}, {"vstoreId", "3"}});
  _HuaweiLUNSnapshotInfo info;
  bool notExist = false;
  ASSERT_FALSE(array_->getLUNSnapshotInfoByName(info, "snap", notExist, "3").IsError());
  EXPECT_EQ(info.id, scene_["snapshot"]);
  EXPECT_EQ(array_->getLUNSnapshotInfoByName(info, "sna", notExist, "3").AsString(),
            "[ERROR] Unable to find the snapshot LUN with name [sna]");
}

}  // namespace
}  // namespace zrtest
