// Change lists walked with exact file names, an embedder's choice: the whole binary runs under it,
// chosen before any test starts. The simulator's file tree holds names that the page repair would
// change or choke on; the walk has to give the array's own difference, byte for byte. (A page that
// cannot be decoded fails as any broken page does: the unit tests hold its reasons.)
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "ChangeListWalk.h"
#include "LogCapture.h"
#include "Seed.h"
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
  arraysim::LiveFiles files() { return sim().files("7"); }
};

// Every field of an entry, the way the array and the walk each tell it.
std::string Fields(int changeType, int fType, const std::string& path, std::vector<unsigned long long> numbers) {
  std::string text = std::to_string(changeType) + " " + std::to_string(fType) + " " + path;
  for (const unsigned long long number : numbers) text += " " + std::to_string(number);
  return text;
}

TEST_F(ExactNames, HostileTreeWalksToTheTrueDifference) {
  ASSERT_TRUE(kExactNamesChosen);
  sim().fileSystems().create("fs1", FileSystemOf("7"));
  const std::vector<std::string> hostile = arraysim::HostilePaths();
  const std::string base = arraysim::ApplyFileSteps(sim().model(), "7", nlohmann::json::parse(R"([
      {"hostile": "/kept", "size": 1}, {"hostile": "/gone"}, {"snapshot": "base"}])")).at(0);
  files().remove("/gone").rename("/kept/it's", "/kept/it's \"renamed\"\t");
  for (size_t i = 0; i < hostile.size(); i += 2) {
    if (hostile[i] != "it's") files().writeFile("/kept/" + hostile[i], 1000 + i);
  }
  for (const std::string& path : hostile) files().writeFile("/new/" + path, 7);
  const std::string incremental = sim().snapshots().take("7", "incremental");
  sim().changeLists().setPageSize(7);
  auto array = loggedInFacade();
  LogCapture log;

  const ChangeListWalk walk = WalkAll(*array, "7", base, incremental);
  ASSERT_TRUE(walk.finished) << log.Dump();
  std::vector<std::string> got, want;
  for (const auto& e : walk.entries) {
    const auto links = static_cast<unsigned long long>(e.links);
    got.push_back(Fields(e.changeType, e.fType, e.filePath,
                         {e.inode, e.size, e.crTime, e.cTime, e.mTime, e.aTime, e.owner, e.group, e.dosAttr, links}));
  }
  for (const auto& c : sim().changeLists().difference(base, incremental)) {
    const auto& a = c.attributes;
    want.push_back(Fields(static_cast<int>(c.changeType), static_cast<int>(c.fileType), c.path,
                          {a.inode, a.size, a.crTime, a.cTime, a.mTime, a.aTime, a.owner, a.group, a.dosAttr,
                           a.links}));
  }
  // The truth holds every hostile name, those that the repair changes or cannot read among them.
  ASSERT_GT(want.size(), 3 * hostile.size());
  EXPECT_EQ(got, want);
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

}  // namespace
}  // namespace zrtest
