// A page read as it was sent (no repair, no decoding) gives what the long way gives: the repair
// and the records in the default mode, the decoded list with exact names. Pages are generated
// from the array's own form with hostile values and spoilt shapes mixed in, so that both the
// one-pass reading and every way out of it are taken.
#include <gtest/gtest.h>

#include <list>
#include <random>
#include <string>
#include <vector>

#include "ChangeListText.h"
#include "HuaweiJSONChangeListRequests.h"
#include "LogCapture.h"
#include "changelist/ChangeListPage.h"

namespace {

class SentPages {
 public:
  explicit SentPages(unsigned seed) : random_(seed) {}

  // A page as the array sends it; the list's text escaped into a string.
  std::string page() {
    std::string list = "[";
    for (int n = pick(4); n > 0; --n) list += (list.size() > 1 ? "," : "") + entry();
    std::string listString;
    arraysim::AppendJsonString(listString, list + "]");
    const std::string before = pick(12) == 0 ? "\"numChanges\":\"2[1]\"," : "";
    const std::string posObj = pick(12) == 0 ? "\"7\\\\7\"" : "\"7\"";
    const std::string description = pick(12) == 0 ? "\"a\\\\b\"" : "\"0\"";
    return "{\"data\":{" + before + "\"changeList\":" + listString + (before.empty() ? ",\"numChanges\":\"2\"" : "") +
           ",\"progress\":\"50\",\"linkPos\":\"9\",\"linkPosType\":\"1\",\"posObj\":" + posObj +
           ",\"posOffset\":\"3\",\"posType\":\"2\"},\"error\":{\"code\":0,\"description\":" + description + "}}";
  }

 private:
  int pick(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }

  // Entry text as the array writes it, now and then with another order, white space or a
  // repeated key; every key is there, of its kind, so that no reader ends the process.
  std::string entry() {
    static const char* const kNumbers[] = {"0", "7", "1700000000", "-1", "123456789012345", "1234567890123456",
                                           "18446744073709551615", "18446744073709551616", "00012", "1.5", "2e3"};
    static const char* const kNames[] = {"/export/n00000000000000ab.dat", "a&amp;b&#40;1&#41;", "a&b", "&#0;",
                                         "back\\\\slash", "say \\\"hi\\\"", "br]ack[et\\\"", "x\\u0041y", "",
                                         "tab\\t", "caf\xc3\xa9", "a&#39;s",
                                         "/a/very/long/directory/name/that/runs/past/one/block/of/sixteen/bytes"};
    std::vector<std::string> members;
    for (const char* key : {"inode", "changeType", "fType", "filePath", "crTime", "cTime", "mTime", "aTime", "owner",
                            "group", "size", "links", "dosAttr"}) {
      const std::string value = std::string(key) == "filePath"
                                    ? "\"" + std::string(kNames[pick(sizeof kNames / sizeof *kNames)]) + "\""
                                    : kNumbers[pick(4) ? pick(3) : pick(sizeof kNumbers / sizeof *kNumbers)];
      members.push_back("\"" + std::string(key) + "\":" + (pick(40) == 0 ? " " : "") + value);
    }
    if (pick(20) == 0) std::swap(members[pick(13)], members[pick(13)]);
    if (pick(30) == 0) members.push_back(members[pick(13)]);
    std::string text = "{";
    for (const std::string& member : members) text += (text.size() > 1 ? "," : "") + member;
    return text + "}";
  }

  std::mt19937 random_;
};

std::string described(bool read, const _HuaweiSnapshotChangeListInfo& info) {
  return std::to_string(read) + "|" + zrtest::PageText(info);
}

// One page after another on requests that take over the records of the page before, as a walk's
// requests do, against fresh requests that read the long way.
TEST(SentPage, ReadsAsTheRepairAndTheDecodingRead) {
  zrtest::LogCapture log;  // the lines of refused pages stay out of the test's output
  SentPages generate(3);
  std::list<_HuaweiSnapshotChangeList> repairedRecords, exactRecords;
  int oneAsSent = 0;
  for (int round = 0; round < 3000; ++round) {
    const std::string sent = generate.page();

    HuaweiJSONGetChangeListResult reused(1), longWay(1);
    reused.reuseRecords(std::move(repairedRecords));
    std::string text = sent, repaired = sent;
    const bool read = reused.parseResponse(text);
    HuaweiPageRepair::repair(repaired);
    const bool readLongWay = longWay.readRepairedPage(repaired);
    _HuaweiSnapshotChangeListInfo page = std::move(reused).getChangeListInfo("s");
    ASSERT_EQ(described(read, page), described(readLongWay, longWay.getChangeListInfo("s"))) << sent;
    repairedRecords = std::move(page.changes);

    // With exact names, the same page with its list's first bracket escaped cannot be read as
    // sent: it is decoded, then read.
    HuaweiJSONGetChangeListResult exact(1), decoded(1);
    exact.reuseRecords(std::move(exactRecords));
    text = sent;
    std::string escaped = sent;
    escaped.replace(escaped.find("\"[") + 1, 1, "\\u005b");
    const bool readExact = exact.readExactPage(text);
    const bool readDecoded = decoded.readExactPage(escaped);
    page = std::move(exact).getChangeListInfo("s");
    ASSERT_EQ(described(readExact, page), described(readDecoded, decoded.getChangeListInfo("s"))) << sent;
    exactRecords = std::move(page.changes);
    oneAsSent += text == sent && readExact;
  }
  EXPECT_GT(oneAsSent, 300) << "pages in the array's form have to be read as sent";
}

}  // namespace
