// Change lists over HTTPS: real differences between two snapshots made on the simulator's file
// trees, walked page by page and compared with the array's own account of them.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
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
    arraysim::FileSystemInfo info;
    info.id = "7";
    sim().fileSystems().create("fs1", info);
  }

  arraysim::LiveFiles files() { return sim().files("7"); }
  std::string snapshot(const std::string& name) { return sim().snapshots().take("7", name); }

  std::vector<std::string> linesOf(const std::string& method) {
    std::vector<std::string> lines;
    for (const auto& request : requests()) {
      if (request.method == method) lines.push_back(request.resource);
    }
    return lines;
  }

  // A base and an incremental snapshot that differ by `count` created files at the root.
  void pairWithCreatedFiles(int count) {
    files().writeFile("/keep.txt", 1);
    base_ = snapshot("base");
    for (int i = 0; i < count; ++i) files().writeFile("/new" + std::to_string(i) + ".txt", 10 + i);
    incremental_ = snapshot("incremental");
  }

  std::string base_;
  std::string incremental_;
};

// What a name looks like after the trip: the library drops every backslash of the page, and it
// does not know the apostrophe's entity, so "&#39;" loses its ampersand.
std::string AsDelivered(std::string path) {
  std::string out;
  for (const char c : path) {
    if (c == '\\') continue;
    if (c == '\'') {
      out += "#39;";
      continue;
    }
    out += c;
  }
  return out;
}

TEST_F(ChangeLists, WalkDeliversTheArraysDifferencePageByPage) {
  files()
      .writeFile("/docs/report.txt", 100)
      .writeFile("/docs/keep.txt", 5)
      .writeFile("/old/x.txt", 1)
      .writeFile("/old/sub/y.txt", 2)
      .writeFile("/caf\xc3\xa9/na\xc3\xafve.txt", 3)
      .writeFile("/untouched/z.txt", 4);
  const std::string base = snapshot("base");

  arraysim::FileAttributes huge;
  huge.inode = UINT64_MAX;
  huge.size = (1ULL << 63) + 5;
  huge.crTime = 1ULL << 63;
  huge.cTime = 1ULL << 63;
  huge.mTime = UINT64_MAX - 1;
  huge.aTime = 1700000000;
  huge.owner = 4294967295ULL;
  huge.group = 1ULL << 40;
  huge.links = 3;
  huge.dosAttr = 0x20;
  files()
      .writeFile("/docs/report.txt", 200)
      .rename("/docs/keep.txt", "/docs/kept.txt")
      .remove("/old")
      .makeDirectory("/new dir/inner dir")
      .writeFile("/new dir/file with spaces.txt", 7)
      .writeFile("/new dir/inner dir/deep.txt", 8)
      .writeFile("/R&D <draft> (v2).txt", 9)
      .writeFile("/it's here.txt", 10)
      .writeFile("/a&amp;b.txt", 11)
      .writeFile("/back\\slash.txt", 12)
      .writeFile("/\xe6\x97\xa5\xe6\x9c\xac/\xe3\x83\x95\xe3\x82\xa1\xe3\x82\xa4\xe3\x83\xab.txt", 13)
      .touch("/caf\xc3\xa9/na\xc3\xafve.txt")
      .createFile("/huge.bin", huge);
  const std::string incremental = snapshot("incremental");
  sim().changeLists().setPageSize(7);
  auto array = loggedInFacade();
  LogCapture log;

  const ChangeListWalk walk = WalkAll(*array, "7", base, incremental);
  ASSERT_TRUE(walk.finished) << log.Dump();

  const std::vector<arraysim::Change> truth = sim().changeLists().difference(base, incremental);
  ASSERT_GE(truth.size(), 20u);
  ASSERT_EQ(walk.entries.size(), truth.size());
  for (size_t i = 0; i < truth.size(); ++i) {
    const auto& got = walk.entries[i];
    const auto& want = truth[i];
    SCOPED_TRACE(want.path);
    EXPECT_EQ(got.filePath, AsDelivered(want.path));
    EXPECT_EQ(got.changeType, static_cast<int>(want.changeType));
    EXPECT_EQ(got.fType, static_cast<int>(want.fileType));
    EXPECT_EQ(got.inode, want.attributes.inode);
    EXPECT_EQ(got.size, want.attributes.size);
    EXPECT_EQ(got.crTime, want.attributes.crTime);
    EXPECT_EQ(got.cTime, want.attributes.cTime);
    EXPECT_EQ(got.mTime, want.attributes.mTime);
    EXPECT_EQ(got.aTime, want.attributes.aTime);
    EXPECT_EQ(got.owner, want.attributes.owner);
    EXPECT_EQ(got.group, want.attributes.group);
    EXPECT_EQ(got.links, static_cast<int>(want.attributes.links));
    EXPECT_EQ(got.dosAttr, want.attributes.dosAttr);
  }
  // The names that survive the trip only in part.
  std::vector<std::string> paths;
  for (const auto& entry : walk.entries) paths.push_back(entry.filePath);
  EXPECT_THAT(paths, testing::Contains("/R&D <draft> (v2).txt"));
  EXPECT_THAT(paths, testing::Contains("/a&amp;b.txt"));
  EXPECT_THAT(paths, testing::Contains("/it#39;s here.txt"));
  EXPECT_THAT(paths, testing::Contains("/backslash.txt"));

  // One session, one page per call, each page at the cursor of the one before, then the
  // session's deletion.
  const std::string sessionId = walk.last.sessionId;
  ASSERT_FALSE(sessionId.empty());
  const size_t pages = (truth.size() + 6) / 7 + 1;
  EXPECT_EQ(walk.calls, static_cast<int>(pages));
  const auto all = requestLines();
  ASSERT_EQ(all.size(), pages + 2);
  EXPECT_EQ(all.front(), "POST fs_snapchangelist_session");
  EXPECT_EQ(requests().front().body, R"({"parentID":"7", "baseSnapshotId":")" + base +
                                         R"(", "incrementalSnapshotId":")" + incremental + R"(", "parentType":"40" })");
  EXPECT_EQ(linesOf("GET"), walk.expectedPages);
  EXPECT_EQ(linesOf("GET").front(), "fs_snapchangelist_result?sessionID=" + sessionId + kFirstPageCursor);
  EXPECT_EQ(all.back(), "DELETE fs_snapchangelist_session/" + sessionId);

  EXPECT_FALSE(sim().changeLists().sessionExists(sessionId));
  EXPECT_EQ(walk.last.sessionFailed, 0);
  EXPECT_EQ(walk.last.progress, "100");
  EXPECT_EQ(walk.last.numChanges, "0");
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::deleteSnapshotChangeListSession",
                          "Successfully deleted the Session ID[" + sessionId + "]"))
      << log.Dump();
}

// A page with entries at progress "100" is not the end; the empty page after it is.
TEST_F(ChangeLists, TheWalkEndsOnlyOnTheEmptyPage) {
  pairWithCreatedFiles(2);
  auto array = loggedInFacade();

  _HuaweiSnapshotChangeListInfo info;
  ASSERT_TRUE(array->getSnapshotChangeList("7", base_, incremental_, info));
  EXPECT_EQ(info.changes.size(), 2u);
  EXPECT_EQ(info.numChanges, "2");
  EXPECT_EQ(info.progress, "100");
  const std::string sessionId = info.sessionId;
  EXPECT_TRUE(sim().changeLists().sessionExists(sessionId));
  EXPECT_EQ(linesOf("DELETE").size(), 0u);

  const _HuaweiSnapshotChangeListInfo cursor = info;
  sim().requests().clear();
  ASSERT_TRUE(array->getSnapshotChangeList("7", base_, incremental_, info));
  EXPECT_TRUE(info.changes.empty());
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET " + PageResource(sessionId, cursor),
                                                      "DELETE fs_snapchangelist_session/" + sessionId}));
  EXPECT_FALSE(sim().changeLists().sessionExists(sessionId));
  EXPECT_EQ(info.sessionId, sessionId);  // kept after the deletion
  EXPECT_EQ(info.sessionFailed, 0);
}

TEST_F(ChangeLists, IdenticalSnapshotsEndOnTheFirstPage) {
  files().writeFile("/same.txt", 1);
  const std::string base = snapshot("base");
  const std::string incremental = snapshot("incremental");
  auto array = loggedInFacade();

  _HuaweiSnapshotChangeListInfo info;
  ASSERT_TRUE(array->getSnapshotChangeList("7", base, incremental, info));
  EXPECT_TRUE(info.changes.empty());
  EXPECT_EQ(info.progress, "100");
  EXPECT_EQ(requestLines(),
            (std::vector<std::string>{"POST fs_snapchangelist_session",
                                      "GET fs_snapchangelist_result?sessionID=" + info.sessionId + kFirstPageCursor,
                                      "DELETE fs_snapchangelist_session/" + info.sessionId}));
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

// A double quote in a name comes out of the page repair as a bare quote inside a string.
TEST_F(ChangeLists, NameWithADoubleQuoteBreaksTheWalk) {
  files().writeFile("/plain.txt", 1);
  const std::string base = snapshot("base");
  files().writeFile("/say \"hi\".txt", 2);
  const std::string incremental = snapshot("incremental");
  auto array = loggedInFacade();
  LogCapture log;

  const ChangeListWalk walk = WalkAll(*array, "7", base, incremental);
  EXPECT_TRUE(walk.failed);
  EXPECT_EQ(walk.calls, 1);
  EXPECT_EQ(walk.last.sessionFailed, 1);
  EXPECT_TRUE(walk.last.changes.empty());
  EXPECT_EQ(walk.last.posType, "255");  // the cursor of the failed page stays
  EXPECT_EQ(walk.last.linkPos, "18446744073709551614");
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Unable to parse the JSON Response")) << log.Dump();
  EXPECT_EQ(requestLines().back(), "DELETE fs_snapchangelist_session/" + walk.last.sessionId);
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

// A page that goes wrong in the middle of a walk ends it and closes the session.
struct BrokenPage {
  const char* name;
  std::function<void(arraysim::FaultRule&)> spoil;
  const char* line;  // nullptr: the line of a failed request
};

void PrintTo(const BrokenPage& row, std::ostream* out) { *out << row.name; }

class ChangeListBrokenPage : public ChangeLists, public testing::WithParamInterface<BrokenPage> {};

TEST_P(ChangeListBrokenPage, EndsTheWalkAndDeletesTheSession) {
  pairWithCreatedFiles(5);
  sim().changeLists().setPageSize(2);
  auto array = loggedInFacade();
  LogCapture log;

  _HuaweiSnapshotChangeListInfo info;
  ASSERT_TRUE(array->getSnapshotChangeList("7", base_, incremental_, info));
  ASSERT_EQ(info.changes.size(), 2u);
  const _HuaweiSnapshotChangeListInfo cursor = info;

  arraysim::FaultRule fault = arraysim::FaultRule::On("GET", "fs_snapchangelist_result");
  GetParam().spoil(fault);
  sim().faults().add(fault);
  sim().requests().clear();
  EXPECT_FALSE(array->getSnapshotChangeList("7", base_, incremental_, info));

  EXPECT_EQ(info.sessionFailed, 1);
  EXPECT_TRUE(info.changes.empty());
  EXPECT_EQ(info.sessionId, cursor.sessionId);
  EXPECT_EQ(PageResource(info.sessionId, info), PageResource(cursor.sessionId, cursor));  // cursor kept
  EXPECT_EQ(requestLines(), (std::vector<std::string>{"GET " + PageResource(cursor.sessionId, cursor),
                                                      "DELETE fs_snapchangelist_session/" + cursor.sessionId}));
  EXPECT_FALSE(sim().changeLists().sessionExists(cursor.sessionId));
  const std::string expected =
      GetParam().line != nullptr
          ? std::string(GetParam().line)
          : "Unable to get the snapshot change list for base snapshot[" + base_ + "] and incremental snapshot[" +
                incremental_ + "].";
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, expected)) << log.Dump();
}

INSTANTIATE_TEST_SUITE_P(
    Faults, ChangeListBrokenPage,
    testing::Values(
        BrokenPage{"ArrayError", [](arraysim::FaultRule& f) { f.arrayError(50331651, "The cursor is invalid."); },
                   nullptr},
        BrokenPage{"AnswerCutOff", [](arraysim::FaultRule& f) { f.abortAnswer(); }, nullptr},
        BrokenPage{"HtmlPage", [](arraysim::FaultRule& f) { f.htmlPage(502); }, nullptr},
        BrokenPage{"EmptyAnswer", [](arraysim::FaultRule& f) { f.emptyBody(); }, "Empty response from the array"}),
    [](const testing::TestParamInfo<BrokenPage>& info) { return std::string(info.param.name); });

TEST_F(ChangeLists, MissingSnapshotIdentifiersSendNothing) {
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiSnapshotChangeListInfo info;
  info.sessionFailed = 3;
  info.posObj = "42";

  EXPECT_FALSE(array->getSnapshotChangeList("7", "", "7@2", info));
  EXPECT_FALSE(array->getSnapshotChangeList("7", "7@1", "", info));
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Invalid Parameters. Incremental Snapshot[7@2], Base Snapshot[]")) << log.Dump();
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Invalid Parameters. Incremental Snapshot[], Base Snapshot[7@1]")) << log.Dump();
  EXPECT_EQ(info.sessionFailed, 3);
  EXPECT_EQ(info.posObj, "42");
  EXPECT_EQ(info.sessionId, "");
}

TEST_F(ChangeLists, SessionThatCannotBeOpenedEndsTheCall) {
  pairWithCreatedFiles(1);
  auto array = loggedInFacade();
  LogCapture log;
  _HuaweiSnapshotChangeListInfo info;
  info.sessionFailed = 3;

  EXPECT_FALSE(array->getSnapshotChangeList("7", "7@99", incremental_, info));  // the array knows no such base
  EXPECT_EQ(requestLines(), std::vector<std::string>{"POST fs_snapchangelist_session"});
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::createSnapshotChangeListSession",
                          "Unable to create change list session information"))
      << log.Dump();
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Unable to get the Snap Change List Session ID.")) << log.Dump();
  EXPECT_EQ(info.sessionId, "");
  EXPECT_EQ(info.sessionFailed, 3);

  // On a closed facade the walk has no guard of its own: the session's guard stops it.
  auto closed = facade();
  sim().requests().clear();
  log.Clear();
  EXPECT_FALSE(closed->getSnapshotChangeList("7", base_, incremental_, info));
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::createSnapshotChangeListSession",
                          "Before calling createSnapshotChangeListSession(), please initialize Huawei params using "
                          "ZrManageHuawei::init()."))
      << log.Dump();
  EXPECT_TRUE(log.HasLine(-1, kWalkLog, "Unable to get the Snap Change List Session ID.")) << log.Dump();
}

TEST_F(ChangeLists, SessionBodyAlwaysNamesAFileSystem) {
  pairWithCreatedFiles(1);
  auto array = loggedInFacade();
  LogCapture log;

  const std::string sessionId = array->createSnapshotChangeListSession("7", base_, incremental_, 99);
  ASSERT_FALSE(sessionId.empty());
  EXPECT_EQ(sim().changeLists().openSessions(), std::vector<std::string>{sessionId});
  EXPECT_EQ(lastRequest().body, R"({"parentID":"7", "baseSnapshotId":")" + base_ + R"(", "incrementalSnapshotId":")" +
                                    incremental_ + R"(", "parentType":"40" })");
  EXPECT_TRUE(log.HasLine(5, "ZrManageHuawei::createSnapshotChangeListSession",
                          "Successfully created a Session with ID[" + sessionId + "]"))
      << log.Dump();

  EXPECT_TRUE(array->deleteSnapshotChangeListSession(sessionId));
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::deleteSnapshotChangeListSession",
                          "Successfully deleted the Session ID[" + sessionId + "]"))
      << log.Dump();
}

}  // namespace
}  // namespace zrtest
