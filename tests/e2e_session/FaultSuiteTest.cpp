// A hostile array, one fault a row: each login fails with its cause in a level -1 line, and
// leaves neither a cookie file nor a connection behind.
#include <cstdio>
#include <filesystem>

#include <gtest/gtest.h>

#include "HostileServer.h"
#include "LogCapture.h"
#include "SessionHelpers.h"
#include "ZRLibCurlOptions.h"
#include "ZrManageHuawei.h"

namespace {

using faulttest::Fault;

const char kArray[] = "127.0.0.12";
const char kElsewhere[] = "127.0.0.13";
const char kPassword[] = "Hostile-Canary-3k";
constexpr unsigned long long kJob = 6100;

struct FaultRow {
  const char* name;
  Fault fault;
  long lowSpeedSeconds;  // the client's patience with a slow or silent array
  long totalTimeoutMs;
  const char* result;    // text of GetErrorInfo
  const char* errorLine;  // in a level -1 line
};

void PrintTo(const FaultRow& row, std::ostream* out) { *out << row.name; }

std::string Answer(const std::string& status, const std::string& headers, const std::string& body) {
  return "HTTP/1.1 " + status + "\r\n" + headers + "\r\n" + body;
}
Fault Sends(const std::string& head) { return Fault{head, "", false, true}; }
Fault Cuts(const std::string& head) { return Fault{head, "", false, false}; }

// Certificates for the array's address from a trusted CA (the refusal of other certificates is
// the client's trust test's); the hostile array and a redirect target.
struct Stage {
  Stage()
      : directory(std::filesystem::temp_directory_path() / ("zr-faults-" + std::to_string(getpid()))),
        certificates(arraysim::MakeCertificates(directory + "/trusted", kArray)),
        array(kArray, certificates),
        elsewhere(kElsewhere, certificates) {}
  ~Stage() { std::filesystem::remove_all(directory); }

  const std::string directory;
  const arraysim::CertificateFiles certificates;
  faulttest::HostileServer array;
  faulttest::HostileServer elsewhere;
};

class HostileArray : public testing::TestWithParam<FaultRow> {
 protected:
  static void SetUpTestSuite() { stage_ = new Stage; }
  static void TearDownTestSuite() { delete stage_; }
  void TearDown() override { ZRLibCurlSetOptions(ZRLibCurlOptions()); }
  static Stage* stage_;
};

Stage* HostileArray::stage_ = nullptr;

TEST_P(HostileArray, LoginFailsWithItsCauseAndLeavesNothingBehind) {
  const FaultRow& row = GetParam();
  stage_->array.Answer(row.fault, stage_->certificates);
  ZRLibCurlOptions options;
  options.caBundlePath = stage_->certificates.caCertPath;
  options.lowSpeedBytesPerSecond = 100;
  options.lowSpeedSeconds = row.lowSpeedSeconds;
  options.totalTimeoutMs = row.totalTimeoutMs;
  ZRLibCurlSetOptions(options);
  const int leftOpenBefore = stage_->array.LeftOpen();
  zrtest::LogCapture log;

  {
    ZrManageHuawei array(kJob);
    EXPECT_FALSE(array.createSession("admin", kPassword, kArray));
    unsigned long long code = 0;
    std::string text;
    array.GetErrorInfo(code, text);
    EXPECT_EQ(text, row.result);
  }
  stage_->array.WaitIdle();

  EXPECT_TRUE(log.ContainsLineWith(-1, row.errorLine)) << log.Dump();
  EXPECT_FALSE(log.ContainsText(kPassword));
  EXPECT_TRUE(sessiontest::cookieFiles(kJob, kArray).empty());
  EXPECT_EQ(stage_->array.LeftOpen(), leftOpenBefore);
  EXPECT_EQ(stage_->elsewhere.Connections(), 0) << "nothing may reach the target of a redirect";
}

const std::string kJson = "Content-Type: application/json\r\n";
const std::string kClose = "Connection: close\r\n";
const char kSendFailed[] = "Error while sending the request";
const char kUnparsable[] = "Error when parsing the JSON response";

INSTANTIATE_TEST_SUITE_P(
    Faults, HostileArray,
    testing::Values(
        FaultRow{"Redirect",
                 Sends(Answer("307 Temporary Redirect",
                               "Location: https://" + std::string(kElsewhere) + ":8088/deviceManager/rest/xxxxx/sessions\r\n" +
                                   "Content-Length: 0\r\n" + kClose,
                               "")),
                 30, 10000, kSendFailed, "answered with redirect 307 to host 127.0.0.13"},
        FaultRow{"TruncatedWithLength",
                 Cuts(Answer("200 OK", kJson + "Content-Length: 200\r\n", R"({"data":{"deviceid":"d)")),
                 30, 10000, kSendFailed, "Transferred a partial file"},
        FaultRow{"TruncatedWithoutLength", Sends(Answer("200 OK", kJson + kClose, R"({"error":{"co)")), 30,
                 10000, kUnparsable, "Error when parsing the JSON response."},
        FaultRow{"HtmlStatus500",
                 Sends(Answer("500 Internal Server Error", "Content-Type: text/html\r\nContent-Length: 22\r\n" + kClose,
                               "<html>Sorry</html>\r\n\r\n")),
                 30, 10000, kUnparsable, "HTTP Error Code[500]"},
        FaultRow{"Trickle", {Answer("200 OK", kJson + "Content-Length: 100\r\n", ""), std::string(100, ' '), false, true},
                 1, 10000, kSendFailed, "Operation too slow"},
        FaultRow{"SilentAfterHandshake", {"", "", true, true}, 30, 1000, kSendFailed, "timed out"}),
    [](const testing::TestParamInfo<FaultRow>& info) { return std::string(info.param.name); });

}  // namespace
