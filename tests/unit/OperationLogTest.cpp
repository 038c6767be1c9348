#include "OperationLog.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "LogCapture.h"

namespace {

std::string printed(const char* format, const char* first, const char* second) {
  char text[1024];
  std::snprintf(text, sizeof text, format, first, second);
  return text;
}

// Formats of plain strings are copied in without printf, others go through it: both must write
// what printf writes, whether the text fits the line's own buffer or not.
TEST(OperationLog, LinesReadAsPrintfWritesThem) {
  const std::string longer(300, 'x');
  struct Row {
    const char* format;
    const char* first;
    const char* second;
  };
  const std::vector<Row> rows = {
      {"no directive at all", "", ""},
      {"Got [%s] and [%s].", "one", "two"},
      {"100%% of [%s]%s", "it", ""},
      {"%s|%s", longer.c_str(), longer.c_str()},
      {"%-6s|%.2s", "ab", "cdef"},
  };
  for (const Row& row : rows) {
    zrtest::LogCapture capture;
    OperationLog log = OperationLog::event("Operation", 7);
    log.line(0, row.format, row.first, row.second);
    log.failure(row.format, row.first, row.second);
    const std::string expected = printed(row.format, row.first, row.second);
    ASSERT_EQ(capture.Lines().size(), 2u) << row.format;
    EXPECT_EQ(capture.Lines()[0].text, expected) << row.format;
    EXPECT_EQ(capture.Lines()[1].text, expected) << row.format;
  }
  zrtest::LogCapture capture;
  const char* volatile absent = nullptr;  // hidden from the compiler's format checks
  OperationLog::event("Operation", 7).line(0, "[%s]", absent);
  EXPECT_EQ(capture.Lines().at(0).text, "[(null)]");
}

}  // namespace
