#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CLogWriterInterface.h"
#include "LogCapture.h"
#include "TkDebug.h"
#include "TkLogSink.h"

namespace {

using testing::ElementsAre;
using zrtest::LogLineIs;

// Restores the level and sink a test changes by hand.
class TkLogSink : public testing::Test {
 protected:
  void TearDown() override {
    tklog::SetMaxLevel(4);
    tklog::SetSink({});
  }
};

TEST_F(TkLogSink, LevelsPassUpToTheMaximum) {
  EXPECT_EQ(tklog::MaxLevel(), 4);
  std::vector<int> passed;
  tklog::SetSink([&](const tklog::LogLine& line) { passed.push_back(line.level); });
  for (int level = -1; level <= 8; ++level) TkDebug().DebugLvl("Levels", level, 1, "line %d", level);
  tklog::SetMaxLevel(7);
  for (int level : {5, 7, 8}) TkDebug().DebugLvl("Levels", level, "line");
  EXPECT_THAT(passed, ElementsAre(-1, 0, 1, 2, 3, 4, 5, 7));
}

TEST_F(TkLogSink, DefaultSinkWritesTimeStampedLinesToStandardError) {
  testing::internal::CaptureStderr();
  TkDebug().DebugLvl("HuaweiRestAPI::sendReq", 3, 77, "sent %s", "GET");
  TkDebug().Error("Facade", "broken");
  const std::string written = testing::internal::GetCapturedStderr();
  EXPECT_THAT(written, testing::ContainsRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9:]{8}\\.[0-9]{3} \\[3\\] "
                                              "HuaweiRestAPI::sendReq \\(job 77\\): sent GET\n"));
  EXPECT_THAT(written, testing::HasSubstr("[-1] Facade: broken\n"));
}

TEST(TkDebug, EachFormCarriesNameLevelAndJobIdentifierAsGiven) {
  zrtest::LogCapture log;
  TkDebug().DebugLvl("WithJob", 3, 123456789012LL, "%s=%d", "a", 1);
  TkEvent().DebugLvl("WithoutJob", 5, "plain");
  TkDebug().Error("Failed", "code %d", -1);
  const std::vector<tklog::LogLine> lines = log.Lines();
  ASSERT_THAT(lines, ElementsAre(LogLineIs(3, "WithJob", "a=1"), LogLineIs(5, "WithoutJob", "plain"),
                                 LogLineIs(-1, "Failed", "code -1")));
  EXPECT_EQ(std::vector<bool>({lines[0].hasJobId, lines[1].hasJobId, lines[2].hasJobId}),
            std::vector<bool>({true, false, false}));
  EXPECT_EQ(lines[0].jobId, 123456789012LL);
}

TEST(LogWriter, DefaultWriterFollowsTheSinkLevelAndWritesUnderTheFunctionText) {
  const char* function = "bool HuaweiJSONGetChangeListResult::handleSpecialCharactersInFileName(std::string&)";
  zrtest::LogCapture log(5);
  ASSERT_TRUE(g_ptrLogWriter);
  EXPECT_EQ(g_ptrLogWriter->GetLogLevel(), 5);
  g_ptrLogWriter->WriteLog(-1, function, 1234, "File name is empty!");
  g_ptrLogWriter->WriteLog(6, function, 1235, "Modified Changelist file:[%s] ", "a<b");
  EXPECT_THAT(log.Lines(), ElementsAre(LogLineIs(-1, function, "File name is empty!"))) << log.Dump();
}

}  // namespace
