// Change lists walked with exact file names, an embedder's choice: the whole binary runs under it,
// chosen before any test starts. The simulator's file tree holds names that the page repair would
// change or choke on; the walk has to give the array's own difference, byte for byte. (A page that
// cannot be decoded fails as any broken page does: the unit tests hold its reasons.)
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "ChangeListText.h"
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
  const std::string incremental = sim().fileSystemSnapshots().take("7", "incremental");
  sim().changeLists().setPageSize(7);
  auto array = loggedInFacade();
  LogCapture log;

  const ChangeListWalk walk = WalkAll(*array, "7", base, incremental);
  ASSERT_TRUE(walk.finished) << log.Dump();
  // The truth holds every hostile name, those that the repair changes or cannot read among them.
  const std::vector<std::string> want = EntryTexts(sim().changeLists().difference(base, incremental));
  ASSERT_GT(want.size(), 3 * hostile.size());
  EXPECT_EQ(EntryTexts(walk.entries), want);
  EXPECT_TRUE(sim().changeLists().openSessions().empty());
}

}  // namespace
}  // namespace zrtest
