#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "BackslashSqueeze.h"
#include "HuaweiJSONChangeListRequests.h"
#include "LogCapture.h"

namespace {

// One entry as the array writes it inside the change-list string (quotes escaped).
std::string entry(const std::string& path, const std::string& inode = "12") {
  return "{\\\"inode\\\":" + inode +
         ",\\\"changeType\\\":1,\\\"fType\\\":2,\\\"filePath\\\":\\\"" + path +
         "\\\",\\\"crTime\\\":1,\\\"cTime\\\":2,\\\"mTime\\\":3,\\\"aTime\\\":4,\\\"owner\\\":5,\\\"group\\\":6,"
         "\\\"size\\\":18446744073709551615,\\\"links\\\":1,\\\"dosAttr\\\":32}";
}

std::string page(const std::vector<std::string>& entries, const std::string& progress = "50",
                 const std::string& extra = "") {
  std::string list;
  for (const std::string& one : entries) list += (list.empty() ? "" : ",") + one;
  return "{\"data\":{\"changeList\":\"[" + list + "]\",\"numChanges\":\"" + std::to_string(entries.size()) +
         "\",\"progress\":\"" + progress +
         "\",\"linkPos\":\"9\",\"linkPosType\":\"1\",\"posObj\":\"77\",\"posOffset\":\"3\",\"posType\":\"2\"" + extra +
         "},\"error\":{\"code\":0,\"description\":\"0\"}}";
}

// A name "a\b" reaches the page as a\\\\b inside the escaped list text, and loses its backslash.
TEST(ChangeListPage, DecodesEntriesAndTheNextCursor) {
  HuaweiJSONGetChangeListResult request(1);
  std::string answer = page({entry("/dir/a b.txt", "9223372036854775809"), entry("a\\\\\\\\b")}, "100",
                            ",\"unknown\":{\"x\":[1,2]}");
  ASSERT_TRUE(request.parseResponse(answer));
  const _HuaweiSnapshotChangeListInfo info = request.getChangeListInfo("s1");
  EXPECT_EQ(info.sessionId + "|" + info.progress + "|" + info.numChanges + "|" + info.posType + "|" + info.posObj + "|" +
                info.posOffset + "|" + info.linkPosType + "|" + info.linkPos,
            "s1|100|2|2|77|3|1|9");
  ASSERT_EQ(info.changes.size(), 2u);
  const _HuaweiSnapshotChangeList& first = info.changes.front();
  EXPECT_EQ(first.filePath, "/dir/a b.txt");
  EXPECT_EQ(first.inode, 9223372036854775809ULL);
  EXPECT_EQ(first.size, 18446744073709551615ULL);
  EXPECT_EQ(std::to_string(first.changeType) + std::to_string(first.fType) + std::to_string(first.mTime) +
                std::to_string(first.dosAttr),
            "12332");
  EXPECT_EQ(info.changes.back().filePath, "ab");
  answer = page({}, "100");
  ASSERT_TRUE(request.parseResponse(answer));
  EXPECT_TRUE(request.getChangeListInfo("s").changes.empty());
}

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
  for (const std::string& corner : {std::string("]\"[x]\""), std::string("\"["), std::string("]\""), std::string("\\\\"),
                                    std::string(""), std::string("\"[]\"")}) {
    std::string text = corner;
    HuaweiPageRepair::repair(text);
    EXPECT_EQ(text, repairedStepByStep(corner)) << corner;
  }
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

struct EntityCase {
  const char* raw;
  const char* decoded;
};

inline void PrintTo(const EntityCase& row, std::ostream* out) { *out << row.raw; }

class FileNameEntities : public testing::TestWithParam<EntityCase> {};

TEST_P(FileNameEntities, DecodeInOnePassFromTheLeft) {
  HuaweiJSONGetChangeListResult request(1);
  std::string name = GetParam().raw;
  ASSERT_TRUE(request.handleSpecialCharactersInFileName(name));
  EXPECT_EQ(name, GetParam().decoded);
}

INSTANTIATE_TEST_SUITE_P(Rows, FileNameEntities,
                         testing::Values(EntityCase{"a&amp;b&#40;1&#41;.txt", "a&b(1).txt"},
                                         EntityCase{"x&lt;y&gt;", "x<y>"}, EntityCase{"a&b", "ab"},
                                         EntityCase{"a&", "a"}, EntityCase{"&amp;amp;", "&amp;"},
                                         EntityCase{"it&#39;s", "it#39;s"}, EntityCase{"&&lt;", "<"},
                                         EntityCase{"plain", "plain"}));

TEST(FileNameEntities, RewritesAreLoggedAtLevelSixThroughTheLogWriter) {
  zrtest::LogCapture log;
  HuaweiJSONGetChangeListResult request(1);
  std::string answer = page({entry("a&amp;b"), entry("plain")});
  ASSERT_TRUE(request.parseResponse(answer));
  const char* writer = "bool HuaweiJSONGetChangeListResult::handleSpecialCharactersInFileName(std::string&)";
  EXPECT_TRUE(log.HasLine(6, writer, "Changelist file returned by array:[a&amp;b] ")) << log.Dump();
  EXPECT_TRUE(log.HasLine(6, writer, "Modified Changelist file:[a&b] "));
  EXPECT_FALSE(log.ContainsText("[plain]"));

  std::string empty;
  EXPECT_FALSE(request.handleSpecialCharactersInFileName(empty));
  EXPECT_TRUE(log.HasLine(-1, writer, "File name is empty!"));
}

class ChangeListPageDeathTest : public testing::TestWithParam<const char*> {};

// Every key of the page and of its entries is required: removing any one ends the process.
TEST_P(ChangeListPageDeathTest, MissingRequiredKeyEndsTheProcess) {
  std::string answer = page({entry("f")});
  const std::string key = GetParam();
  const std::string quoted = key.front() == '\\' ? key : "\"" + key + "\"";
  const std::string::size_type at = answer.find(quoted);
  ASSERT_NE(at, std::string::npos) << key;
  answer.replace(at, quoted.size(), key.front() == '\\' ? "\\\"renamed\\\"" : "\"renamed\"");
  HuaweiJSONGetChangeListResult request(1);
  EXPECT_DEATH(request.parseResponse(answer), "\\[JSONXX\\] expression 'has<T>\\(key\\)' failed");
}

INSTANTIATE_TEST_SUITE_P(PageKeys, ChangeListPageDeathTest,
                         testing::Values("data", "changeList", "numChanges", "progress", "linkPos", "linkPosType",
                                         "posObj", "posOffset", "posType"));
INSTANTIATE_TEST_SUITE_P(EntryKeys, ChangeListPageDeathTest,
                         testing::Values("\\\"inode\\\"", "\\\"changeType\\\"", "\\\"filePath\\\"", "\\\"dosAttr\\\"",
                                         "\\\"size\\\""));

}  // namespace
