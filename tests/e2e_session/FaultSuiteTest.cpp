// A hostile array, one fault a row: each login fails with its cause in a level -1 line, and
// leaves neither a cookie file nor a connection behind.
#include <cstdio>
#include <filesystem>
#include <fstream>

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

enum class Served { Trusted, ForAnotherHost, ByUnknownCa };

struct FaultRow {
  const char* name;
  Fault fault;
  Served served;
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

class HostileArray : public testing::TestWithParam<FaultRow> {
 protected:
  static void SetUpTestSuite() {
    directory_ = new std::string(std::filesystem::temp_directory_path() / ("zr-faults-" + std::to_string(getpid())));
    certificates_[0] = arraysim::MakeCertificates(*directory_ + "/trusted", kArray);
    certificates_[1] = arraysim::MakeCertificates(*directory_ + "/foreign", "10.11.12.13");
    certificates_[2] = arraysim::MakeCertificates(*directory_ + "/unknown", kArray);
    // Both CAs are trusted: a certificate for another host must be refused by its name.
    std::ofstream(*directory_ + "/bundle.pem") << std::ifstream(certificates_[0].caCertPath).rdbuf()
                                               << std::ifstream(certificates_[1].caCertPath).rdbuf();
    array_ = new faulttest::HostileServer(kArray, certificates_[0]);
    elsewhere_ = new faulttest::HostileServer(kElsewhere, certificates_[0]);
  }
  static void TearDownTestSuite() {
    ZRLibCurlSetOptions(ZRLibCurlOptions());
    delete array_;
    delete elsewhere_;
    std::filesystem::remove_all(*directory_);
    delete directory_;
  }
  void TearDown() override { ZRLibCurlSetOptions(ZRLibCurlOptions()); }

  static std::string* directory_;
  static arraysim::CertificateFiles certificates_[3];
  static faulttest::HostileServer* array_;
  static faulttest::HostileServer* elsewhere_;
};

std::string* HostileArray::directory_ = nullptr;
arraysim::CertificateFiles HostileArray::certificates_[3];
faulttest::HostileServer* HostileArray::array_ = nullptr;
faulttest::HostileServer* HostileArray::elsewhere_ = nullptr;

TEST_P(HostileArray, LoginFailsWithItsCauseAndLeavesNothingBehind) {
  const FaultRow& row = GetParam();
  array_->Answer(row.fault, certificates_[static_cast<int>(row.served)]);
  ZRLibCurlOptions options;
  options.caBundlePath = *directory_ + "/bundle.pem";
  options.lowSpeedBytesPerSecond = 100;
  options.lowSpeedSeconds = row.lowSpeedSeconds;
  options.totalTimeoutMs = row.totalTimeoutMs;
  ZRLibCurlSetOptions(options);
  const int leftOpenBefore = array_->LeftOpen();
  zrtest::LogCapture log;

  {
    ZrManageHuawei array(kJob);
    EXPECT_FALSE(array.createSession("admin", kPassword, kArray));
    unsigned long long code = 0;
    std::string text;
    array.GetErrorInfo(code, text);
    EXPECT_EQ(text, row.result);
  }
  array_->WaitIdle();

  EXPECT_TRUE(log.ContainsLineWith(-1, row.errorLine)) << log.Dump();
  EXPECT_FALSE(log.ContainsText(kPassword));
  EXPECT_TRUE(sessiontest::cookieFiles(kJob, kArray).empty());
  EXPECT_EQ(array_->LeftOpen(), leftOpenBefore);
  EXPECT_EQ(elsewhere_->Connections(), 0) << "nothing may reach the target of a redirect";
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
                 Served::Trusted, 30, 10000, kSendFailed, "answered with redirect 307 to host 127.0.0.13"},
        FaultRow{"TruncatedWithLength",
                 Cuts(Answer("200 OK", kJson + "Content-Length: 200\r\n", R"({"data":{"deviceid":"d)")),
                 Served::Trusted, 30, 10000, kSendFailed, "Transferred a partial file"},
        FaultRow{"TruncatedWithoutLength", Sends(Answer("200 OK", kJson + kClose, R"({"error":{"co)")), Served::Trusted, 30,
                 10000, kUnparsable, "Error when parsing the JSON response."},
        FaultRow{"ChunkedCut",
                 Cuts(Answer("200 OK", kJson + "Transfer-Encoding: chunked\r\n", "40\r\n{\"error\":")),
                 Served::Trusted, 30, 10000, kSendFailed, "Transferred a partial file"},
        FaultRow{"HtmlStatus500",
                 Sends(Answer("500 Internal Server Error", "Content-Type: text/html\r\nContent-Length: 22\r\n" + kClose,
                               "<html>Sorry</html>\r\n\r\n")),
                 Served::Trusted, 30, 10000, kUnparsable, "HTTP Error Code[500]"},
        FaultRow{"Trickle", {Answer("200 OK", kJson + "Content-Length: 100\r\n", ""), std::string(100, ' '), false, true},
                 Served::Trusted, 1, 10000, kSendFailed, "Operation too slow"},
        FaultRow{"SilentAfterHandshake", {"", "", true, true}, Served::Trusted, 30, 1000, kSendFailed, "timed out"},
        FaultRow{"CertificateOfUnknownCa", {}, Served::ByUnknownCa, 30, 10000, kSendFailed,
                 "SSL certificate problem: unable to get local issuer certificate"},
        FaultRow{"CertificateForAnotherHost", {}, Served::ForAnotherHost, 30, 10000, kSendFailed,
                 "no alternative certificate subject name matches target host name '127.0.0.12'"}),
    [](const testing::TestParamInfo<FaultRow>& info) { return std::string(info.param.name); });

}  // namespace
