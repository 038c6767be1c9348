// Change lists walked with exact file names, an embedder's choice: the whole binary runs under it,
// chosen before any test starts. The simulator's file trees hold names that the page repair would
// change or choke on; the walk has to give the array's own difference, byte for byte.
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "ChangeListWalk.h"
#include "LogCapture.h"
#include "ZrLibrarySettings.h"
#include "filetree/HostileNames.h"

namespace zrtest {
namespace {

const bool kExactNamesChosen = [] {
  ZrLibrarySettings settings;
  settings.changeListNames = ZrLibrarySettings::ChangeListNames::Exact;
  return ZrLibrarySetSettings(settings);
}();

class ExactNames : public ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    ASSERT_TRUE(kExactNamesChosen);
    arraysim::FileSystemInfo info;
    info.id = "7";
    sim().fileSystems().create("fs1", info);
  }
  arraysim::LiveFiles files() { return sim().files("7"); }
  std::string snapshot(const std::string& name) { return sim().snapshots().take("7", name); }
};

TEST_F(ExactNames, HostileTreeWalksToTheTrueDifference) {
  const std::vector<std::string> hostile = arraysim::HostilePaths();
  for (size_t i = 0; i < hostile.size(); ++i) {
    files().writeFile("/kept/" + hostile[i], i).writeFile("/gone/" + hostile[i], i);
  }
  const std::string base = snapshot("base");
  files().remove("/gone").rename("/kept/it's", "/kept/it's \"renamed\"\t");
  for (size_t i = 0; i < hostile.size(); i += 2) {
    if (hostile[i] != "it's") files().writeFile("/kept/" + hostile[i], 1000 + i);
  }
  for (const std::string& path : hostile) files().writeFile("/new/" + path, 7);
  const std::string incremental = snapshot("incremental");
  sim().changeLists().setPageSize(7);
  auto array = loggedInFacade();
  LogCapture log;

  const ChangeListWalk walk = WalkAll(*array, "7", base, incremental);
  ASSERT_TRUE(walk.finished) << log.Dump();
  const std::vector<arraysim::Change> truth = sim().changeLists().difference(base, incremental);
  ASSERT_GT(truth.size(), 3 * hostile.size());
  ASSERT_EQ(walk.entries.size(), truth.size());
  for (size_t i = 0; i < truth.size(); ++i) {
    const auto& got = walk.entries[i];
    const auto& want = truth[i];
    const auto& a = want.attributes;
    EXPECT_EQ(got.filePath, want.path);
    EXPECT_EQ(std::vector<unsigned long long>({got.inode, got.size, got.crTime, got.cTime, got.mTime, got.aTime,
                                               got.owner, got.group, got.dosAttr}),
              std::vector<unsigned long long>(
                  {a.inode, a.size, a.crTime, a.cTime, a.mTime, a.aTime, a.owner, a.group, a.dosAttr}))
        << want.path;
    EXPECT_EQ(std::vector<int>({got.changeType, got.fType, got.links}),
              std::vector<int>({static_cast<int>(want.changeType), static_cast<int>(want.fileType),
                                static_cast<int>(a.links)}))
        << want.path;
  }
  // The names that the repair turns into other names or cannot read at all.
  std::vector<std::string> paths;
  for (const auto& entry : walk.entries) paths.push_back(entry.filePath);
  EXPECT_THAT(paths, testing::IsSupersetOf({"/new/tenantA/.\\./tenantB/payroll.xlsx", "/new/say \"hi\".txt",
                                            "/new/back\\slash", "/new/tab\tx", "/new/it's",
                                            "/kept/it's \"renamed\"\t"}));
  EXPECT_EQ(walk.last.sessionFailed, 0);
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

// A page whose name cannot be decoded fails with the reason, keeps the cursor and closes the
// session, as any broken page does.
TEST_F(ExactNames, UndecodableNameFailsThePage) {
  files().writeFile("/a.txt", 1);
  const std::string base = snapshot("base");
  files().writeFile("/b.txt", 1);
  const std::string incremental = snapshot("incremental");
  const std::string entry =
      R"({\"inode\":70,\"changeType\":0,\"fType\":1,\"filePath\":\"/bad\\ud800\",\"crTime\":1,\"cTime\":1,)"
      R"(\"mTime\":1,\"aTime\":1,\"owner\":0,\"group\":0,\"size\":1,\"links\":1,\"dosAttr\":32})";
  sim().faults().add(arraysim::FaultRule::On("GET", "fs_snapchangelist_result")
                         .cannedBody(R"({"data":{"changeList":"[)" + entry +
                                     R"(]","numChanges":"1","progress":"100","linkPos":"1","linkPosType":"1",)"
                                     R"("posObj":"1","posOffset":"1","posType":"1"},"error":{"code":0,"description":"0"}})"));
  auto array = loggedInFacade();
  LogCapture log;
  const ChangeListWalk walk = WalkAll(*array, "7", base, incremental);
  EXPECT_TRUE(walk.failed);
  EXPECT_EQ(walk.calls, 1);
  EXPECT_EQ(walk.last.sessionFailed, 1);
  EXPECT_EQ(walk.last.posType + "|" + walk.last.linkPos, "255|18446744073709551614");
  EXPECT_TRUE(log.HasLine(-1, "HuaweiJSONGetChangeListResult::parseResponse",
                          "Unable to read the change list with exact file names: the file name \"/bad\\ud800\" "
                          "cannot be decoded: a high surrogate without a low one behind it."))
      << log.Dump();
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::getSnapshotChangeList", "Unable to parse the JSON Response"));
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

}  // namespace
}  // namespace zrtest
