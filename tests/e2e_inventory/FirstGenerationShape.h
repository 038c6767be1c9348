// The shape that every boolean-answering operation shares, checked over HTTPS against the
// simulator: a closed facade stops in the guard and sends nothing; a successful call sends the
// operation's requests with the session's token and cookie; an array error, an empty answer, an
// HTML page and a bare "{}" each end in the operation's own failure text.
//
// A test binary includes this header in one source file, defines ArrangeShapeScene() for the
// objects its operations need, and instantiates FirstGenerationShape with its rows.
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ArrayClientTest.h"
#include "LogCapture.h"

namespace zrtest {

// Objects that a row's operation works on, made on the simulator before the call.
struct ShapeScene {
  std::string fileSystemId;
  std::string snapshotId;
  std::string baseSnapshotId;
  std::string incrementalSnapshotId;
  std::string sessionId;
};

struct ShapeRow {
  std::string name;
  std::function<bool(ZrManageHuawei&, const ShapeScene&)> call;
  // "METHOD resource" of every request a successful call sends, in order.
  std::function<std::vector<std::string>(const ShapeScene&)> sends;
  // The one of them whose answer the faults spoil.
  std::function<std::string(const ShapeScene&)> spoiled;
  std::string logName;
  // Failures written by Error(), which carries no job identifier.
  bool failuresByError = false;
  std::string guardText;
  std::string requestFailedText;
  std::string emptyResponseText = "Empty response from the array";
};

inline void PrintTo(const ShapeRow& row, std::ostream* out) { *out << row.name; }

// Defined by each binary: builds the scene on the simulator; `array` is logged in.
ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei& array);

class FirstGenerationShape : public ArrayClientTest, public testing::WithParamInterface<ShapeRow> {
 protected:
  void SetUp() override {
    ArrayClientTest::SetUp();
    arranger_ = loggedInFacade();
    scene_ = ArrangeShapeScene(sim(), *arranger_);
    sim().requests().clear();
  }

  const ShapeRow& row() const { return GetParam(); }
  const ShapeScene& scene() const { return scene_; }

  testing::Matcher<const tklog::LogLine&> failureLine(const std::string& text) const {
    return testing::AllOf(LogLineIs(-1, row().logName, text),
                          testing::Field("hasJobId", &tklog::LogLine::hasJobId, !row().failuresByError));
  }

  // "METHOD path" of the spoiled request, query left out, as the fault rules match it.
  std::pair<std::string, std::string> spoiledTarget() const {
    const std::string line = row().spoiled(scene_);
    const std::string::size_type blank = line.find(' ');
    const std::string resource = line.substr(blank + 1);
    return {line.substr(0, blank), resource.substr(0, resource.find('?'))};
  }

  // Spoils the answer of the row's request once, calls, and checks that the call failed with
  // `text` after sending that request.
  void expectFailureOn(const arraysim::FaultRule& fault, const std::string& text, const LogCapture& log) {
    auto array = loggedInFacade();
    sim().faults().add(fault);
    EXPECT_FALSE(row().call(*array, scene_));
    EXPECT_EQ(sim().faults().pending(), 0u) << "the spoiled request was never sent";
    ASSERT_FALSE(requestLines().empty());
    EXPECT_EQ(requestLines().back(), row().spoiled(scene_));
    EXPECT_THAT(log.Lines(), testing::Contains(failureLine(text))) << log.Dump();
    EXPECT_THAT(log.Lines(), testing::Not(testing::Contains(LogLineIs(0, row().logName, testing::_))));
  }

  arraysim::FaultRule spoil() const {
    const auto target = spoiledTarget();
    return arraysim::FaultRule::On(target.first, target.second).exactly();
  }

 private:
  std::unique_ptr<ZrManageHuawei> arranger_;
  ShapeScene scene_;
};

TEST_P(FirstGenerationShape, ClosedFacadeStopsInTheGuardAndSendsNothing) {
  auto array = facade();
  LogCapture log;
  EXPECT_FALSE(row().call(*array, scene()));
  EXPECT_TRUE(requests().empty());
  EXPECT_THAT(log.Lines(), testing::Contains(failureLine(row().guardText))) << log.Dump();
}

TEST_P(FirstGenerationShape, SendsItsRequestsUnderTheSession) {
  auto array = loggedInFacade();
  ASSERT_EQ(sim().sessions().open().size(), 2u);  // the arranging facade's and this one's
  const auto sessions = sim().sessions().open();
  EXPECT_TRUE(row().call(*array, scene()));
  EXPECT_EQ(requestLines(), row().sends(scene()));
  for (const auto& request : requests()) {
    const std::string token = request.header("iBaseToken");
    bool ownSession = false;
    for (const auto& session : sessions) {
      if (session.token == token && arraysim::CookieValue(request.header("Cookie"), "session") == session.cookie) {
        ownSession = true;
      }
    }
    EXPECT_TRUE(ownSession) << request.method << " " << request.resource << " token [" << token << "] cookie ["
                            << request.header("Cookie") << "]";
    EXPECT_EQ(request.header("Content-Type"), "application/json") << request.resource;
    EXPECT_EQ(request.device, sim().deviceId());
  }
}

TEST_P(FirstGenerationShape, ArrayErrorIsTheOperationsFailure) {
  LogCapture log;
  expectFailureOn(spoil().arrayError(1077949002, "The operation failed."), row().requestFailedText, log);
  EXPECT_TRUE(log.ContainsLineWith(-1, "API Error Code[1077949002]")) << log.Dump();
}

TEST_P(FirstGenerationShape, EmptyAnswerIsAnEmptyResponse) {
  LogCapture log;
  expectFailureOn(spoil().emptyBody(), row().emptyResponseText, log);
}

// The transport cannot read either answer and classifies it as its own failure (code 2).
TEST_P(FirstGenerationShape, HtmlPageIsARequestFailure) {
  LogCapture log;
  expectFailureOn(spoil().htmlPage(502), row().requestFailedText, log);
  EXPECT_TRUE(log.ContainsLineWith(-1, "API Error Code[2]")) << log.Dump();
}

TEST_P(FirstGenerationShape, EmptyObjectIsARequestFailure) {
  LogCapture log;
  expectFailureOn(spoil().emptyObject(), row().requestFailedText, log);
  EXPECT_TRUE(log.ContainsLineWith(-1, "API Error Code[2]")) << log.Dump();
}

}  // namespace zrtest
