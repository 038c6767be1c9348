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
    cookie_ = "/tmp/zr-transport-test-cookies";
    sessiontest::logIn(transport_, host(), arraysim::SimulatorOptions::kDefaultUser,
                       arraysim::SimulatorOptions::kDefaultPassword, cookie_);
    sim().requests().clear();
  }
  void TearDown() override { std::remove(cookie_.c_str()); }

  ResultStatus get(const std::string& resource, int opType = 9) { return transport_.get(resource, response_, opType); }
  unsigned long long lastCode() {
    unsigned long long code = 0;
    std::string text;
    transport_.getErrorInfo(code, text);
    return code;
  }
  std::string lastText() {
    unsigned long long code = 0;
    std::string text;
    transport_.getErrorInfo(code, text);
    return text;
  }

  HuaweiRestAPI transport_{77};
  std::string cookie_;
  std::string response_;
};

TEST_F(Transport, ClientSideFailuresStopBeforeSendingInTheirOrder) {
  zrtest::LogCapture log;
  const ResultStatus empty = get("");
  EXPECT_EQ(empty.GetErrorCode(), 2ULL);
  EXPECT_EQ(empty.GetErrorString(), "Empty Resource. Invalid arguement");

  const ResultStatus badType = transport_.sendReq(7, "system/", "", response_, 9);
  EXPECT_EQ(badType.GetErrorCode(), 2ULL);
  EXPECT_EQ(badType.GetErrorString(), "Invalid request type.");
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::sendReq", "Invalid request type."));

  transport_.setDeviceId("");
  const ResultStatus noDevice = get("system/");
  EXPECT_EQ(noDevice.GetErrorString(), "Incorrect server params");
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::sendReq",
                          "Incorrect server params. Unable to send the request for Type[0] Resource[system/] Body[]"));
  EXPECT_TRUE(requests().empty());
  // None of these is a classified answer: the last status stays that of the login.
  EXPECT_EQ(lastCode(), 0ULL);
}

TEST_F(Transport, UnreachableArrayAndRefusedCertificateAreSendFailures) {
  zrtest::LogCapture log;
  HuaweiRestAPI nowhere(1);
  sessiontest::logIn(nowhere, "127.0.0.99", "u", "Nowhere@pass1", cookie_);
  nowhere.setDeviceId("dev");
  nowhere.setBaseToken("token");
  ResultStatus status = nowhere.get("system/", response_, 9);
  EXPECT_EQ(status.GetErrorCode(), 2ULL);
  EXPECT_EQ(status.GetErrorString(), "Error while sending the request");
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::sendReq",
                          "Error while sending the request. URL[https://127.0.0.99:8088/deviceManager/rest/dev/system/] "
                          "Resource[system/]"));

  // Without the simulator's CA the system store refuses its certificate.
  const ZRLibCurlOptions trusted = ZRLibCurlGetOptions();
  ZRLibCurlOptions systemStore = trusted;
  systemStore.caBundlePath.clear();
  ZRLibCurlSetOptions(systemStore);
  status = transport_.post("fssnapshot", "{\"NAME\":\"x\"}", response_, 5);
  ZRLibCurlSetOptions(trusted);
  EXPECT_EQ(status.GetErrorString(), "Error while sending the request");
  EXPECT_TRUE(log.ContainsLineWith(-1, "Resource[fssnapshot] Body[{\"NAME\":\"x\"}]"));
  EXPECT_TRUE(requests().empty());
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

struct ClassificationCase {
  const char* label;
  FaultRule fault;
  int opType;
  unsigned long long code;
  const char* text;
};

inline void PrintTo(const ClassificationCase& row, std::ostream* out) { *out << row.label; }

class Classification : public Transport, public testing::WithParamInterface<ClassificationCase> {};

TEST_P(Classification, FollowsTheErrorObjectNotTheHttpStatus) {
  sim().faults().add(GetParam().fault);
  const ResultStatus status = get("system/", GetParam().opType);
  EXPECT_EQ(status.GetErrorCode(), GetParam().code);
  EXPECT_EQ(status.GetErrorString(), GetParam().text);
  EXPECT_FALSE(response_.empty());  // the array's body stays readable also on failure
}

const ClassificationCase kClassificationCases[] = {
    {"Status500WithCodeZero", FaultRule::On("GET", "system/").httpStatus(500), 9, 0, ""},
    {"Status200WithArrayCode", FaultRule::On("GET", "system/").arrayError(1077948996, "not found"), 9, 1077948996,
     "not found"},
    {"EmptyObject", FaultRule::On("GET", "system/").emptyObject(), 9, 2, "Error when parsing the JSON response"},
    {"HtmlPage", FaultRule::On("GET", "system/").htmlPage(502), 9, 2, "Error when parsing the JSON response"},
    {"NegativeCodeWraps", FaultRule::On("GET", "system/").arrayError(-401, "unauthorized"), 9, 18446744073709551215ULL,
     "unauthorized"},
    {"AbsentSnapshotOnOtherOperations", FaultRule::On("GET", "system/").arrayError(1073754118, "absent"), 10,
     1073754118, "absent"},
    {"AbsentSnapshotOnDeletion", FaultRule::On("GET", "system/").arrayError(1073754118, "absent"), 6, 0, ""},
    {"PercentInDescription", FaultRule::On("GET", "system/").arrayError(5, "disk 100%% full, %s left"), 9, 5,
     "disk 100% full,  left"},
};

INSTANTIATE_TEST_SUITE_P(Rows, Classification, testing::ValuesIn(kClassificationCases),
                         [](const testing::TestParamInfo<ClassificationCase>& info) { return info.param.label; });

TEST_F(Transport, ClassificationUpdatesTheLastStatusButEmptyAnswersDoNot) {
  zrtest::LogCapture log;
  sim().faults().add(FaultRule::On("GET", "system/").emptyObject());
  EXPECT_TRUE(!get("system/"));
  EXPECT_EQ(lastCode(), 2ULL);
  EXPECT_EQ(lastText(), "Error when parsing the JSON response");
  EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::isError", "Error when parsing the JSON response."));

  sim().faults().add(FaultRule::On("GET", "system/").emptyBody());
  const ResultStatus empty = get("system/");
  EXPECT_FALSE(!empty);
  EXPECT_TRUE(response_.empty());
  EXPECT_EQ(lastCode(), 2ULL);
  EXPECT_TRUE(log.HasLine(0, "HuaweiRestAPI::isError", "Empty response."));
  EXPECT_TRUE(log.ContainsLineWith(-1, "Empty response received for request. Type[0] URL["));

  // A good answer is code 0 with empty text; the last status keeps the array's text "0".
  EXPECT_FALSE(!get("system/"));
  EXPECT_EQ(lastCode(), 0ULL);
  EXPECT_EQ(lastText(), "0");
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

  EXPECT_FALSE(!transport_.del("fssnapshot/9", "", response_, 6));
  EXPECT_TRUE(log.HasLine(0, "HuaweiRestAPI::isError",
                          "Tried to delete a snapshot that does not exist. Considering the operation as success."));
}

TEST_F(Transport, HeadersOfLaterRequestsAreTokenCookieAndContentType) {
  zrtest::LogCapture log;
  transport_.put("system/", "{\"NAME\":\"n\"}", response_, 9);
  const auto put = lastRequest();
  EXPECT_EQ(put.method, "PUT");
  EXPECT_EQ(put.body, "{\"NAME\":\"n\"}");
  EXPECT_EQ(put.header("iBaseToken"), transport_.getBaseToken());
  EXPECT_EQ(put.header("Content-Type"), "application/json");
  EXPECT_THAT(put.header("Cookie"), testing::HasSubstr("session="));
  EXPECT_TRUE(log.HasLine(4, "HuaweiRestAPI::setCommonCurlHeaders", "Successfully set the common curl headers."));
  EXPECT_TRUE(log.HasLine(5, "HuaweiRestAPI::Init", "Initialized curl library successfully."));
}

TEST_F(Transport, ExpiredSessionIsReportedNotRepaired) {
  sim().sessions().closeAll();
  const ResultStatus status = get("system/");
  EXPECT_EQ(status.GetErrorCode(), 18446744073709551215ULL);
  EXPECT_EQ(requests().size(), 1u);  // nothing logs in again
}

TEST_F(Transport, AnswerWithoutErrorObjectEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "fast");  // the simulator of this process answers the child
  sim().faults().add(FaultRule::On("GET", "system/").withoutErrorObject().always());
  EXPECT_DEATH(get("system/"), "\\[JSONXX\\] expression 'has<T>\\(key\\)' failed");
}

}  // namespace
