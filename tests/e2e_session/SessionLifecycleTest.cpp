#include <sys/stat.h>

#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "SessionHelpers.h"

namespace {

using sessiontest::cookieFiles;
using testing::HasSubstr;

std::string Contents(const std::string& path) {
  std::ifstream in(path);
  std::stringstream content;
  content << in.rdbuf();
  return content.str();
}

class SessionLifecycle : public zrtest::ArrayClientTest {};

TEST_F(SessionLifecycle, LoginSendsTheHandBuiltBodyAndKeepsTheAccountsVStore) {
  zrtest::LogCapture log;
  auto array = facade();
  ASSERT_TRUE(array->createSession());
  EXPECT_EQ(requests().front().body, R"({"username":"admin", "password":"Admin@storage1", "scope":"0" })");
  EXPECT_TRUE(log.ContainsLineWith(5, "Resource[LOGIN] Body[LOGIN INFO] Response[")) << log.Dump();
  EXPECT_EQ(array->getvStoreId(), "-12345");

  sim().sessions().addAccount({"tenant", "Tenant@pass1", "7"});
  ZrManageHuawei tenant(kJobId);
  ASSERT_TRUE(tenant.createSession("tenant", "Tenant@pass1", host()));
  EXPECT_EQ(tenant.getvStoreId(), "7");
}

// The file is named by job, time, host and address, private, and removed by the destructor; a
// closed session leaves it, and the destructor removes only the path it holds last.
TEST_F(SessionLifecycle, CookieFileLivesFromLoginToDestruction) {
  const unsigned long long job = 9001;
  std::string earlier;
  {
    auto array = loggedInFacade(job);
    const auto files = cookieFiles(job, host());
    ASSERT_EQ(files.size(), 1u);
    EXPECT_THAT(files.front(), testing::MatchesRegex("/tmpHUAWEI-9001_[0-9]+_" + host() + "_0x[0-9a-f]+"));
    EXPECT_EQ(sessiontest::modeOf(files.front()), 0600u);
    EXPECT_THAT(Contents(files.front()), HasSubstr(sim().sessions().open().front().cookie));
    ASSERT_TRUE(array->closeSession());
    earlier = files.front() + "_earlier";
    ASSERT_EQ(std::rename(files.front().c_str(), earlier.c_str()), 0);
    ASSERT_TRUE(array->createSession());
  }
  EXPECT_EQ(cookieFiles(job, host()), std::vector<std::string>{earlier});
  std::remove(earlier.c_str());
  EXPECT_EQ(requests().back().method + " " + requests().back().resource, "DELETE sessions");  // the destructor's
  EXPECT_TRUE(sim().sessions().open().empty());
}

TEST_F(SessionLifecycle, OpenAndCloseAreIdempotent) {
  zrtest::LogCapture log;
  auto array = loggedInFacade();
  array->setCredentials("other", "other", "10.255.255.1");
  EXPECT_TRUE(array->createSession());
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::createSession", "Huawei params already initialized."));
  ASSERT_TRUE(array->closeSession());
  ASSERT_TRUE(array->closeSession());
  EXPECT_EQ(requestLines(), std::vector<std::string>{"DELETE sessions"});
}

TEST_F(SessionLifecycle, LoginsThatCannotStartSendNothing) {
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  EXPECT_FALSE(array.createSession());
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::createSession", "Control host is empty. Error initializing Huawei Params"));
  EXPECT_FALSE(array.createSession("admin", "", host()));
  EXPECT_TRUE(log.HasLine(-1, "HuaweiJSONGetTokenInfo::buildRequest", "Unable to build the request. Invalid parameters!!"));
  // The logout of the clean-up is stopped by the parameter check: no token yet.
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::closeSession", "Unable to close the file server session."));
  EXPECT_TRUE(log.ContainsLineWith(-1, "Set the server params correctly. Params: [admin:password:EMPTY::" + host()));
  EXPECT_TRUE(requests().empty());
  // Still closed: the next createSession logs in.
  EXPECT_TRUE(array.createSession(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword,
                                  host()));
}

TEST_F(SessionLifecycle, CookieFileIsKeptWhateverFileSystemTheWorkingDirectoryIsOn) {
  char scratch[] = "/dev/shm/zr-cwd-XXXXXX";
  struct stat root {}, shm {};
  if (mkdtemp(scratch) == nullptr || stat("/", &root) != 0 || stat(scratch, &shm) != 0 || root.st_dev == shm.st_dev) {
    GTEST_SKIP() << "no directory on another file system than /";
  }
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(scratch);
  {
    auto array = loggedInFacade();
    _HuaweiSystemInformation info;
    EXPECT_TRUE(array->getSystemInformation(info));
    EXPECT_TRUE(array->closeSession());
  }
  std::filesystem::current_path(before);
  EXPECT_TRUE(std::filesystem::is_empty(scratch)) << "nothing is written to the working directory";
  std::filesystem::remove_all(scratch);
  EXPECT_TRUE(sim().sessions().open().empty());
}

TEST_F(SessionLifecycle, FacadesOnManyThreadsKeepTheirOwnSessions) {
  std::vector<std::thread> threads;
  std::atomic<int> done{0};
  for (unsigned long long job = 9100; job < 9104; ++job) {
    threads.emplace_back([&, job] {
      ZrManageHuawei array(job);
      _HuaweiSystemInformation info;
      if (array.createSession(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword,
                              host()) &&
          array.getSystemInformation(info) && array.getSystemInformation(info) && array.closeSession()) {
        ++done;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(done, 4);
  EXPECT_TRUE(sim().sessions().open().empty());
}

TEST_F(SessionLifecycle, PasswordNeverReachesALogLineOrAFile) {
  // A password holding a quote and the text that closes the masked value, and a plain one.
  const std::string awkward = "Canary\"Pw\", \"scope\"-7Q";
  sim().sessions().addAccount({"awkward", awkward, ""});
  sim().sessions().addAccount({"plain", "Second-Canary-9z", ""});
  zrtest::LogCapture log;
  const unsigned long long job = 9003;
  std::string jar;
  {
    // The login body escapes the password, so this one logs in; its body is logged masked.
    EXPECT_TRUE(ZrManageHuawei(job).createSession("awkward", awkward, host()));
    // A user name holding the closing text: the masking must not stop in front of the password.
    EXPECT_FALSE(ZrManageHuawei(job).createSession("u\", \"scope\"", "Third-Canary-5x", host()));
    ZrManageHuawei array(job);
    ASSERT_TRUE(array.createSession("plain", "Second-Canary-9z", host()));
    _HuaweiSystemInformation info;
    sim().faults().add(arraysim::FaultRule::On("GET", "system/").arrayError(-401, "expired"));
    EXPECT_FALSE(array.getSystemInformation(info));
    // An array that echoes the password back in its description.
    sim().faults().add(arraysim::FaultRule::On("GET", "system/").arrayError(5, "bad Second-Canary-9z"));
    EXPECT_FALSE(array.getSystemInformation(info));
    for (const auto& file : cookieFiles(job, host())) jar += Contents(file);
  }
  ASSERT_GT(log.Lines().size(), 10u);
  for (const auto& line : log.Lines()) {
    for (const char* piece : {"Canary", "-7Q"}) EXPECT_EQ(line.text.find(piece), std::string::npos) << line.text;
  }
  EXPECT_FALSE(jar.empty());
  EXPECT_EQ(jar.find("Canary"), std::string::npos);
}

}  // namespace
