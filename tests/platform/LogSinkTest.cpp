#include <atomic>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CLogWriterInterface.h"
#include "LogCapture.h"
#include "TkDebug.h"
#include "TkLogSink.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using zrtest::LogLineIs;

// Restores the level and sink a test changes by hand.
class TkLogSink : public testing::Test {
 protected:
  void TearDown() override {
    tklog::SetMaxLevel(4);
    tklog::SetSink({});
  }
};

TEST_F(TkLogSink, DefaultLevelPassesErrorsToDetailAndDropsRequestsAndNoise) {
  EXPECT_EQ(tklog::MaxLevel(), 4);
  std::vector<int> passed;
  tklog::SetSink([&](const tklog::LogLine& line) { passed.push_back(line.level); });
  TkDebug log;
  for (int level = -1; level <= 7; ++level) log.DebugLvl("Levels", level, 1, "line %d", level);
  EXPECT_THAT(passed, ElementsAre(-1, 0, 1, 2, 3, 4));
}

TEST_F(TkLogSink, RaisedLevelPassesRequestsAndNoise) {
  std::vector<int> passed;
  tklog::SetSink([&](const tklog::LogLine& line) { passed.push_back(line.level); });
  tklog::SetMaxLevel(7);
  EXPECT_TRUE(tklog::Enabled(7));
  TkDebug log;
  for (int level : {5, 6, 7, 8}) log.DebugLvl("Levels", level, "line");
  EXPECT_THAT(passed, ElementsAre(5, 6, 7));
}

TEST_F(TkLogSink, DefaultSinkWritesTimeStampedLinesToStandardError) {
  testing::internal::CaptureStderr();
  TkDebug().DebugLvl("HuaweiRestAPI::sendReq", 3, 77, "sent %s", "GET");
  TkDebug().Error("Facade", "broken");
  const std::string written = testing::internal::GetCapturedStderr();
  EXPECT_THAT(written, testing::ContainsRegex(
                           "[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9:]{8}\\.[0-9]{3} \\[3\\] HuaweiRestAPI::sendReq \\(job 77\\): sent GET\n"));
  EXPECT_THAT(written, HasSubstr("[-1] Facade: broken\n"));
}

TEST(TkDebug, EachFormCarriesNameLevelAndJobIdentifierAsGiven) {
  zrtest::LogCapture log;
  TkDebug().DebugLvl("WithJob", 3, 123456789012LL, "%s=%d", "a", 1);
  TkEvent().DebugLvl("WithoutJob", 5, "plain");
  TkDebug().Error("Failed", "code %d", -1);

  const std::vector<tklog::LogLine> lines = log.Lines();
  ASSERT_EQ(lines.size(), 3u) << log.Dump();
  EXPECT_THAT(lines[0], LogLineIs(3, "WithJob", "a=1"));
  EXPECT_TRUE(lines[0].hasJobId);
  EXPECT_EQ(lines[0].jobId, 123456789012LL);
  EXPECT_THAT(lines[1], LogLineIs(5, "WithoutJob", "plain"));
  EXPECT_FALSE(lines[1].hasJobId);
  EXPECT_THAT(lines[2], LogLineIs(-1, "Failed", "code -1"));
  EXPECT_FALSE(lines[2].hasJobId);
}

TEST(LogCapture, PutsBackTheSinkAndLevelItReplaced) {
  std::vector<std::string> outer;
  tklog::SetSink([&](const tklog::LogLine& line) { outer.push_back(line.text); });
  {
    zrtest::LogCapture capture;
    EXPECT_EQ(tklog::MaxLevel(), 7);
    TkDebug().DebugLvl("Inner", 6, "captured");
    EXPECT_TRUE(capture.HasLine(6, "Inner", "captured"));
    EXPECT_TRUE(capture.ContainsLineWith(6, "capt"));
    EXPECT_FALSE(capture.ContainsLineWith(5, "capt"));
  }
  EXPECT_EQ(tklog::MaxLevel(), 4);
  TkDebug().DebugLvl("Outer", 0, "after");
  tklog::SetSink({});
  EXPECT_THAT(outer, ElementsAre("after"));
}

TEST(LogCapture, CollectsEveryLineOfConcurrentWriters) {
  zrtest::LogCapture log;
  constexpr int kThreads = 4;
  constexpr int kLinesEach = 500;
  std::vector<std::thread> writers;
  for (int t = 0; t < kThreads; ++t) {
    writers.emplace_back([t] {
      TkDebug debug;
      for (int i = 0; i < kLinesEach; ++i) debug.DebugLvl("Writer", 3, t, "line %d", i);
    });
  }
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(log.Lines().size(), static_cast<size_t>(kThreads * kLinesEach));
}

TEST(LogWriter, DefaultWriterReportsTheSinkLevelAndWritesUnderTheFunctionText) {
  ASSERT_TRUE(g_ptrLogWriter);
  const char* function = "bool HuaweiJSONGetChangeListResult::handleSpecialCharactersInFileName(std::string&)";
  {
    zrtest::LogCapture log(5);
    EXPECT_EQ(g_ptrLogWriter->GetLogLevel(), 5);
    g_ptrLogWriter->WriteLog(-1, function, 1234, "File name is empty!");
    g_ptrLogWriter->WriteLog(6, function, 1235, "Modified Changelist file:[%s] ", "a<b");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLineIs(-1, function, "File name is empty!"))) << log.Dump();
  }
  EXPECT_EQ(g_ptrLogWriter->GetLogLevel(), 4);
}

}  // namespace
