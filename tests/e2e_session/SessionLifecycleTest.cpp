#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "SessionHelpers.h"

namespace {

using sessiontest::cookieFiles;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

class SessionLifecycle : public zrtest::ArrayClientTest {};

TEST_F(SessionLifecycle, LoginSendsTheHandBuiltBodyToTheFixedSessionsPath) {
  zrtest::LogCapture log;
  auto array = facade();
  ASSERT_TRUE(array->createSession());

  const auto login = requests().front();
  EXPECT_EQ(login.method, "POST");
  EXPECT_EQ(login.target, "/deviceManager/rest/xxxxx/sessions");
  EXPECT_EQ(login.body, "{\"username\":\"admin\", \"password\":\"Admin@storage1\", \"scope\":\"0\" }");
  EXPECT_EQ(login.header("Content-Type"), "application/json");
  EXPECT_FALSE(login.hasHeader("iBaseToken"));

  // The login answer is logged with its resource and body replaced.
  EXPECT_TRUE(log.ContainsLineWith(5, "Resource[LOGIN] Body[LOGIN INFO] Response[")) << log.Dump();
  EXPECT_TRUE(log.ContainsLineWith(0, "Initializing Huawei params."));
  EXPECT_TRUE(log.ContainsLineWith(5, "Device ID[" + sim().deviceId() + "] and vStoreId[-12345]"));
  EXPECT_EQ(array->getvStoreId(), "-12345");
}

TEST_F(SessionLifecycle, LaterRequestsCarryTokenCookieAndDevice) {
  auto array = loggedInFacade();
  _HuaweiSystemInformation info;
  ASSERT_TRUE(array->getSystemInformation(info));
  const auto sessions = sim().sessions().open();
  ASSERT_EQ(sessions.size(), 1u);
  const auto get = lastRequest();
  EXPECT_EQ(get.target, devicePath() + "system/");
  EXPECT_EQ(get.header("iBaseToken"), sessions.front().token);
  EXPECT_THAT(get.header("Cookie"), HasSubstr("session=" + sessions.front().cookie));
}

TEST_F(SessionLifecycle, VstoreOfTheAccountIsKept) {
  sim().sessions().addAccount({"tenant", "Tenant@pass1", "7"});
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  ASSERT_TRUE(array.createSession("tenant", "Tenant@pass1", host()));
  EXPECT_EQ(array.getvStoreId(), "7");
  EXPECT_TRUE(log.ContainsLineWith(5, "] and vStoreId[7]"));
}

TEST_F(SessionLifecycle, CookieFileIsPrivateNamedByJobTimeHostAndAddressAndRemovedAtTheEnd) {
  const unsigned long long job = 9001;
  std::string path;
  {
    auto array = loggedInFacade(job);
    const auto files = cookieFiles(job, host());
    ASSERT_EQ(files.size(), 1u);
    path = files.front();
    EXPECT_THAT(path, MatchesRegex("/tmpHUAWEI-9001_[0-9]+_" + host() + "_0x[0-9a-f]+"));
    EXPECT_EQ(sessiontest::modeOf(path), 0600u);
    std::ifstream jar(path);
    std::stringstream content;
    content << jar.rdbuf();
    EXPECT_THAT(content.str(), HasSubstr(sim().sessions().open().front().cookie));
  }
  EXPECT_TRUE(cookieFiles(job, host()).empty());
  // The destructor logged out.
  EXPECT_EQ(requests().back().method, "DELETE");
  EXPECT_EQ(requests().back().target, devicePath() + "sessions");
  EXPECT_TRUE(sim().sessions().open().empty());
}

TEST_F(SessionLifecycle, ALaterSessionLeavesTheEarlierCookieFileOnDisk) {
  const unsigned long long job = 9002;
  {
    auto array = loggedInFacade(job);
    ASSERT_TRUE(array->closeSession());
    sleep(1);  // the time in the name makes the second path differ
    ASSERT_TRUE(array->createSession());
    EXPECT_EQ(cookieFiles(job, host()).size(), 2u);
  }
  const auto left = cookieFiles(job, host());
  ASSERT_EQ(left.size(), 1u);  // only the path held last is removed
  std::remove(left.front().c_str());
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

TEST_F(SessionLifecycle, LoginAnswerWithoutTokenEndsTheProcessSayingWhyAndTakesTheCookieFilesAlong) {
  GTEST_FLAG_SET(death_test_style, "fast");  // the simulator of this process answers the child
  const unsigned long long job = 9004;
  auto held = loggedInFacade(job);  // another session of the process, whose file goes too
  sim().faults().add(arraysim::FaultRule::On("POST", "sessions").cannedBody(
      R"({"data":{"deviceid":"d"},"error":{"code":0,"description":"0"}})"));
  EXPECT_DEATH(
      {
        ZrManageHuawei array(job);
        array.createSession(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword,
                            host());
      },
      "has<T>\\(key\\)' failed.*\\[-1\\] jsonxx::assertion.*key \"iBaseToken\", expected a string");
  EXPECT_TRUE(cookieFiles(job, host()).empty());
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

TEST_F(SessionLifecycle, CloseSessionLogsOutOnceAndTheFlagFollows) {
  zrtest::LogCapture log;
  auto array = loggedInFacade();
  ASSERT_TRUE(array->closeSession());
  EXPECT_THAT(requestLines(), ElementsAre("DELETE sessions"));
  EXPECT_TRUE(log.ContainsLineWith(5, "Closing the file server session with token["));

  ASSERT_TRUE(array->closeSession());
  EXPECT_EQ(requests().size(), 1u);
  EXPECT_TRUE(log.HasLine(7, "ZrManageHuawei::closeSession", "File server session already closed."));

  // Closed: a first-generation operation fails in its guard and sends nothing.
  _HuaweiSystemInformation info;
  EXPECT_FALSE(array->getSystemInformation(info));
  EXPECT_EQ(requests().size(), 1u);
}

TEST_F(SessionLifecycle, OpenSessionIsNotReopened) {
  zrtest::LogCapture log;
  auto array = loggedInFacade();
  array->setCredentials("other", "other", "10.255.255.1");
  EXPECT_TRUE(array->createSession());
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(0, "ZrManageHuawei::createSession", "Huawei params already initialized."));
}

TEST_F(SessionLifecycle, NoControlHostSendsNothing) {
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  EXPECT_FALSE(array.createSession());
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::createSession", "Control host is empty. Error initializing Huawei Params"));
  // Still closed: the next createSession with a host logs in.
  EXPECT_TRUE(array.createSession(arraysim::SimulatorOptions::kDefaultUser,
                                  arraysim::SimulatorOptions::kDefaultPassword, host()));
}

TEST_F(SessionLifecycle, EmptyPasswordFailsBuildingAndClosesAgain) {
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  EXPECT_FALSE(array.createSession("admin", "", host()));
  EXPECT_TRUE(requests().empty());
  EXPECT_TRUE(log.HasLine(-1, "HuaweiJSONGetTokenInfo::buildRequest", "Unable to build the request. Invalid parameters!!"));
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::setTokenInfo", "Unable to build the request body"));
  // The logout of the clean-up is stopped by the parameter check: no token yet.
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::closeSession", "Unable to close the file server session."));
  EXPECT_TRUE(log.ContainsLineWith(-1, "Set the server params correctly. Params: [admin:password:EMPTY::" + host()));
}

TEST_F(SessionLifecycle, WrongPasswordReportsTheArraysCodeAndMasksThePassword) {
  zrtest::LogCapture log;
  ZrManageHuawei array(kJobId);
  EXPECT_FALSE(array.createSession("admin", "wrongpass", host()));
  unsigned long long code = 0;
  std::string text;
  array.GetErrorInfo(code, text);
  EXPECT_EQ(code, 1077949061ULL);
  EXPECT_EQ(text, "The user name or password is incorrect.");
  EXPECT_TRUE(log.HasLine(-1, "ZrManageHuawei::setTokenInfo", "Unable to get the base token information"));
  EXPECT_TRUE(log.ContainsLineWith(-1, "Body[{\"username\":\"admin\", \"password\":\"*********\", \"scope\":\"0\" }]"))
      << log.Dump();
  EXPECT_FALSE(log.ContainsText("wrongpass"));
}

TEST_F(SessionLifecycle, PasswordNeverReachesALogLineOrAFile) {
  // A password holding a quote and the text that closes the masked value, and a plain one.
  const std::string awkward = "Canary\"Pw\", \"scope\"-7Q";
  const std::string plain = "Second-Canary-9z";
  sim().sessions().addAccount({"awkward", awkward, ""});
  sim().sessions().addAccount({"plain", plain, ""});
  zrtest::LogCapture log;
  const unsigned long long job = 9003;
  std::string jar;
  {
    // Nothing is escaped in the login body, so this one cannot log in; the failure is logged in full.
    ZrManageHuawei refused(job);
    EXPECT_FALSE(refused.createSession("awkward", awkward, host()));
  }
  {
    // A user name holding the closing text: the masking must not stop in front of the password.
    ZrManageHuawei hostileName(job);
    EXPECT_FALSE(hostileName.createSession("u\", \"scope\"", "Third-Canary-5x", host()));
  }
  {
    ZrManageHuawei array(job);
    ASSERT_TRUE(array.createSession("plain", plain, host()));
    _HuaweiSystemInformation info;
    EXPECT_TRUE(array.getSystemInformation(info));
    sim().faults().add(arraysim::FaultRule::On("GET", "system/").arrayError(-401, "expired"));
    EXPECT_FALSE(array.getSystemInformation(info));
    // An array that echoes the password back in its description.
    sim().faults().add(arraysim::FaultRule::On("GET", "system/").arrayError(5, "bad " + plain));
    EXPECT_FALSE(array.getSystemInformation(info));
    for (const auto& file : cookieFiles(job, host())) {
      std::ifstream in(file);
      std::stringstream content;
      content << in.rdbuf();
      jar += content.str();
    }
  }
  ASSERT_GT(log.Lines().size(), 10u);
  for (const auto& line : log.Lines()) {
    for (const char* piece : {"Canary", "-7Q", "Second-Canary-9z"}) {
      EXPECT_EQ(line.text.find(piece), std::string::npos) << line.text;
    }
  }
  EXPECT_FALSE(jar.empty());
  EXPECT_EQ(jar.find("Canary"), std::string::npos);
  EXPECT_TRUE(cookieFiles(job, host()).empty());
}

}  // namespace
