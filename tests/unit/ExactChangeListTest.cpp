// The change list read with exact names: the list string decoded as a JSON string, then the list
// as JSON text, names and their entities decoded. Table rows hold a name as it stands between the
// quotes of the list's own text, before the list is escaped into the page.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "ChangeListPageText.h"
#include "ChangeListPlainPage.h"
#include "HuaweiJSONChangeListRequests.h"
#include "JsonStringDecoder.h"
#include "LogCapture.h"

namespace {

using HuaweiChangeListPage::ExactReading;

// The request fails the page and says why at level -1.
void ExpectRequestRefusesPage(std::string text, const std::string& why) {
  HuaweiJSONGetChangeListResult request(1);
  zrtest::LogCapture log;
  EXPECT_FALSE(request.readExactPage(text));
  EXPECT_TRUE(log.HasLine(-1, "HuaweiJSONGetChangeListResult::parseResponse",
                          "Unable to read the change list with exact file names: " + why))
      << log.Dump();
}

// (Names the array writes itself, quotes, backslashes and raw bytes among them: e2e_exact_names.)
TEST(ExactChangeList, NamesComeOutAsTheArrayHoldsThem) {
  const std::pair<std::string, std::string> rows[] = {
      {"tab\\tx\\/\\b\\f\\n\\r", "tab\tx/\b\f\n\r"},
      {"a&amp;b&lt;&gt;&quot;&apos;&#40;&#x29;&#X2a;", "a&b<>\"'()*"},
      {"&amp;lt; a&b a& &#65 &unknown; &#;", "&lt; a&b a& &#65 &unknown; &#;"},
      {"caf\\u00e9 \\u65E5 \\ud83d\\ude00 \\uD83D\\uDE00",
       "caf\xc3\xa9 \xe6\x97\xa5 \xf0\x9f\x98\x80 \xf0\x9f\x98\x80"},
      {"&#128512;&#x10FFFF;", "\xf0\x9f\x98\x80\xf4\x8f\xbf\xbf"},
  };
  for (const auto& [body, name] : rows) {
    _HuaweiSnapshotChangeListInfo info;
    std::string text = ChangePage({ChangeEntry(body)});
    const ExactReading reading = HuaweiChangeListPage::readExact(text, info);
    ASSERT_EQ(reading.outcome, ExactReading::kRead) << body << ": " << reading.why;
    ASSERT_EQ(info.changes.size(), 1u);
    EXPECT_EQ(info.changes.front().filePath, name) << body;
    EXPECT_EQ(info.changes.front().size, 18446744073709551615ULL);
  }
}

// Each of these fails the page with its reason, whatever came before it; nothing of the page is
// taken.
TEST(ExactChangeList, UndecodableTextFailsThePage) {
  const std::pair<std::string, std::string> rows[] = {
      {ChangePage({ChangeEntry("ok"), ChangeEntry("a\\x")}), "unknown escape"},
      {ChangePage({ChangeEntry("a\\u12")}), "the change list is not JSON text"},
      {ChangePage({ChangeEntry("a\\ud83d")}), "high surrogate"},
      {ChangePage({ChangeEntry("a\\ude00")}), "low surrogate"},
      {ChangePage({ChangeEntry("a\\u0000b")}), "NUL"},
      {ChangePage({ChangeEntry("&#0;")}), "no character"},
      {ChangePage({ChangeEntry("&#xD800;&#1114112;")}), "no character"},
      {ChangePage({ChangeEntry("x\" \"y")}), "the change list is not JSON text"},
      {ChangePage({ChangeEntry("x", "1.5")}), "the change list is not JSON text"},
      {ChangePage({ChangeEntry("x")}, "\"\\ud800\""), "the string \"\\ud800\" cannot be decoded: a high surrogate"},
      {ChangePage({ChangeEntry("x")}) + "x", "the page is not JSON text"},
      {"{\"data\":{\"changeList\":\"[\\x]\"}}", "unknown escape"},
  };
  for (auto [text, why] : rows) {
    _HuaweiSnapshotChangeListInfo info;
    info.posObj = "before";
    const ExactReading reading = HuaweiChangeListPage::readExact(text, info);
    EXPECT_EQ(reading.outcome, ExactReading::kUndecodable) << text;
    EXPECT_NE(reading.why.find(why), std::string::npos) << text << " -> " << reading.why;
    EXPECT_EQ(info.posObj + std::to_string(info.changes.size()), "before0");
  }

  ExpectRequestRefusesPage(
      ChangePage({ChangeEntry("a\\ud83d")}),
      "the file name \"a\\ud83d\" cannot be decoded: a high surrogate without a low one behind it.");
}

// A page that is JSON but lacks a value goes to the document model's readers, which fail on it as
// on any page; one that they would read (a repeated key) fails all the same.
TEST(ExactChangeList, OtherShapesAreLeftToTheDocumentModel) {
  std::string missing = ChangePage({ChangeEntry("a\\u0041")});
  missing.replace(missing.find(",\\\"size\\\":18446744073709551615"), 30, "");
  _HuaweiSnapshotChangeListInfo info;
  EXPECT_EQ(HuaweiChangeListPage::readExact(missing, info).outcome, ExactReading::kOtherShape);
  std::string repeated = ChangePage({ChangeEntry("x")});
  repeated.replace(repeated.find("\\\"links\\\""), 0, "\\\"links\\\":2,");
  std::string copy = repeated;
  EXPECT_EQ(HuaweiChangeListPage::readExact(copy, info).outcome, ExactReading::kOtherShape);
  ExpectRequestRefusesPage(repeated, "a value is repeated or not in the array's form.");
}

// A list sent as a plain array rather than a string reads all the same. (Ordinary names read as
// the repair reads them: the walks of e2e_exact_names and e2e_file_system_snapshots, against the same truth.)
TEST(ExactChangeList, ListAsAPlainArrayReads) {
  std::string plainList = "{\"data\":{\"changeList\":[" + ChangeEntry("a\\\"b") +
                                "],\"numChanges\":\"1\",\"progress\":\"5\",\"linkPos\":\"1\",\"linkPosType\":\"2\","
                                "\"posObj\":\"3\",\"posOffset\":\"4\",\"posType\":\"5\"}}";
  _HuaweiSnapshotChangeListInfo info;
  ASSERT_EQ(HuaweiChangeListPage::readExact(plainList, info).outcome, ExactReading::kRead);
  EXPECT_EQ(info.changes.front().filePath, "a\"b");
}

// Any text escaped in any of the forms a JSON writer may choose decodes to itself, across the
// decoder's blocks of sixteen bytes.
TEST(ExactChangeList, StringDecoderUndoesEveryEscapeForm) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> forms = {
      {"a", {"a", "\\u0061"}},          {"\"", {"\\\"", "\\u0022"}},   {"\\", {"\\\\", "\\u005C"}},
      {"/", {"/", "\\/"}},              {"\t", {"\\t", "\\u0009"}},     {"\n", {"\\n", "\\u000a"}},
      {"\x01", {"\\u0001"}},           {" ", {" "}},                     {"\xc3\xa9", {"\xc3\xa9", "\\u00E9"}},
      {"\xe6\x97\xa5", {"\xe6\x97\xa5", "\\u65e5"}}, {"\xf0\x9f\x98\x80", {"\xf0\x9f\x98\x80", "\\ud83d\\ude00"}}};
  std::mt19937 random(5);
  for (int round = 0; round < 5000; ++round) {
    std::string text, encoded = "keep";
    for (int n = random() % 80; n > 0; --n) {
      const auto& [character, ways] = forms[random() % forms.size()];
      text += character;
      encoded += ways[random() % ways.size()];
    }
    const std::string sent = encoded;
    ASSERT_EQ(HuaweiJsonString::decode(encoded, 4), nullptr) << sent;
    ASSERT_EQ(encoded, "keep" + text) << sent;
  }
}

}  // namespace
