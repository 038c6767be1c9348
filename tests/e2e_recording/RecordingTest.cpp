// A session with the simulator recorded to a file, plain and anonymised: one line per exchange in
// the order they went, placeholders for the device and the token, and none of the secrets or
// (anonymised) the values that identify the array and its site anywhere in the file. What the
// lines say request by request is proven by replaying the recordings of tests/recordings.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "ArrayClientTest.h"
#include "ExchangeRecorder.h"
#include "ZRLibCurlOptions.h"
#include "ZRLibCurlRecorder.h"
#include "ZrLibrarySettings.h"
#include "ZrManageHuaweiVersion.h"

namespace zrtest {
namespace {

const char kSerial[] = "2102350BVB10K5000042";
const char kHostName[] = "paris-db-01";
const char kIqn[] = "iqn.1994-05.com.redhat:paris-db-01";
const char kNoVstore[] = "-12345";

std::string readFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> out;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) out.push_back(line);
  return out;
}

class Recording : public ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    char pattern[] = "/tmp/zr-recording-XXXXXX";
    ASSERT_NE(mkdtemp(pattern), nullptr);
    directory_ = pattern;
  }
  void TearDown() override {
    ZRLibCurlSetRecorder(nullptr);
    std::filesystem::remove_all(directory_);
  }

  // Login, a read, a host with an initiator, logout.
  void runSession() {
    auto array = facade();
    ASSERT_TRUE(array->createSession());
    _HuaweiSystemInformation system;
    EXPECT_TRUE(array->getSystemInformation(system));
    _HuaweiLUNHostInfo host;
    ASSERT_FALSE(array->createHost(host, kHostName, kNoVstore, false).IsError());
    _HuaweiInitiator initiator;
    bool exists = false;
    EXPECT_FALSE(array->createInitiator(initiator, kIqn, host.id, true, exists, kNoVstore).IsError());
  }

  // The recorded session's file and what the simulator saw of it.
  struct Recorded {
    std::string text;
    std::vector<arraysim::RecordedRequest> requests;
  };
  Recorded record(const std::string& name, bool anonymised) {
    SimulatorEnvironment::Current().reset();
    sim().system().setSystemField("ID", kSerial);
    const std::string path = directory_ + "/" + name;
    {
      HuaweiTransport::ExchangeRecorder recorder(path, anonymised);
      ZRLibCurlSetRecorder(&recorder);
      runSession();
      ZRLibCurlSetRecorder(nullptr);
    }
    struct stat info {};
    EXPECT_EQ(stat(path.c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 0777, 0600u);
    return Recorded{readFile(path), requests()};
  }

  std::string directory_;
};

TEST_F(Recording, EveryExchangeInOrderWithPlaceholdersAndNoSecret) {
  for (const bool anonymised : {false, true}) {
    SCOPED_TRACE(anonymised ? "anonymised" : "plain");
    const Recorded recorded = record(anonymised ? "anonymised.jsonl" : "plain.jsonl", anonymised);
    const std::vector<std::string> all = lines(recorded.text);
    ASSERT_GE(all.size(), 2u);
    EXPECT_EQ(all[0], std::string("{\"recording\":1,\"library\":\"") + ZRMANAGEHUAWEI_VERSION +
                          "\",\"anonymised\":" + (anonymised ? "true}" : "false}"));
    ASSERT_EQ(all.size() - 1, recorded.requests.size());
    const std::string device = sim().deviceId();
    for (std::size_t i = 1; i < all.size(); ++i) {
      const nlohmann::json line = nlohmann::json::parse(all[i]);
      EXPECT_EQ(line.size(), line.contains("answerBytes") ? 7u : 6u) << all[i];
      EXPECT_EQ(line.at("method"), recorded.requests[i - 1].method) << all[i];
    }
    const nlohmann::json login = nlohmann::json::parse(all[1]);
    EXPECT_EQ(login.at("request"), std::string(R"({"username":")") + (anonymised ? "user-1" : "admin") +
                                       R"(", "password":"**************", "scope":"0" })");
    const nlohmann::json& loginAnswer = login.at("answer");
    EXPECT_EQ(loginAnswer.at("data").at("deviceid"), "{deviceid}");
    EXPECT_EQ(loginAnswer.at("data").at("iBaseToken"), "{iBaseToken}");

    ASSERT_GE(recorded.requests.size(), 2u);
    const std::string token = recorded.requests[1].header("iBaseToken");
    const std::string cookie = recorded.requests[1].header("Cookie");
    ASSERT_FALSE(token.empty());
    ASSERT_NE(cookie.find('='), std::string::npos);
    std::vector<std::string> secrets = {arraysim::SimulatorOptions::kDefaultPassword, token,
                                        cookie.substr(cookie.find('=') + 1), device};
    if (anonymised) {
      secrets.insert(secrets.end(), {kSerial, kHostName, kIqn, "admin"});
      // Relations survive: the host's stand-in names it where it was created and where it was found.
      const std::size_t first = recorded.text.find("host-1");
      ASSERT_NE(first, std::string::npos);
      EXPECT_NE(recorded.text.find("host-1", first + 1), std::string::npos);
    } else {
      EXPECT_NE(recorded.text.find(kSerial), std::string::npos);
      EXPECT_NE(recorded.text.find(kHostName), std::string::npos);
    }
    for (const std::string& secret : secrets) {
      EXPECT_EQ(recorded.text.find(secret), std::string::npos) << secret << " is in the recording";
    }
  }
}

TEST_F(Recording, SettingsTurnItOnAndAnExistingFileIsRefused) {
  const std::string existing = directory_ + "/existing.jsonl";
  std::ofstream(existing) << "kept\n";

  // The settings hold for the whole process: each case in a child of its own.
  GTEST_FLAG_SET(death_test_style, "fast");
  // It makes connections of its own, and leaves by _exit, so that nothing of the parent's (pooled
  // connections, the simulator's listening socket) is written or shut from the child.
  const auto loginWith = [this](const std::string& file) {
    ZRLibCurlOptions unshared = ZRLibCurlGetOptions();
    unshared.shareConnections = false;
    ZRLibCurlSetOptions(unshared);
    ZrLibrarySettings settings;
    settings.recordingFile = file;
    ZrLibrarySetSettings(settings);
    auto array = facade();
    const bool loggedIn = array->createSession();
    unsigned long long code = 0;
    std::string text;
    array->GetErrorInfo(code, text);
    std::cerr << text << std::endl;
    array.reset();
    _exit(loggedIn ? 0 : 1);
  };
  EXPECT_EXIT(loginWith(existing), testing::ExitedWithCode(1),
              "Unable to create the recording file \\[" + existing + "\\]: File exists");
  EXPECT_EQ(readFile(existing), "kept\n");
  EXPECT_TRUE(requests().empty());

  const std::string fresh = directory_ + "/fresh.jsonl";
  EXPECT_EXIT(loginWith(fresh), testing::ExitedWithCode(0), "");
  const std::vector<std::string> all = lines(readFile(fresh));
  ASSERT_EQ(all.size(), 3u);
  EXPECT_NE(all[1].find(R"("method":"POST","resource":"/deviceManager/rest/xxxxx/sessions")"), std::string::npos);
  EXPECT_NE(all[2].find(R"("method":"DELETE","resource":"/deviceManager/rest/{deviceid}/sessions")"),
            std::string::npos);
}

}  // namespace
}  // namespace zrtest
