// Answers that cannot be trusted end their operation cleanly: a login whose device identifier or
// token would change the requests built from them, and an answer whose tree would outgrow the
// memory bound of its size.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "SessionHelpers.h"

namespace {

using arraysim::FaultRule;

class UntrustedAnswers : public zrtest::ArrayClientTest {};

struct LoginRow {
  const char* deviceId;  // as JSON text between the quotes
  const char* token;
  const char* refusal;  // in a level -1 line; null: the login holds
};

const char kBadDevice[] = "The deviceid of the login answer holds characters other than letters, digits";
const char kBadToken[] = "The iBaseToken of the login answer holds characters other than visible ASCII";

TEST_F(UntrustedAnswers, LoginAnswerThatWouldReshapeRequestsFailsTheLoginBeforeAnyUse) {
  const LoginRow rows[] = {
      {"DEV/../../../other?x=", "token", kBadDevice},
      {"dev\\r\\nHost: elsewhere", "token", kBadDevice},
      {"dev", "tok\\r\\nX-Injected: 1", kBadToken},
      {"2102353GTH10L8000007_a-1", "Az09!#$%&'()*+,-./:;<=>?@[]^_`{|}~", nullptr},
  };
  for (const LoginRow& row : rows) {
    SCOPED_TRACE(std::string(row.deviceId) + " / " + row.token);
    sim().requests().clear();
    sim().faults().add(FaultRule::On("POST", "sessions").cannedBody(std::string(R"({"data":{"deviceid":")") +
                                                                    row.deviceId + R"(","iBaseToken":")" + row.token +
                                                                    R"("},"error":{"code":0,"description":"0"}})"));
    zrtest::LogCapture log;
    {
      auto array = facade();
      EXPECT_EQ(array->createSession(), row.refusal == nullptr);
      if (row.refusal == nullptr) continue;
      EXPECT_TRUE(log.ContainsLineWith(-1, row.refusal)) << log.Dump();
      EXPECT_TRUE(log.ContainsLineWith(-1, "Unable to parse the JSON Response"));
      _HuaweiSystemInformation info;
      EXPECT_FALSE(array->getSystemInformation(info));
    }
    // The login went out, and nothing after it: no logout, no request built from the answer.
    ASSERT_EQ(requestLines(), std::vector<std::string>{"POST sessions"});
    EXPECT_FALSE(requests().front().hasHeader("iBaseToken"));
  }
}

// 4 MB of empty objects would take some 220 MB as a tree, beyond the bound of 16 bytes a byte
// and 16 MiB; the operation fails with the reason, and the session serves on.
TEST_F(UntrustedAnswers, AnswerBeyondTheMemoryBoundFailsItsOperationCleanly) {
  std::string records;
  records.reserve(4u << 20);
  while (records.size() < (4u << 20)) records += "{},";
  records.pop_back();
  auto array = loggedInFacade();
  sim().faults().add(FaultRule::On("GET", "system/").cannedBody(
      R"({"data":{"ID":"1","NAME":"array","records":[)" + records + R"(]},"error":{"code":0,"description":"0"}})"));
  zrtest::LogCapture log;
  _HuaweiSystemInformation info;
  EXPECT_FALSE(array->getSystemInformation(info));
  EXPECT_TRUE(log.ContainsLineWith(-1, "needs more memory than the")) << log.Dump();
  EXPECT_TRUE(info.id.empty());
  EXPECT_TRUE(array->getSystemInformation(info));
  EXPECT_FALSE(info.id.empty());
}

}  // namespace
