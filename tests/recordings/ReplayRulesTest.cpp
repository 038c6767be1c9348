// How a replay matches requests to the recording, and how the --strict process ends.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>

#include "ArrayCodes.h"
#include "ArraySimulator.h"
#include "ToolProcess.h"
#include "ZRLibCurlOptions.h"
#include "ZrManageHuawei.h"
#include "replay/ReplayEndpoint.h"

namespace {

const char kRecording[] = R"({"recording":1,"library":"1.0.0","anonymised":false}
{"method":"POST","resource":"/deviceManager/rest/xxxxx/sessions","request":"{\"username\":\"admin\",\"password\":\"***\"}","status":200,"answer":"{\"data\":{\"deviceid\":\"{deviceid}\",\"iBaseToken\":\"{iBaseToken}\"},\"error\":{\"code\":0,\"description\":\"0\"}}","ms":2.5}
{"method":"GET","resource":"/deviceManager/rest/{deviceid}/page?ID=1","request":"","status":200,"answer":"first","ms":1}
{"method":"GET","resource":"/deviceManager/rest/{deviceid}/page?ID=1","request":"","status":200,"answer":"second","ms":1}
{"method":"PUT","resource":"/deviceManager/rest/{deviceid}/lun","request":"{\"ID\":\"{deviceid}\"}","status":500,"answer":"put","ms":1}
)";

arraysim::Recording Fixture() {
  std::istringstream lines(kRecording);
  return arraysim::ParseRecording(lines);
}

// "DEV" in a target or body stands for the replay's device identifier.
std::string Served(std::string text, const std::string& deviceId) {
  for (auto at = text.find("DEV"); at != std::string::npos; at = text.find("DEV")) text.replace(at, 3, deviceId);
  return text;
}

struct Request {
  const char* method;
  const char* target;
  const char* body;
  const char* answer;  // nullptr: the recording does not hold it
};

struct MatchRow {
  const char* name;
  std::vector<Request> requests;
  bool inOrder;
};

TEST(Replay, MatchesMethodResourceAndBodyInRecordedOrder) {
  const std::vector<MatchRow> rows = {
      {"a repeated request takes the copies in order, then none",
       {{"GET", "/deviceManager/rest/DEV/page?ID=1", "", "first"},
        {"GET", "/deviceManager/rest/DEV/page?ID=1", "", "second"},
        {"GET", "/deviceManager/rest/DEV/page?ID=1", "", nullptr}},
       true},
      {"the body and the device take part",
       {{"PUT", "/deviceManager/rest/DEV/lun", R"({"ID":"other"})", nullptr},
        {"GET", "/deviceManager/rest/2102353GTH10L8000007/page?ID=1", "", nullptr},
        {"PUT", "/deviceManager/rest/DEV/lun", R"({"ID":"DEV"})", "put"}},
       true},
      {"out of order is answered and told",
       {{"PUT", "/deviceManager/rest/DEV/lun", R"({"ID":"DEV"})", "put"},
        {"GET", "/deviceManager/rest/DEV/page?ID=1", "", "first"}},
       false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::ostringstream diagnostics;
    int calls = 0;
    arraysim::ReplayEndpoint replay(Fixture(), diagnostics, [&] { ++calls; });
    std::size_t unmatched = 0;
    for (const auto& request : row.requests) {
      const auto target = Served(request.target, replay.deviceId());
      const auto answer = replay.handle({request.method, target, {}, Served(request.body, replay.deviceId())});
      if (request.answer != nullptr) {
        EXPECT_EQ(answer.body, request.answer) << target;
        continue;
      }
      ++unmatched;
      const auto error = nlohmann::json::parse(answer.body).at("error");
      EXPECT_EQ(error.at("code"), arraysim::codes::kResourceNotServed);
      const std::string named = request.method + std::string(" ") + Served(request.target, "{deviceid}");
      EXPECT_EQ(error.at("description"), "The recording holds no exchange for " + named + ".");
      EXPECT_NE(diagnostics.str().find("unmatched request \"" + named + "\""), std::string::npos) << diagnostics.str();
    }
    EXPECT_EQ(calls, static_cast<int>(unmatched));
    // As another process asks for it.
    const auto summary = nlohmann::json::parse(replay.handle({"GET", "/simulator/replay", {}, ""}).body);
    EXPECT_EQ(summary.at("unmatched").size(), unmatched);
    EXPECT_EQ(summary.at("inOrder"), row.inOrder);
    EXPECT_EQ(summary.at("served").get<std::size_t>() + summary.at("neverRequested").size(), 4u);
  }
}

TEST(Replay, LoginAnswersWithAFreshTokenAndDevice) {
  std::ostringstream diagnostics;
  arraysim::ReplayEndpoint replay(Fixture(), diagnostics);
  const auto answer = replay.handle(
      {"POST", "/deviceManager/rest/xxxxx/sessions", {}, R"({"username":"admin","password":"Not the recorded"})"});
  const auto data = nlohmann::json::parse(answer.body).at("data");
  EXPECT_EQ(data.at("deviceid"), replay.deviceId());
  EXPECT_EQ(data.at("iBaseToken").get<std::string>().size(), 32u);
  ASSERT_EQ(answer.headers.size(), 1u);
  EXPECT_EQ(answer.headers[0].first, "Set-Cookie");
  // A second login finds none left, and its refusal does not repeat the password.
  replay.handle({"POST", "/deviceManager/rest/xxxxx/sessions", {}, R"({"password":"Not the recorded"})"});
  EXPECT_EQ(diagnostics.str().find("Not the recorded"), std::string::npos);
  EXPECT_EQ(replay.summary().unmatched.size(), 1u);
}

bool Listening(const char* address, int port) {
  sockaddr_in where{};
  where.sin_family = AF_INET;
  where.sin_port = htons(static_cast<uint16_t>(port));
  inet_pton(AF_INET, address, &where.sin_addr);
  const int probe = socket(AF_INET, SOCK_STREAM, 0);
  const bool connected = connect(probe, reinterpret_cast<const sockaddr*>(&where), sizeof where) == 0;
  close(probe);
  return connected;
}

// The process: under --strict the first request the recording lacks is answered, then ends it.
TEST(Replay, StrictProcessEndsAtTheFirstUnmatchedRequest) {
  const auto directory = std::filesystem::temp_directory_path() / ("replay-" + std::to_string(getpid()));
  std::filesystem::create_directories(directory);
  std::ofstream((directory / "fixture.jsonl").string()) << kRecording;
  const char* address = "127.0.0.63";
  zrtest::ToolProcess replay({"--replay", (directory / "fixture.jsonl").string(), "--strict", "--address", address,
                              "--cert-dir", directory.string(), "--threads", "2"});
  // Certificates first: on a loaded machine under a sanitizer that takes seconds.
  for (int tries = 0; tries < 600 && !Listening(address, 8088); ++tries) {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  ZRLibCurlOptions tls;
  tls.caBundlePath = (directory / "ca.pem").string();
  ZRLibCurlSetOptions(tls);
  auto array = std::make_unique<ZrManageHuawei>(1);
  EXPECT_TRUE(array->createSession("admin", "Admin@storage1", address));
  // Answered with the replay's own error, not a broken connection.
  _HuaweiStoragePoolInfo pool;
  EXPECT_TRUE(array->getStoragePoolInfoForName(pool, "pool0").Is(arraysim::codes::kResourceNotServed));
  // Ended by then; should it not be, the test fails on its status instead of waiting for ever.
  kill(replay.pid(), SIGTERM);
  const auto run = replay.finish();
  array.reset();  // its logout finds the replay gone
  ZRLibCurlSetOptions(ZRLibCurlOptions());
  std::filesystem::remove_all(directory);

  EXPECT_EQ(run.status, 3) << run.err;
  EXPECT_NE(run.err.find("unmatched request \"GET /deviceManager/rest/{deviceid}/storagepool"), std::string::npos)
      << run.err;
  EXPECT_NE(run.err.find("1 of 4 recorded exchanges served, 3 never requested, 1 unmatched requests"),
            std::string::npos)
      << run.err;
}

}  // namespace
