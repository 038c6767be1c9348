// The reader of plain change-list pages has to give exactly what the document model gives wherever
// it accepts a text: generated pages with the odd numbers, names and layouts of real ones, and those
// pages spoilt at random. (The plain reader of error objects is held to the model in ErrorCodeTest.)
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "ChangeListPlainPage.h"
#include "ChangeListText.h"
#include "HuaweiJSONChangeListRequests.h"

namespace {

class AnswerGenerator {
 public:
  explicit AnswerGenerator(unsigned seed) : random_(seed) {}

  std::string page() {
    std::vector<std::string> members = {quoted("changeList") + ":" + list()};
    for (const char* key : {"numChanges", "progress", "linkPos", "linkPosType", "posObj", "posOffset", "posType"}) {
      members.push_back(quoted(key) + ":" + quoted(std::to_string(random_() % 1000)));
    }
    return object({quoted("data") + ":" + object(members), quoted("error") + ":" + error()});
  }

  // One to three bytes replaced, dropped or doubled.
  std::string spoilt(std::string text) {
    static const char kBytes[] = "{}[]\":,'/\\-+.e0123456789 \ttfn&x";
    for (int n = 1 + pick(3); n > 0 && !text.empty(); --n) {
      const std::size_t at = pick(text.size());
      switch (pick(3)) {
        case 0: text[at] = kBytes[pick(sizeof kBytes - 1)]; break;
        case 1: text.erase(at, 1); break;
        default: text.insert(at, text.substr(at, 1 + pick(8))); break;
      }
    }
    return text;
  }

 private:
  std::size_t pick(std::size_t n) { return random_() % n; }
  std::string space() { return std::string(pick(4) ? 0 : 1 + pick(2), " \n\t\v"[pick(4)]); }
  std::string quoted(const std::string& text) { return space() + "\"" + text + "\"" + space(); }
  std::string number() {
    static const char* const kNumbers[] = {"0", "-0", "7", "-1", "007", "4294967295", "4294967296", "-2147483649",
                                           "9223372036854775808", "-9223372036854775808", "18446744073709551615",
                                           "-18446744073709551615", "18446744073709551616", "1.5", "1e3", "+5"};
    return space() + (pick(8) ? std::to_string(random_()) : kNumbers[pick(sizeof kNumbers / sizeof *kNumbers)]);
  }
  std::string junk(int depth) {
    switch (depth > 0 ? pick(6) : pick(3)) {
      case 0: return number();
      case 1: return quoted(pick(2) ? escapes() : "text");
      case 2: return space() + (pick(2) ? "true" : "null");
      case 3: return space() + "[" + junk(depth - 1) + "," + junk(depth - 1) + "]";
      default: return object({quoted("k") + ":" + junk(depth - 1)});
    }
  }
  // Escapes in runs that cross the 64-byte blocks in which long strings are skipped.
  std::string escapes() {
    static const char* const kPieces[] = {"a", "\\\"", "\\\\", "\\\\\\\"", "\\u00e9", "\\/", "text of 16 bytes"};
    std::string text;
    for (std::size_t n = pick(3) ? pick(4) : pick(120); n > 0; --n) text += pick(200) ? kPieces[pick(7)] : "\\u0g1";
    return text;
  }
  std::string object(std::vector<std::string> members) {
    if (pick(3) == 0) members.push_back(quoted("extra") + ":" + junk(2));
    std::shuffle(members.begin(), members.end(), random_);
    std::string text = space() + "{";
    for (const std::string& member : members) text += (text.back() == '{' ? "" : ",") + member;
    return text + "}" + space();
  }
  std::string list() {
    static const char* const kNames[] = {"/a b.txt", "a&amp;b&#40;1&#41;", "x&lt;y&", "\xc3\xa9t\xc3\xa9", "p"};
    std::vector<std::string> entries;
    for (int n = static_cast<int>(pick(4)); n > 0; --n) {
      std::vector<std::string> members = {quoted("filePath") + ":" + quoted(kNames[pick(5)])};
      for (const char* key : {"inode", "changeType", "fType", "crTime", "cTime", "mTime", "aTime", "owner", "group",
                              "size", "links", "dosAttr"}) {
        members.push_back(quoted(key) + ":" + number());
      }
      entries.push_back(object(members));
    }
    std::string text = space() + "[";
    for (const std::string& entry : entries) text += (text.back() == '[' ? "" : ",") + entry;
    return text + "]";
  }
  std::string error() { return object({quoted("code") + ":" + number(), quoted("description") + ":" + quoted("d")}); }

  std::mt19937_64 random_;
};

TEST(PlainReading, PagesReadAsTheDocumentModelReadsThem) {
  AnswerGenerator generate(11);
  int accepted = 0;
  for (int round = 0; round < 6000; ++round) {
    const std::string text = round % 2 ? generate.spoilt(generate.page()) : generate.page();
    _HuaweiSnapshotChangeListInfo plain;
    if (!HuaweiChangeListPage::readPlain(text, plain)) continue;
    ++accepted;
    HuaweiJSONGetChangeListResult fast(1), model(1);
    ASSERT_EQ(fast.readRepairedPage(text), model.readRepairedPage(text, true)) << text;
    ASSERT_EQ(zrtest::PageText(fast.getChangeListInfo("s")), zrtest::PageText(model.getChangeListInfo("s"))) << text;
  }
  EXPECT_GT(accepted, 1500) << "the plain way has to be the common one";
}

}  // namespace
