#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "BackslashSqueeze.h"
#include "ChangeListPageText.h"
#include "HuaweiJSONChangeListRequests.h"
#include "LogCapture.h"

namespace {

// The repair in the words of the array's format: three steps, each over the whole text.
std::string repairedStepByStep(std::string text) {
  std::string::size_type at = text.find("\"[");
  if (at != std::string::npos) text.replace(at, 2, "[");
  at = text.find("]\"");
  if (at != std::string::npos) text.replace(at, 2, "]");
  text.erase(std::remove(text.begin(), text.end(), '\\'), text.end());
  return text;
}

TEST(ChangeListPage, OnePassRepairEqualsTheThreeSteps) {
  std::mt19937 random(7);
  const char alphabet[] = {'"', '[', ']', '\\', 'a'};
  for (int round = 0; round < 20000; ++round) {
    std::string text(random() % 100, ' ');
    for (char& c : text) c = alphabet[random() % sizeof alphabet];
    std::string repaired = text;
    HuaweiPageRepair::repair(repaired);
    ASSERT_EQ(repaired, repairedStepByStep(text)) << text;
  }
}

// Each block path drops exactly the backslashes of the blocks it takes, whatever their places;
// the repair above runs only the path of this processor.
TEST(ChangeListPage, EveryBackslashSqueezeKeepsAllButTheBackslashes) {
  using Squeeze = std::size_t (*)(char*, std::size_t&, std::size_t, std::size_t);
  std::vector<Squeeze> paths = {&BackslashSqueeze::squeezeWords};
  if (BackslashSqueeze::shufflesAvailable()) paths.push_back(&BackslashSqueeze::squeezeChunks);
  std::mt19937 random(11);
  for (int round = 0; round < 5000; ++round) {
    std::string text(random() % 80, 'a');
    for (char& c : text) c = random() % 3 == 0 ? '\\' : static_cast<char>('a' + random() % 26);
    const std::size_t from = random() % (text.size() + 1);
    for (Squeeze path : paths) {
      std::string squeezed = text;
      std::size_t read = from;
      const std::size_t write = path(&squeezed[0], read, squeezed.size(), from);
      std::string expected = text.substr(from, read - from);
      expected.erase(std::remove(expected.begin(), expected.end(), '\\'), expected.end());
      ASSERT_LE(squeezed.size() - read, 15u);
      ASSERT_EQ(squeezed.substr(0, from) + squeezed.substr(from, write - from), text.substr(0, from) + expected);
    }
  }
}

// Entities decode in one pass from the left; an unknown one loses its ampersand.
TEST(FileNameEntities, DecodeInOnePassFromTheLeft) {
  const std::pair<std::string, std::string> rows[] = {
      {"a&amp;b&#40;1&#41;.txt", "a&b(1).txt"}, {"x&lt;y&gt;", "x<y>"}, {"a&b", "ab"},   {"a&", "a"},
      {"&amp;amp;", "&amp;"},                   {"&&lt;", "<"}};
  HuaweiJSONGetChangeListResult request(1);
  for (auto [name, decoded] : rows) {
    ASSERT_TRUE(request.handleSpecialCharactersInFileName(name));
    EXPECT_EQ(name, decoded);
  }
}

TEST(FileNameEntities, RewritesAreLoggedAtLevelSixThroughTheLogWriter) {
  zrtest::LogCapture log;
  HuaweiJSONGetChangeListResult request(1);
  std::string answer = ChangePage({ChangeEntry("a&amp;b"), ChangeEntry("plain")});
  ASSERT_TRUE(request.parseResponse(answer));
  const char* writer = "bool HuaweiJSONGetChangeListResult::handleSpecialCharactersInFileName(std::string&)";
  EXPECT_TRUE(log.HasLine(6, writer, "Changelist file returned by array:[a&amp;b] ")) << log.Dump();
  EXPECT_TRUE(log.HasLine(6, writer, "Modified Changelist file:[a&b] "));
  EXPECT_FALSE(log.ContainsText("[plain]"));

  std::string empty;
  EXPECT_FALSE(request.handleSpecialCharactersInFileName(empty));
  EXPECT_TRUE(log.HasLine(-1, writer, "File name is empty!"));
}

}  // namespace
