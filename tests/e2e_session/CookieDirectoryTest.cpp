// The embedder's directory for cookie files. The choice holds for the whole process, so each case
// runs in a child of its own (a death test) and reports what went wrong on its standard error.
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "SessionHelpers.h"
#include "ZrLibrarySettings.h"

namespace {

class CookieDirectory : public zrtest::ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    std::string pattern = testing::TempDir() + "cookies-XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    directory_ = pattern;
  }
  void TearDown() override {
    std::error_code ignored;
    std::filesystem::remove_all(directory_, ignored);
  }

  // In the child: the setting made as given, a login, the file looked for, the facade destroyed.
  // Empty when all is as it should be.
  std::string loginWith(const std::string& given) {
    ZrLibrarySettings settings;
    settings.cookieDirectory = given;
    if (!ZrLibrarySetSettings(settings)) return "the setting was refused";
    const unsigned long long job = 7707;
    {
      auto array = loggedInFacade(job);
      if (!sessiontest::cookieFiles(job, host()).empty()) return "a cookie file in the root directory";
      std::vector<std::string> files;
      for (const auto& entry : std::filesystem::directory_iterator(directory_)) files.push_back(entry.path());
      const std::string expected = directory_ + "/HUAWEI-7707_[0-9]+_" + host() + "_0x[0-9a-f]+";
      if (files.size() != 1 || !testing::Value(files.front(), testing::MatchesRegex(expected))) {
        return "not one file named " + expected + " but " + testing::PrintToString(files);
      }
      if (sessiontest::modeOf(files.front()) != 0600) return "the file is not private";
    }
    if (!std::filesystem::is_empty(directory_)) return "the destructor left the file";
    return "";
  }

  std::string directory_;
};

void ExitWith(const std::string& failure) {
  std::fprintf(stderr, "%s\n", failure.c_str());
  std::_Exit(failure.empty() ? 0 : 1);
}

TEST_F(CookieDirectory, FilesGoToTheChosenDirectoryWithOneSlash) {
  EXPECT_EXIT(ExitWith(loginWith(directory_)), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(ExitWith(loginWith(directory_ + "/")), testing::ExitedWithCode(0), "");
}

// A directory that is not there: the login fails, as it does when the root directory is not
// writable, and no session is left open on the array.
TEST_F(CookieDirectory, AMissingDirectoryFailsTheLogin) {
  const auto missing = [this] {
    ZrLibrarySettings settings;
    settings.cookieDirectory = directory_ + "/absent";
    ZrLibrarySetSettings(settings);
    ZrManageHuawei array(7708);
    ExitWith(array.createSession("admin", arraysim::SimulatorOptions::kDefaultPassword, host())
                 ? "logged in without a cookie file"
                 : "");
  };
  EXPECT_EXIT(missing(), testing::ExitedWithCode(0), "");
  EXPECT_TRUE(sim().sessions().open().empty());
}

}  // namespace
