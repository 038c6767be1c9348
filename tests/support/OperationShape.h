// The shape that every operation shares, checked over HTTPS against the simulator once per row of
// a ShapeRow table: a closed session, an empty required argument, a successful call under the
// session's token and cookie, and an array error, an HTML page and an empty answer in place of the
// answer of its last request, each ending in the operation's own text.
//
// A test binary includes this header in one source file, defines ArrangeShapeScene() for the
// objects its rows work on, and instantiates OperationShape with its rows.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"
#include "ShapeRow.h"

namespace zrtest {

class OperationShape : public ArrayClientTest, public testing::WithParamInterface<ShapeRow> {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    arranger_ = loggedInFacade();
    scene_ = ArrangeShapeScene(sim(), *arranger_);
    sim().requests().clear();
  }
  const ShapeRow& row() const { return GetParam(); }
  std::vector<std::string> sends() const {
    std::vector<std::string> lines;
    for (const auto& line : row().sends) lines.push_back(Fill(line.substr(line.front() == '*'), scene_));
    return lines;
  }
  std::string spoiled() const {
    for (const auto& line : row().sends) {
      if (line.front() == '*') return Fill(line.substr(1), scene_);
    }
    return sends().back();
  }

  // The failure as the outcome's generation tells it.
  void expectFailure(const Outcome& outcome, const std::string& text, unsigned long long code,
                     const LogCapture& log) const {
    EXPECT_FALSE(outcome.ok);
    if (outcome.generation == Generation::First) {
      EXPECT_THAT(log.Lines(), testing::Contains(testing::AllOf(
                                   LogLineIs(-1, row().logName, text),
                                   testing::Field("hasJobId", &tklog::LogLine::hasJobId, !row().byError))))
          << log.Dump();
    } else {
      EXPECT_EQ(outcome.text, text);
    }
    if (outcome.generation == Generation::Third) {
      EXPECT_EQ(outcome.code, code);
    }
  }

  std::unique_ptr<ZrManageHuawei> arranger_;
  ShapeScene scene_;
};

TEST_P(OperationShape, ClosedSessionAndEmptyArgumentSendNothing) {
  auto array = facade();
  LogCapture log;
  const Outcome outcome = row().call(*array, scene_);
  if (outcome.generation == Generation::Third) {  // opens the session by itself
    EXPECT_TRUE(outcome.ok) << outcome.text;
    ASSERT_FALSE(requestLines().empty());
    EXPECT_EQ(requestLines().front(), "POST sessions");
  } else {
    EXPECT_TRUE(requests().empty());
    const std::string& named = row().guardOperation.empty() ? row().name : row().guardOperation;
    expectFailure(outcome, GuardText(outcome.generation, named), 0, log);
  }
  if (!row().emptyArgumentCall) return;
  auto open = loggedInFacade();
  expectFailure(row().emptyArgumentCall(*open, scene_), Fill(row().emptyArgument, scene_), 2, log);
  EXPECT_TRUE(requests().empty());
}

TEST_P(OperationShape, SendsItsRequestsUnderTheSession) {
  auto array = loggedInFacade();
  const auto sessions = sim().sessions().open();
  const Outcome outcome = row().call(*array, scene_);
  EXPECT_TRUE(outcome.ok) << outcome.text;
  EXPECT_EQ(requestLines(), sends());
  for (const auto& request : requests()) {
    const std::string token = request.header("iBaseToken");
    const std::string cookie = arraysim::CookieValue(request.header("Cookie"), "session");
    const bool ownSession = std::any_of(sessions.begin(), sessions.end(), [&](const arraysim::ArraySession& s) {
      return s.token == token && s.cookie == cookie;
    });
    EXPECT_TRUE(ownSession) << request.resource << " token [" << token << "] cookie [" << cookie << "]";
    EXPECT_EQ(request.header("Content-Type"), "application/json") << request.resource;
    EXPECT_EQ(request.device, sim().deviceId());
  }
}

TEST_P(OperationShape, SpoiledAnswersEndInItsOwnTexts) {
  const std::string spoiled = this->spoiled();
  const std::string method = spoiled.substr(0, spoiled.find(' '));
  const std::string path = spoiled.substr(method.size() + 1, spoiled.find('?') - method.size() - 1);
  const struct {
    arraysim::FaultRule fault;
    std::string status;  // the status text behind the failure, as "{status}" in the row's text
    unsigned long long code;
    std::string text;
  } cases[] = {
      {arraysim::FaultRule::On(method, path).exactly().arrayError(1077949002, "The operation failed."),
       "The operation failed.", 1077949002, row().requestFailed},
      {arraysim::FaultRule::On(method, path).exactly().htmlPage(502), "Error when parsing the JSON response", 2,
       row().requestFailed},
      {arraysim::FaultRule::On(method, path).exactly().emptyBody(), "Unable to parse the JSON Response", 2,
       row().emptyResponse},
  };
  auto array = loggedInFacade();
  for (const auto& spoil : cases) {
    SCOPED_TRACE(spoil.status);
    LogCapture log;
    sim().requests().clear();
    sim().faults().add(spoil.fault);
    ShapeScene scene = scene_;
    scene["status"] = spoil.status;
    expectFailure(row().call(*array, scene_), Fill(spoil.text, scene), spoil.code, log);
    EXPECT_EQ(sim().faults().pending(), 0u) << "the spoiled request was never sent";
    ASSERT_FALSE(requests().empty());
    EXPECT_EQ(requestLines().back(), spoiled);
    EXPECT_THAT(log.Lines(), testing::Not(testing::Contains(LogLineIs(0, row().logName, testing::_))));
  }
}

}  // namespace zrtest
