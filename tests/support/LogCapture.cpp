#include "LogCapture.h"

#include <sstream>

namespace tklog {

void PrintTo(const LogLine& line, std::ostream* out) {
  *out << "[" << line.level << "] " << line.name;
  if (line.hasJobId) *out << " (job " << line.jobId << ")";
  *out << ": " << line.text;
}

}  // namespace tklog

namespace zrtest {

LogCapture::LogCapture(int maxLevel) : previousSink_(tklog::CurrentSink()), previousMaxLevel_(tklog::MaxLevel()) {
  tklog::SetSink([this](const tklog::LogLine& line) {
    std::lock_guard<std::mutex> lock(mutex_);
    lines_.push_back(line);
  });
  tklog::SetMaxLevel(maxLevel);
}

LogCapture::~LogCapture() {
  tklog::SetMaxLevel(previousMaxLevel_);
  tklog::SetSink(previousSink_);
}

std::vector<tklog::LogLine> LogCapture::Lines() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return lines_;
}

void LogCapture::Clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  lines_.clear();
}

bool LogCapture::HasLine(int level, const std::string& name, const std::string& text) const {
  for (const tklog::LogLine& line : Lines()) {
    if (line.level == level && line.name == name && line.text == text) return true;
  }
  return false;
}

bool LogCapture::ContainsLineWith(int level, const std::string& substring) const {
  for (const tklog::LogLine& line : Lines()) {
    if (line.level == level && line.text.find(substring) != std::string::npos) return true;
  }
  return false;
}

bool LogCapture::ContainsText(const std::string& substring) const {
  for (const tklog::LogLine& line : Lines()) {
    if (line.text.find(substring) != std::string::npos) return true;
  }
  return false;
}

std::string LogCapture::Dump() const {
  std::ostringstream out;
  for (const tklog::LogLine& line : Lines()) {
    tklog::PrintTo(line, &out);
    out << "\n";
  }
  return out.str();
}

testing::Matcher<const tklog::LogLine&> LogLineIs(testing::Matcher<int> level,
                                                  testing::Matcher<const std::string&> name,
                                                  testing::Matcher<const std::string&> text) {
  return testing::AllOf(testing::Field("level", &tklog::LogLine::level, level),
                        testing::Field("name", &tklog::LogLine::name, name),
                        testing::Field("text", &tklog::LogLine::text, text));
}

}  // namespace zrtest
