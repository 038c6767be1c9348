// With the failures of required values contained, each reader family's faulty answer fails only
// its operation: the generation's failure with the text, the caller's outputs untouched, nothing
// more sent, and the facade still serving the next operation.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "MissingValueRows.h"
#include "ZrLibrarySettings.h"

namespace zrtest {
namespace {

// Chosen before the first session, as an embedder does at start-up.
const bool kContained = [] {
  ZrLibrarySettings settings;
  settings.missingRequiredValue = ZrLibrarySettings::MissingValue::FailOperation;
  return ZrLibrarySetSettings(settings);
}();

const char kLacks[] = "The array's answer lacks a required value: ";

class ContainedFailure : public ArrayClientTest, public testing::WithParamInterface<MissingValueRow> {
 protected:
  // What the operation sent, logins and logouts left out unless the row is the login.
  std::vector<std::string> sent(bool withSessions) {
    std::vector<std::string> lines;
    for (const auto& request : requests()) {
      const std::string resource = request.resource.substr(0, request.resource.find('?'));
      if (withSessions || resource != "sessions") lines.push_back(request.method + " " + resource);
    }
    return lines;
  }
};

TEST_P(ContainedFailure, FailsOnlyTheOperation) {
  ASSERT_TRUE(kContained);
  const MissingValueRow& row = GetParam();
  auto array = row.isLogin ? facade() : loggedInFacade();
  row.arrange(sim());
  LogCapture log;

  const MissingValueOutcome outcome = row.act(*array);

  EXPECT_TRUE(outcome.failed);
  // Operations answering bool tell it only in the log.
  if (outcome.carriesText) {
    EXPECT_THAT(outcome.text, testing::HasSubstr(kLacks + row.what));
  }
  EXPECT_TRUE(log.ContainsLineWith(-1, kLacks + row.what)) << log.Dump();
  EXPECT_TRUE(outcome.outputsKept);
  EXPECT_EQ(sent(row.isLogin), row.requests);
  if (row.isLogin) return;
  // The session stays open and the next operation is served.
  sim().faults().clear();
  sim().answerStyles().clear();
  _HuaweiSystemInformation info;
  EXPECT_TRUE(array->getSystemInformation(info));
}

INSTANTIATE_TEST_SUITE_P(EveryReaderFamily, ContainedFailure, testing::ValuesIn(MissingValueRows()),
                         [](const testing::TestParamInfo<MissingValueRow>& info) { return std::string(info.param.name); });

// A second choice changes nothing: sessions of one process never run under two.
TEST(ContainedSettings, AreChosenOncePerProcess) {
  ZrLibrarySettings other;
  EXPECT_FALSE(ZrLibrarySetSettings(other));
  EXPECT_EQ(ZrLibraryGetSettings().missingRequiredValue, ZrLibrarySettings::MissingValue::FailOperation);
}

}  // namespace
}  // namespace zrtest
