#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "CLogWriterInterface.h"
#include "LogCapture.h"
#include "LogLineText.h"
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

// A text passed whole through "%s" arrives as printf would write it, directives in it untouched.
TEST(TkDebug, PreformattedTextArrivesAsPrintfWritesIt) {
  zrtest::LogCapture log;
  const char* volatile absent = nullptr;  // hidden from the compiler's format checks
  TkDebug().DebugLvl("Text", 0, 1, "%s", "100% [%d] done");
  TkEvent().DebugLvl("Text", 0, "%s", "");
  TkDebug().Error("Text", "%s", absent);
  TkDebug().DebugLvl("Text", 0, 1, "%s%s", "a", "b");
  TkDebug().DebugLvl("Text", 0, 1, "%%s");
  EXPECT_THAT(log.Lines(), ElementsAre(LogLineIs(0, "Text", "100% [%d] done"), LogLineIs(0, "Text", ""),
                                       LogLineIs(-1, "Text", "(null)"), LogLineIs(0, "Text", "ab"),
                                       LogLineIs(0, "Text", "%s")));
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

// Control characters and UTF-8 line breakers are escaped; every other byte, the backslash and
// other UTF-8 text included, stays as it is.
TEST(LogLineText, ControlCharactersAreEscapedAndOtherBytesKept) {
  const std::pair<std::string, std::string> cases[] = {
      {"Successfully created the host with name [h1]", "Successfully created the host with name [h1]"},
      {"", ""},
      {"a\nb", "a\\nb"},
      {"a\r\nERROR forged", "a\\r\\nERROR forged"},
      {"tab\there", "tab\\there"},
      {"\x1b[31mred\x7f", "\\x1b[31mred\\x7f"},
      {std::string("zero\0one\x01", 9), "zero\\x00one\\x01"},
      {"C:\\share\\n {\"a\":\"\\/\"}", "C:\\share\\n {\"a\":\"\\/\"}"},
      {"caf\xc3\xa9 \xe2\x86\x92 \xe2\x80\xa7", "caf\xc3\xa9 \xe2\x86\x92 \xe2\x80\xa7"},
      {"nel\xc2\x85 ls\xe2\x80\xa8 ps\xe2\x80\xa9 c1\xc2\x9f", "nel\\u0085 ls\\u2028 ps\\u2029 c1\\u009f"},
      {"cut \xc2", "cut \xc2"},
      {"cut \xe2\x80", "cut \xe2\x80"},
      // Past the first eight bytes, at the end of a word, in the tail.
      {"01234567\x1f" "89abcdef ~~~~~~~\x7f ok", "01234567\\x1f89abcdef ~~~~~~~\\x7f ok"},
      {"0123456789abcdef012\n", "0123456789abcdef012\\n"},
      {"0123456789abcdef01234567\xe2\x80\xa8", "0123456789abcdef01234567\\u2028"},
  };
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(tklog::OneLine(text), expected) << text;
    EXPECT_EQ(tklog::IsOneLine(text), text == expected) << text;
  }
}

// A value with a line break cannot make a second line, in any form of the log or in the default
// sink's time-stamped lines on standard error; an ordinary line arrives unchanged.
TEST_F(TkLogSink, LoggedValuesCannotForgeALine) {
  {
    zrtest::LogCapture log;
    TkDebug().DebugLvl("ZrManageHuawei::createHost", 3, 9, "The host [%s] already exists", "a\nb");
    TkEvent().Error("Facade", "%s", "x\r\n2026-11-25 00:00:00.000 [-1] Other: forged");
    g_ptrLogWriter->WriteLog(-1, "Writer", 1, "[%s]", "\x1b[2J");
    EXPECT_THAT(log.Lines(), ElementsAre(LogLineIs(3, "ZrManageHuawei::createHost", "The host [a\\nb] already exists"),
                                         LogLineIs(-1, "Facade", "x\\r\\n2026-11-25 00:00:00.000 [-1] Other: forged"),
                                         LogLineIs(-1, "Writer", "[\\x1b[2J]")));
  }
  testing::internal::CaptureStderr();
  TkDebug().DebugLvl("Name\n", 0, 1, "one\ntwo");
  TkDebug().DebugLvl("HuaweiRestAPI::sendReq", 3, 77, "sent %s", "back\\slash \"quoted\"");
  TkDebug().Error("Facade", "broken");
  const std::string written = testing::internal::GetCapturedStderr();
  EXPECT_EQ(std::count(written.begin(), written.end(), '\n'), 3) << written;
  EXPECT_THAT(written, testing::HasSubstr("] Name\\n (job 1): one\\ntwo\n"));
  EXPECT_THAT(written, testing::ContainsRegex("[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9:]{8}\\.[0-9]{3} \\[3\\] "
                                              "HuaweiRestAPI::sendReq \\(job 77\\): sent back\\\\slash \"quoted\"\n"));
  EXPECT_THAT(written, testing::HasSubstr("[-1] Facade: broken\n"));
}

}  // namespace
