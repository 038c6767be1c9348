// Captures log lines for the life of a test: installs a capturing sink and raises the level to 7,
// and puts back the previous sink and level on destruction.
//
//   zrtest::LogCapture log;
//   ... code under test ...
//   EXPECT_TRUE(log.HasLine(-1, "HuaweiRestAPI::sendReq", "Request URL is empty."));
//   EXPECT_THAT(log.Lines(), testing::Contains(zrtest::LogLineIs(3, "ZRLibCurl", testing::HasSubstr("refused"))));
#pragma once

#include <mutex>
#include <ostream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "TkLogSink.h"

namespace tklog {
// Lets gtest print captured lines in failure messages.
void PrintTo(const LogLine& line, std::ostream* out);
}  // namespace tklog

namespace zrtest {

class LogCapture {
 public:
  explicit LogCapture(int maxLevel = 7);
  ~LogCapture();
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  std::vector<tklog::LogLine> Lines() const;
  void Clear();

  // A line with exactly this level, log name and text.
  bool HasLine(int level, const std::string& name, const std::string& text) const;
  // A line at this level whose text contains the substring.
  bool ContainsLineWith(int level, const std::string& substring) const;
  // A line at any level whose text contains the substring.
  bool ContainsText(const std::string& substring) const;
  // Every line, one a row, for failure messages: EXPECT_TRUE(...) << log.Dump();
  std::string Dump() const;

 private:
  mutable std::mutex mutex_;
  std::vector<tklog::LogLine> lines_;
  tklog::Sink previousSink_;
  int previousMaxLevel_;
};

// Matcher of one line, for use with testing::Contains and friends.
testing::Matcher<const tklog::LogLine&> LogLineIs(testing::Matcher<int> level,
                                                  testing::Matcher<const std::string&> name,
                                                  testing::Matcher<const std::string&> text);

}  // namespace zrtest
