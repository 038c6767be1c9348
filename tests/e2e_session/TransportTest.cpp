#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "SessionHelpers.h"
#include "ZRLibCurlOptions.h"

namespace {

using arraysim::FaultRule;
using HuaweiApi::ResultStatus;

class Transport : public zrtest::ArrayClientTest {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    sessiontest::logIn(transport_, host(), arraysim::SimulatorOptions::kDefaultUser,
                       arraysim::SimulatorOptions::kDefaultPassword, cookie_);
    sim().requests().clear();
  }
  void TearDown() override { std::remove(cookie_.c_str()); }

  ResultStatus get(const std::string& resource, int opType = 9) { return transport_.get(resource, response_, opType); }
  // The transport's last status as "code text".
  std::string last() {
    unsigned long long code = 0;
    std::string text;
    transport_.getErrorInfo(code, text);
    return std::to_string(code) + " " + text;
  }

  HuaweiRestAPI transport_{77};
  std::string cookie_ = "/tmp/zr-transport-test-cookies";
  std::string response_;
};

std::string Show(const ResultStatus& status) { return std::to_string(status.GetErrorCode()) + " " + status.GetErrorString(); }

// None of these is a classified answer: the last status stays that of the login.
TEST_F(Transport, ClientSideFailuresStopBeforeSending) {
  zrtest::LogCapture log;
  EXPECT_EQ(Show(get("")), "2 Empty Resource. Invalid arguement");
  EXPECT_EQ(Show(transport_.sendReq(7, "system/", "", response_, 9)), "2 Invalid request type.");
  transport_.setDeviceId("");
  EXPECT_EQ(Show(get("system/")), "2 Incorrect server params");
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::sendReq",
                          "Incorrect server params. Unable to send the request for Type[0] Resource[system/] Body[]"));
  EXPECT_TRUE(requests().empty());
  EXPECT_EQ(last(), "0 0");
}

TEST_F(Transport, UnreachableArrayIsASendFailure) {
  zrtest::LogCapture log;
  HuaweiRestAPI nowhere(1);
  sessiontest::logIn(nowhere, "127.0.0.99", "u", "Nowhere@pass1", cookie_);
  nowhere.setDeviceId("dev");
  nowhere.setBaseToken("token");
  EXPECT_EQ(Show(nowhere.get("system/", response_, 9)), "2 Error while sending the request");
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::sendReq",
                          "Error while sending the request. URL[https://127.0.0.99:8088/deviceManager/rest/dev/system/] "
                          "Resource[system/]"));
}

TEST_F(Transport, AnswerLongerThanTheBoundFailsTheSend) {
  zrtest::LogCapture log;
  const ZRLibCurlOptions usual = ZRLibCurlGetOptions();
  ZRLibCurlOptions small = usual;
  small.maxResponseBytes = 64;  // the system record is a few hundred bytes
  ZRLibCurlSetOptions(small);
  const ResultStatus status = get("system/");
  ZRLibCurlSetOptions(usual);
  EXPECT_EQ(status.GetErrorString(), "Error while sending the request");
  EXPECT_TRUE(response_.empty());
  EXPECT_TRUE(log.ContainsLineWith(-1, "/system/: the answer is longer than the limit of 64 bytes; it was not read."))
      << log.Dump();
  EXPECT_EQ(get("system/").GetErrorCode(), 0ULL) << "the usual bound takes it";
}

TEST_F(Transport, LoginWhoseCookieFileCannotBeWrittenSaysWhereAndWhyOnce) {
  zrtest::LogCapture log;
  HuaweiRestAPI transport(1);
  sessiontest::logIn(transport, host(), "admin", "Admin@storage1", "/zr-no-such-directory/jar");
  int named = 0;
  for (const auto& line : log.Lines()) {
    named += line.level == -1 && line.text.find("/zr-no-such-directory/jar: No such file or directory") != std::string::npos;
  }
  EXPECT_EQ(named, 1) << log.Dump();
  EXPECT_TRUE(requests().empty()) << "no password goes out for a session that could not be kept";
}

// The error object decides, not the HTTP status; the body stays readable also on failure. Each
// answer is one request (an expired session is not repaired) and becomes the last status.
TEST_F(Transport, ClassificationFollowsTheErrorObject) {
  const auto on = [] { return FaultRule::On("GET", "system/"); };
  const auto code = [](const char* value) {
    return R"({"data":{},"error":{"code":)" + std::string(value) + R"(,"description":"0"}})";
  };
  const char kUntrusted[] = "2 Untrusted error code in the JSON response";
  const struct {
    FaultRule fault;
    int opType;
    const char* status;
    const char* last = nullptr;  // the last status, when it is not the answer's
  } cases[] = {
      {on().httpStatus(500), 9, "0 ", "0 0"},  // a good answer keeps the array's text "0"
      {on().arrayError(1077948996, "not found"), 9, "1077948996 not found"},
      {on().emptyObject(), 9, "2 Error when parsing the JSON response"},
      {on().htmlPage(502), 9, "2 Error when parsing the JSON response"},
      {on().arrayError(-401, "unauthorized"), 9, "18446744073709551215 unauthorized"},
      {on().arrayError(1073754118, "absent"), 10, "1073754118 absent"},
      {on().arrayError(1073754118, "absent"), 6, "0 "},
      {on().arrayError(5, "disk 100%% full, %s left"), 9, "5 disk 100% full, %s left"},
      // A code that is no integer of 64 bits could wrap to 0 and pass a refusal for a success (the
      // verdict on each kind of code is the readers' unit test's).
      {on().cannedBody(code("18446744073709551616")), 9, kUntrusted},
      {on().cannedBody(code("1e400")), 9, kUntrusted},
  };
  zrtest::LogCapture log;
  for (const auto& c : cases) {
    sim().faults().add(c.fault);
    sim().requests().clear();
    EXPECT_EQ(Show(get("system/", c.opType)), c.status);
    EXPECT_FALSE(response_.empty()) << c.status;
    EXPECT_EQ(requests().size(), 1u) << c.status;
    EXPECT_EQ(last(), c.last ? c.last : c.status);
  }
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::isError", "The error code of the JSON response is not an integer of 64 bits."));
  // An empty answer is no classified one: the last status stays.
  sim().faults().add(on().emptyBody());
  EXPECT_FALSE(!get("system/"));
  EXPECT_TRUE(response_.empty());
  EXPECT_EQ(last(), kUntrusted);
  EXPECT_TRUE(log.HasLine(0, "HuaweiRestAPI::isError", "Empty response."));
  EXPECT_TRUE(log.ContainsLineWith(-1, "Empty response received for request. Type[0] URL["));
}

TEST_F(Transport, FailureLineCarriesHttpAndArrayCodes) {
  zrtest::LogCapture log;
  sim().faults().add(FaultRule::On("DELETE", "fssnapshot").arrayError(1073754118, "gone", 404));
  EXPECT_TRUE(!transport_.del("fssnapshot/9", "", response_, 10));
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::sendReq",
                          "The HTTP request for Resource[fssnapshot/9] failed. URL[https://" + host() + ":8088" +
                              devicePath() + "fssnapshot/9], Body[], HTTP Error Code[404], API Error Code[1073754118], "
                              "API Error Message [gone]"))
      << log.Dump();
}

TEST_F(Transport, AnswerWithoutErrorObjectEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "fast");  // the simulator of this process answers the child
  sim().faults().add(FaultRule::On("GET", "system/").withoutErrorObject().always());
  EXPECT_DEATH(get("system/"), "\\[JSONXX\\] expression 'has<T>\\(key\\)' failed");
}

}  // namespace
