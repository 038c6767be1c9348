// The change list read with exact names: the list string decoded as a JSON string, then the list
// as JSON text, names and their entities decoded. Table rows hold a name as it stands between the
// quotes of the list's own text, before the list is escaped into the page.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "ChangeListPlainPage.h"
#include "HuaweiJSONChangeListRequests.h"
#include "JsonStringDecoder.h"
#include "LogCapture.h"

namespace {

using HuaweiChangeListPage::ExactReading;

// The text as the body of a JSON string, as a JSON writer escapes it.
std::string escaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      char code[8];
      std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(c));
      out += code;
    } else {
      out += c;
    }
  }
  return out;
}

std::string entry(const std::string& pathBody, const std::string& inode = "7") {
  return "{\"inode\":" + inode + ",\"changeType\":0,\"fType\":1,\"filePath\":\"" + pathBody +
         "\",\"crTime\":1,\"cTime\":2,\"mTime\":3,\"aTime\":4,\"owner\":5,\"group\":6,"
         "\"size\":18446744073709551615,\"links\":1,\"dosAttr\":32}";
}

// A page whose list text is escaped into the "changeList" string, as the array sends it.
std::string page(const std::vector<std::string>& entries, const std::string& posObj = "\"77\"") {
  std::string list = "[";
  for (const std::string& one : entries) list += (list.size() > 1 ? "," : "") + one;
  return "{\"data\":{\"changeList\":\"" + escaped(list + "]") + "\",\"numChanges\":\"1\",\"progress\":\"50\","
         "\"linkPos\":\"9\",\"linkPosType\":\"1\",\"posObj\":" + posObj + ",\"posOffset\":\"3\",\"posType\":\"2\"},"
         "\"error\":{\"code\":0,\"description\":\"0\"}}";
}

TEST(ExactChangeList, NamesComeOutAsTheArrayHoldsThem) {
  const std::pair<std::string, std::string> rows[] = {
      {"/tenantA/.\\\\./tenantB/payroll.xlsx", "/tenantA/.\\./tenantB/payroll.xlsx"},
      {"say \\\"hi\\\".txt", "say \"hi\".txt"},
      {"back\\\\slash", "back\\slash"},
      {"tab\\u0009x", "tab\tx"},
      {"tab\\tx\\/\\b\\f\\n\\r", "tab\tx/\b\f\n\r"},
      {"it&#39;s", "it's"},
      {"a&amp;b&lt;&gt;&quot;&apos;&#40;&#x29;&#X2a;", "a&b<>\"'()*"},
      {"&amp;lt; a&b a& &#65 &unknown; &#;", "&lt; a&b a& &#65 &unknown; &#;"},
      {"caf\\u00e9 \\u65E5 \\ud83d\\ude00 \\uD83D\\uDE00", "caf\xc3\xa9 \xe6\x97\xa5 \xf0\x9f\x98\x80 \xf0\x9f\x98\x80"},
      {"raw caf\xc3\xa9 \xff", "raw caf\xc3\xa9 \xff"},
      {"&#128512;&#x10FFFF;", "\xf0\x9f\x98\x80\xf4\x8f\xbf\xbf"},
      {"\\\\\\\" ]\\\" \\\"[", "\\\" ]\" \"["},
  };
  for (const auto& [body, name] : rows) {
    _HuaweiSnapshotChangeListInfo info;
    const ExactReading reading = HuaweiChangeListPage::readExact(page({entry(body)}), info);
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
      {page({entry("ok"), entry("a\\x")}), "unknown escape"},
      {page({entry("a\\u12")}), "the change list is not JSON text"},
      {page({entry("a\\u12G4")}), "the change list is not JSON text"},
      {page({entry("a\\ud83d")}), "high surrogate"},
      {page({entry("a\\ud83d\\u0041")}), "high surrogate"},
      {page({entry("a\\ude00")}), "low surrogate"},
      {page({entry("a\\u0000b")}), "NUL"},
      {page({entry("&#0;")}), "no character"},
      {page({entry("&#xD800;")}), "no character"},
      {page({entry("&#1114112;")}), "no character"},
      {page({entry("ends\\")}), "the change list is not JSON text"},
      {page({entry("x\" \"y")}), "the change list is not JSON text"},
      {page({entry("x", "1.5")}), "the change list is not JSON text"},
      {page({entry("x")}, "\"\\ud800\""), "the string \"\\ud800\" cannot be decoded: a high surrogate"},
      {page({entry("x")}) + "x", "the page is not JSON text"},
      {"{\"data\":{\"changeList\":\"[\\x]\"}}", "unknown escape"},
  };
  for (const auto& [text, why] : rows) {
    _HuaweiSnapshotChangeListInfo info;
    info.posObj = "before";
    const ExactReading reading = HuaweiChangeListPage::readExact(text, info);
    EXPECT_EQ(reading.outcome, ExactReading::kUndecodable) << text;
    EXPECT_NE(reading.why.find(why), std::string::npos) << text << " -> " << reading.why;
    EXPECT_EQ(info.posObj + std::to_string(info.changes.size()), "before0");
  }

  HuaweiJSONGetChangeListResult request(1);
  zrtest::LogCapture log;
  EXPECT_FALSE(request.readExactPage(page({entry("a\\ud83d")})));
  EXPECT_TRUE(log.HasLine(-1, "HuaweiJSONGetChangeListResult::parseResponse",
                          "Unable to read the change list with exact file names: the file name \"a\\ud83d\" cannot "
                          "be decoded: a high surrogate without a low one behind it."))
      << log.Dump();
}

// A page that is JSON but lacks a value goes to the document model's readers, which fail on it as
// on any page; one that they would read (a repeated key) fails all the same.
TEST(ExactChangeList, OtherShapesAreLeftToTheDocumentModel) {
  std::string missing = page({entry("a\\u0041")});
  missing.replace(missing.find(",\\\"size\\\":18446744073709551615"), 30, "");
  _HuaweiSnapshotChangeListInfo info;
  ExactReading reading = HuaweiChangeListPage::readExact(missing, info);
  ASSERT_EQ(reading.outcome, ExactReading::kOtherShape) << reading.why;
  EXPECT_EQ(reading.documentText.find("{\"data\":{\"changeList\":[{\"inode\":7,"), 0u) << reading.documentText;
  EXPECT_NE(reading.documentText.find("\"filePath\":\"a\\u0041\""), std::string::npos);

  std::string repeated = page({entry("x")});
  repeated.replace(repeated.find("\\\"links\\\""), 0, "\\\"links\\\":2,");
  reading = HuaweiChangeListPage::readExact(repeated, info);
  EXPECT_EQ(reading.outcome, ExactReading::kOtherShape) << reading.why;
  HuaweiJSONGetChangeListResult request(1);
  zrtest::LogCapture log;
  EXPECT_FALSE(request.readExactPage(repeated));
  EXPECT_TRUE(log.HasLine(-1, "HuaweiJSONGetChangeListResult::parseResponse",
                          "Unable to read the change list with exact file names: a value is repeated or not in the "
                          "array's form."))
      << log.Dump();
}

// Pages of ordinary names, the list as a string or as a plain array, give what today's repair gives.
TEST(ExactChangeList, OrdinaryPagesReadAsRepaired) {
  std::mt19937 random(11);
  const std::vector<std::string> pieces = {"a", "b", " ", "/", ".", "-", "~", "&amp;", "&lt;", "&gt;", "&#40;",
                                           "&#41;", "\xc3\xa9"};
  for (int round = 0; round < 200; ++round) {
    std::vector<std::string> entries;
    for (int i = random() % 20; i > 0; --i) {
      std::string name = "/";
      for (int n = random() % 40; n > 0; --n) name += pieces[random() % pieces.size()];
      entries.push_back(entry(name, std::to_string(random())));
    }
    std::string asSent = page(entries);
    HuaweiJSONGetChangeListResult exact(1), repaired(1);
    ASSERT_TRUE(exact.readExactPage(asSent)) << asSent;
    ASSERT_TRUE(repaired.parseResponse(asSent));
    const _HuaweiSnapshotChangeListInfo a = exact.getChangeListInfo("s"), b = repaired.getChangeListInfo("s");
    EXPECT_EQ(a.posObj + a.numChanges + a.linkPos, b.posObj + b.numChanges + b.linkPos);
    ASSERT_EQ(a.changes.size(), b.changes.size());
    auto other = b.changes.begin();
    for (const auto& change : a.changes) {
      EXPECT_EQ(change.filePath, other->filePath);
      EXPECT_EQ(change.inode, other->inode);
      ++other;
    }
  }
  const std::string plainList = "{\"data\":{\"changeList\":[" + entry("a\\\"b") +
                                "],\"numChanges\":\"1\",\"progress\":\"5\",\"linkPos\":\"1\",\"linkPosType\":\"2\","
                                "\"posObj\":\"3\",\"posOffset\":\"4\",\"posType\":\"5\"}}";
  _HuaweiSnapshotChangeListInfo info;
  ASSERT_EQ(HuaweiChangeListPage::readExact(plainList, info).outcome, ExactReading::kRead);
  EXPECT_EQ(info.changes.front().filePath, "a\"b");
}

// Any text escaped in any of the forms a JSON writer may choose decodes to itself, across the
// decoder's blocks of sixteen bytes.
TEST(ExactChangeList, StringDecoderUndoesEveryEscapeForm) {
  std::mt19937 random(5);
  const std::vector<std::string> characters = {"a", "\"", "\\", "/", "\t", "\n", "\x01", "\x1f", "\xc3\xa9",
                                               "\xe6\x97\xa5", "\xf0\x9f\x98\x80", " "};
  for (int round = 0; round < 5000; ++round) {
    std::string text, encoded;
    for (int n = random() % 80; n > 0; --n) {
      const std::string& c = characters[random() % characters.size()];
      text += c;
      const bool asUnicode = random() % 3 == 0;
      if (c == "\xf0\x9f\x98\x80") {
        encoded += asUnicode ? "\\ud83d\\ude00" : c;
      } else if (c == "\xe6\x97\xa5") {
        encoded += asUnicode ? "\\u65e5" : c;
      } else if (c == "\xc3\xa9") {
        encoded += asUnicode ? "\\u00E9" : c;
      } else if (c == "/") {
        encoded += asUnicode ? "\\/" : "/";
      } else if (c == "\t" && !asUnicode) {
        encoded += "\\t";
      } else if (c == "\n" && !asUnicode) {
        encoded += "\\n";
      } else if (asUnicode) {
        char code[8];
        std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(c[0]));
        encoded += code;
      } else {
        encoded += escaped(c);
      }
    }
    std::string decoded = "keep" + encoded;
    ASSERT_EQ(HuaweiJsonString::decode(decoded, 4), nullptr) << encoded;
    ASSERT_EQ(decoded, "keep" + text) << encoded;
  }
}

}  // namespace
