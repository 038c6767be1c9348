// Change lists over HTTPS: real differences between two snapshots made on the simulator's file
// trees, walked page by page and compared with the array's own account of them.
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "ChangeListText.h"
#include "ChangeListWalk.h"
#include "LogCapture.h"

namespace zrtest {
namespace {

const char kWalkLog[] = "ZrManageHuawei::getSnapshotChangeList";
const char kFirstPageCursor[] = "&parentType=40&posType=255&posObj=0&posOffset=0&linkPosType=255&linkPos=18446744073709551614";

class ChangeLists : public ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    sim().fileSystems().create("fs1", FileSystemOf("7"));
    array_ = loggedInFacade();
  }
  arraysim::LiveFiles files() { return sim().files("7"); }
  std::string snapshot(const std::string& name) { return sim().fileSystemSnapshots().take("7", name); }
  // A base and an incremental snapshot that differ by `count` created files.
  void pairWithCreatedFiles(int count) {
    files().writeFile("/keep.txt", 1);
    base_ = snapshot("base");
    for (int i = 0; i < count; ++i) files().writeFile("/new" + std::to_string(i) + ".txt", 10 + i);
    incremental_ = snapshot("incremental");
  }
  std::string base_, incremental_;
  std::unique_ptr<ZrManageHuawei> array_;
};

TEST_F(ChangeLists, WalkDeliversTheArraysDifferencePageByPage) {
  files().writeFile("/docs/report.txt", 100).writeFile("/docs/keep.txt", 5).writeFile("/old/x.txt", 1);
  files().writeFile("/old/sub/y.txt", 2).writeFile("/caf\xc3\xa9/na\xc3\xafve.txt", 3).writeFile("/untouched/z.txt", 4);
  base_ = snapshot("base");
  arraysim::FileAttributes huge;
  huge.inode = UINT64_MAX;
  huge.size = (1ULL << 63) + 5;
  huge.crTime = huge.cTime = 1ULL << 63;
  huge.mTime = UINT64_MAX - 1;
  huge.owner = 4294967295ULL;
  huge.group = 1ULL << 40;
  huge.links = 3;
  huge.dosAttr = 0x20;
  files().writeFile("/docs/report.txt", 200).rename("/docs/keep.txt", "/docs/kept.txt").remove("/old");
  files().makeDirectory("/new dir/inner dir").writeFile("/new dir/file with spaces.txt", 7);
  files().writeFile("/new dir/inner dir/deep.txt", 8).writeFile("/R&D <draft> (v2).txt", 9);
  files().writeFile("/a&amp;b.txt", 11);
  files().writeFile("/\xe6\x97\xa5\xe6\x9c\xac/\xe3\x83\x95.txt", 13).touch("/caf\xc3\xa9/na\xc3\xafve.txt");
  files().createFile("/huge.bin", huge);
  incremental_ = snapshot("incremental");
  sim().changeLists().setPageSize(7);
  LogCapture log;

  const ChangeListWalk walk = WalkAll(*array_, "7", base_, incremental_);
  ASSERT_TRUE(walk.finished) << log.Dump();
  const std::vector<arraysim::Change> truth = sim().changeLists().difference(base_, incremental_);
  ASSERT_GE(truth.size(), 18u);
  EXPECT_EQ(EntryTexts(walk.entries), EntryTexts(truth));

  // One session, one page per call at the cursor of the page before, then the session's deletion
  // behind the empty page at progress "100" (a page with entries at "100" is not the end).
  const std::string sessionId = walk.last.sessionId;
  const size_t pages = (truth.size() + 6) / 7 + 1;
  EXPECT_EQ(walk.calls, static_cast<int>(pages));
  std::vector<std::string> expected = {"POST fs_snapchangelist_session"};
  for (const auto& page : walk.expectedPages) expected.push_back("GET " + page);
  expected.push_back("DELETE fs_snapchangelist_session/" + sessionId);
  EXPECT_EQ(requestLines(), expected);
  EXPECT_EQ(expected[1], "GET fs_snapchangelist_result?sessionID=" + sessionId + kFirstPageCursor);
  EXPECT_FALSE(sim().changeLists().sessionExists(sessionId));
  EXPECT_EQ(walk.last.sessionFailed, 0);
  EXPECT_EQ(walk.last.progress + "|" + walk.last.numChanges, "100|0");
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::deleteSnapshotChangeListSession",
                          "Successfully deleted the Session ID[" + sessionId + "]"));
}

// A page that goes wrong in the middle of a walk ends it, keeps the cursor and closes the session.
TEST_F(ChangeLists, BrokenPageEndsTheWalkAndDeletesTheSession) {
  pairWithCreatedFiles(5);
  sim().changeLists().setPageSize(2);
  const std::string failed = "Unable to get the snapshot change list for base snapshot[" + base_ +
                             "] and incremental snapshot[" + incremental_ + "].";
  const auto on = [] { return arraysim::FaultRule::On("GET", "fs_snapchangelist_result"); };
  const std::pair<arraysim::FaultRule, std::string> faults[] = {
      {on().arrayError(50331651, "The cursor is invalid."), failed},
      {on().abortAnswer(), failed},
      {on().htmlPage(502), failed},
      {on().emptyBody(), "Empty response from the array"}};
  for (const auto& [fault, line] : faults) {
    LogCapture log;
    _HuaweiSnapshotChangeListInfo info;
    ASSERT_TRUE(array_->getSnapshotChangeList("7", base_, incremental_, info));
    ASSERT_EQ(info.changes.size(), 2u);
    const _HuaweiSnapshotChangeListInfo cursor = info;
    sim().faults().add(fault);
    sim().requests().clear();
    EXPECT_FALSE(array_->getSnapshotChangeList("7", base_, incremental_, info));
    EXPECT_EQ(info.sessionFailed, 1);
    EXPECT_TRUE(info.changes.empty());
    EXPECT_EQ(PageResource(info.sessionId, info), PageResource(cursor.sessionId, cursor));
    EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET " + PageResource(cursor.sessionId, cursor),
                                                        "DELETE fs_snapchangelist_session/" + cursor.sessionId}));
    EXPECT_TRUE(log.HasLine(-1, kWalkLog, line)) << log.Dump();
  }
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

// Names that the page repair changes into others, one walk each; a double quote comes out of it
// as a bare quote inside a string, and the walk breaks on its first page.
TEST_F(ChangeLists, RepairChangesOrLosesHostileNames) {
  const std::pair<std::string, std::string> rows[] = {
      {"/tenantA/.\\./tenantB/payroll.xlsx", "/tenantA/../tenantB/payroll.xlsx"},
      {"/back\\slash", "/backslash"},
      {"/tab\tx", "/tabu0009x"},
      {"/it's", "/it#39;s"},
      {"/say \"hi\".txt", ""},
  };
  LogCapture log;
  int round = 0;
  for (const auto& [name, delivered] : rows) {
    base_ = snapshot("base" + std::to_string(round));
    files().writeFile(name, 1);
    incremental_ = snapshot("incremental" + std::to_string(round++));
    const ChangeListWalk walk = WalkAll(*array_, "7", base_, incremental_);
    std::vector<std::string> paths;
    for (const auto& entry : walk.entries) paths.push_back(entry.filePath);
    if (delivered.empty()) {
      EXPECT_TRUE(walk.failed && walk.calls == 1 && walk.last.sessionFailed == 1 && paths.empty()) << name;
      // The first page's cursor stays.
      EXPECT_EQ(walk.last.posType + "|" + walk.last.linkPos, "255|18446744073709551614");
      EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Unable to parse the JSON Response")) << log.Dump();
    } else {
      EXPECT_TRUE(walk.finished) << name;
      EXPECT_THAT(paths, testing::Contains(delivered));
      EXPECT_THAT(paths, testing::Not(testing::Contains(name)));
    }
  }
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

// Stops before a session exists leave the record as it was and delete nothing. (A closed facade:
// the session's guard, in FileSystemSnapshotAndChangeListShapeTest.)
TEST_F(ChangeLists, CallsThatCannotOpenASessionSendNothingMore) {
  pairWithCreatedFiles(1);
  LogCapture log;
  _HuaweiSnapshotChangeListInfo info;
  info.sessionFailed = 3;
  info.posObj = "42";
  EXPECT_FALSE(array_->getSnapshotChangeList("7", "", "7@2", info));
  EXPECT_FALSE(array_->getSnapshotChangeList("7", "7@1", "", info));
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Invalid Parameters. Incremental Snapshot[7@2], Base Snapshot[]"));
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Invalid Parameters. Incremental Snapshot[], Base Snapshot[7@1]"));

  EXPECT_FALSE(array_->getSnapshotChangeList("7", "7@99", incremental_, info));  // the array knows no such base
  EXPECT_EQ(requestLines(), std::vector<std::string>{"POST fs_snapchangelist_session"});
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Unable to get the Snap Change List Session ID.")) << log.Dump();
  EXPECT_EQ(info.sessionId + "|" + info.posObj + "|" + std::to_string(info.sessionFailed), "|42|3");
}

}  // namespace
}  // namespace zrtest
