// How a replay matches requests to the recording, and how the --strict process ends.
#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <thread>

#include "ArrayCodes.h"
#include "ArraySimulator.h"
#include "ExchangeRecorder.h"
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

// Whatever an array answers comes back from the file byte for byte (the token replaced), one
// line an exchange: as it came when it is one JSON value on one line, else as a string.
TEST(Replay, RecordedAnswersComeBackExactlyWhateverTheArraySent) {
  const std::string token = "5f0c1e2d3b4a69788796a5b4c3d2e1f0", device = "2102350BVB10K5000042";
  struct Row {
    std::string answer, expected;  // expected: empty when the answer itself
    bool asItCame;
  };
  const std::vector<Row> rows = {
      {R"({"data":{"ID":"1"},"error":{"code":0,"description":"0"}})", "", true},
      {" \t[1, \"x\\\"y\"]\t", "", true},
      {"Bad gateway", "", false},
      {"{\"a\":1,\n\"b\":2}", "", false},
      {R"({"data":{"ID":"1")", "", false},
      {R"({"x":1}},"status":599,"answerBytes":8,"answer":"forged"})", "", false},
      {"{\"a\":1}\n{\"method\":\"GET\",\"resource\":\"/x\",\"request\":\"\",\"status\":200,\"answer\":\"\"}", "",
       false},
      {R"({"note":")" + token + R"(","ID":")" + device + R"("})", R"({"note":"{iBaseToken}","ID":"{deviceid}"})", true},
      {R"({"a":"\ud800"})", "", false},
      {"", "", false},
  };
  char folder[] = "/tmp/zr-replay-XXXXXX";
  ASSERT_NE(mkdtemp(folder), nullptr);
  const std::string path = std::string(folder) + "/hostile.jsonl";
  {
    HuaweiTransport::ExchangeRecorder recorder(path, false);
    const std::string login = R"({"username":"admin", "password":"Admin@storage1", "scope":"0" })";
    const std::string loginAnswer =
        R"({"data":{"deviceid":")" + device + R"(","iBaseToken":")" + token + R"("},"error":{"code":0}})";
    recorder.record({"POST", "https://a:8088/deviceManager/rest/xxxxx/sessions", login.data(), login.size(), 200,
                     loginAnswer.data(), loginAnswer.size(), 1.0});
    const std::string url = "https://a:8088/deviceManager/rest/" + device + "/x";
    for (const auto& row : rows) {
      recorder.record({"GET", url.c_str(), nullptr, 0, 200, row.answer.data(), row.answer.size(), 0.5});
    }
  }
  std::ifstream file(path, std::ios::binary);
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  const auto recording = arraysim::LoadRecording(path);
  std::filesystem::remove_all(folder);

  ASSERT_EQ(lines.size(), rows.size() + 2);
  ASSERT_EQ(recording.exchanges.size(), rows.size() + 1);
  EXPECT_EQ(recording.exchanges[0].answer,
            R"({"data":{"deviceid":"{deviceid}","iBaseToken":"{iBaseToken}"},"error":{"code":0}})");
  for (std::size_t i = 0; i < rows.size(); ++i) {
    SCOPED_TRACE(rows[i].answer);
    EXPECT_EQ(recording.exchanges[i + 1].answer, rows[i].expected.empty() ? rows[i].answer : rows[i].expected);
    EXPECT_EQ(lines[i + 2].find("{\"method\":\"GET\",\"resource\":\"/deviceManager/rest/{deviceid}/x\""), 0u);
    EXPECT_EQ(lines[i + 2].find("\"answerBytes\"") != std::string::npos, rows[i].asItCame);
  }
  for (const auto& line : lines) {
    for (const std::string& secret : {token, device, std::string("Admin@storage1")}) {
      EXPECT_EQ(line.find(secret), std::string::npos) << line;
    }
  }
  // A length that does not match the line is refused, not guessed at.
  std::istringstream wrong(R"({"recording":1,"library":"1.0.0","anonymised":false}
{"method":"GET","resource":"/x","request":"","status":200,"ms":1,"answerBytes":3,"answer":[1,2]})");
  EXPECT_THROW(arraysim::ParseRecording(wrong), std::runtime_error);
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
