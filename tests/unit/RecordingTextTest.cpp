// What a recording line is made of: JSON string literals, rewritten string values, and the stand-ins
// of anonymised recordings.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "JsonStrings.h"
#include "RecordingAnonymiser.h"

namespace {

using HuaweiTransport::appendJsonString;
using HuaweiTransport::RecordingAnonymiser;
using HuaweiTransport::rewriteJsonStrings;

TEST(RecordingText, StringLiteralsAreValidJsonAndUtf8) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"plain /path?x=1", R"("plain /path?x=1")"},
      {"quote\" backslash\\", R"("quote\" backslash\\")"},
      {"\n\r\t\x01\x1f", R"("\n\r\t\u0001\u001f")"},
      {"caf\xc3\xa9 \xe6\x97\xa5 \xf0\x9f\x98\x80", "\"caf\xc3\xa9 \xe6\x97\xa5 \xf0\x9f\x98\x80\""},
      // Bytes that are no UTF-8: a lone continuation, an overlong form, a surrogate, a cut sequence.
      {"\xff\x80", R"("\u00ff\u0080")"},
      {"\xc0\xaf", R"("\u00c0\u00af")"},
      {"\xed\xa0\x80", R"("\u00ed\u00a0\u0080")"},
      {"a\xe6\x97", R"("a\u00e6\u0097")"},
      {std::string("nul\0byte", 8), R"("nul\u0000byte")"},
  };
  for (const auto& row : rows) {
    HuaweiTransport::TextBuffer out;
    out.append("x");
    appendJsonString(out, row.first);
    EXPECT_EQ(out.view(), "x" + row.second) << row.second;
  }
}

// Long texts go sixteen bytes at a time and in slices: every special byte at every place of a block,
// escaped quotes across block edges, a character across the edge of a slice. Parsed back, each is
// the text it was.
TEST(RecordingText, LongStringLiteralsParseBackToTheirText) {
  std::vector<std::string> texts;
  for (const std::string special : {"\"", "\\", "\\\"", "\n", "\x01", "\xc3\xa9", "\xe6\x97\xa5", "\xf0\x9f\x98\x80"}) {
    for (std::size_t at = 0; at < 40; ++at) texts.push_back(std::string(at, 'a') + special + std::string(40 - at, 'b'));
  }
  std::string changeList;
  while (changeList.size() < 200000) changeList += R"([{\"inode\":65,\"filePath\":\"/d\xc3\xa9j\xc3\xa0/x\\y.txt\"},)";
  texts.push_back(changeList);
  for (std::size_t shift = 0; shift < 4; ++shift) {
    texts.push_back(std::string(65535 - shift, 'x') + "\xe6\x97\xa5\xf0\x9f\x98\x80" + std::string(100, 'y'));
  }
  for (const std::string& text : texts) {
    HuaweiTransport::TextBuffer literal;
    appendJsonString(literal, text);
    ASSERT_EQ(nlohmann::json::parse(literal.view()).get<std::string>(), text) << literal.view().substr(0, 200);
  }
}

TEST(RecordingText, RewriteSeesEachValueWithItsMemberAndKeepsEverythingElse) {
  const std::string original =
      R"({"a":"1", "b" : ["x","y",3], "c":{"d":"z","e":null}, "f":"q\"r\\", "g":[{"h":"x"}], "i":"x"})";
  std::string text = original;
  std::vector<std::string> seen;
  EXPECT_FALSE(rewriteJsonStrings(text, [&](std::string_view key, std::string_view value, std::string&) {
    seen.push_back(std::string(key) + "=" + std::string(value));
    return false;
  }));
  EXPECT_EQ(text, original);
  EXPECT_EQ(seen, (std::vector<std::string>{"a=1", "b=x", "b=y", "d=z", R"(f=q\"r\\)", "h=x", "i=x"}));

  EXPECT_TRUE(rewriteJsonStrings(text, [](std::string_view key, std::string_view value, std::string& out) {
    if (value != "x" || key == "i") return false;
    out = "XX";
    return true;
  }));
  EXPECT_EQ(text, R"({"a":"1", "b" : ["XX","y",3], "c":{"d":"z","e":null}, "f":"q\"r\\", "g":[{"h":"XX"}], "i":"x"})");

  // Not JSON, or cut short: walked as far as it reads, never beyond the text.
  for (std::string broken : {std::string(R"({"a":"unterminated)"), std::string("]]}}\"x\""), std::string("\"\\"),
                             std::string("plain text")}) {
    const std::string before = broken;
    rewriteJsonStrings(broken, [](std::string_view, std::string_view, std::string& out) {
      out = "R";
      return true;
    });
    EXPECT_LE(broken.size(), before.size() + 1) << before;
  }
}

TEST(RecordingAnonymiser, SameValueSameStandInAcrossResourcesBodiesAndKinds) {
  RecordingAnonymiser anonymiser;
  const std::string device = "/deviceManager/rest/{deviceid}/";
  struct Exchange {
    std::string resource, request, answer;
  };
  std::vector<Exchange> exchanges = {
      {device + "host?filter=NAME:paris-db-01&vstoreId=3", "",
       R"({"data":[{"ID":"4","NAME":"paris-db-01","DESCRIPTION":"backup at 192.168.7.20"}]})"},
      {device + "iscsi_initiator?vstoreId=3", "",
       R"({"data":[{"ID":"iqn.1994-05.com.redhat:paris-db","PARENTID":"4","PARENTNAME":"paris-db-01"}]})"},
      {device + "fc_initiator/21:00:00:24:FF:3C:5A:6B", "", R"({"data":{"ID":"21:00:00:24:FF:3C:5A:6B"}})"},
      {device + "system/", "",
       R"({"data":{"ID":"2102350BVB10K5000042","NAME":"paris-array","WWN":"6a0b1c2d3e4f5061",)"
       R"("IPV6ADDR":"2001:db8::7","DESCRIPTION":"mgmt 192.168.7.20, 10.1.2.3"}})"},
      {device + "xxxxx/sessions", R"({"username":"jdupont", "password":"******", "scope":"0" })",
       R"({"data":{"userid":"jdupont","deviceid":"{deviceid}"}})"},
      {device + "filesystem?filter=NAME::projects", R"({"NAME":"projects","PARENTID":"7"})",
       R"({"data":[{"ID":"7","NAME":"projects","CAPACITY":"1921681720"}]})"},
      {device + "host?filter=NAME:lyon%20app", "", R"({"data":[{"ID":"5","NAME":"lyon app"}]})"},
  };
  const std::vector<Exchange> originals = exchanges;
  std::string all;
  for (Exchange& exchange : exchanges) {
    anonymiser.anonymise(exchange.resource, exchange.request, exchange.answer);
    all += exchange.resource + "\n" + exchange.request + "\n" + exchange.answer + "\n";
  }
  for (const char* original : {"paris-db-01", "paris-db\"", "192.168.7.20", "10.1.2.3", "2001:db8::7",
                               "21:00:00:24:FF:3C:5A:6B", "6a0b1c2d3e4f5061", "2102350BVB10K5000042", "paris-array",
                               "jdupont", "lyon"}) {
    EXPECT_EQ(all.find(original), std::string::npos) << original << " survived in\n" << all;
  }
  // Stand-ins of the shape of their kind, and one per value wherever it stood.
  const std::string host = anonymiser.standInFor("paris-db-01");
  const std::string address = anonymiser.standInFor("192.168.7.20");
  const std::string wwpn = anonymiser.standInFor("21:00:00:24:FF:3C:5A:6B");
  const std::string serial = anonymiser.standInFor("2102350BVB10K5000042");
  EXPECT_EQ(host, "host-1");
  EXPECT_EQ(address, "10.0.0.1");
  EXPECT_EQ(wwpn, "00:00:00:00:00:00:00:01");
  EXPECT_EQ(serial.size(), std::string("2102350BVB10K5000042").size());
  EXPECT_EQ(anonymiser.standInFor("6a0b1c2d3e4f5061").size(), 16u);
  EXPECT_EQ(exchanges[0].resource, device + "host?filter=NAME:" + host + "&vstoreId=3");
  EXPECT_NE(exchanges[0].answer.find("\"NAME\":\"" + host + "\""), std::string::npos);
  EXPECT_NE(exchanges[0].answer.find("backup at " + address), std::string::npos);
  EXPECT_NE(exchanges[1].answer.find("\"PARENTNAME\":\"" + host + "\""), std::string::npos);
  EXPECT_EQ(exchanges[2].resource, device + "fc_initiator/" + wwpn);
  EXPECT_NE(exchanges[3].answer.find("mgmt " + address + ", "), std::string::npos);
  EXPECT_NE(exchanges[4].answer.find(R"("userid":"user-1")"), std::string::npos);
  // What identifies no site keeps its bytes: names of file systems, identifiers, numbers, placeholders.
  EXPECT_EQ(exchanges[4].request, R"({"username":"user-1", "password":"******", "scope":"0" })");
  EXPECT_NE(exchanges[4].answer.find("{deviceid}"), std::string::npos);
  EXPECT_EQ(exchanges[5].resource, originals[5].resource);
  EXPECT_EQ(exchanges[5].request, originals[5].request);
  EXPECT_EQ(exchanges[5].answer, originals[5].answer);
}

}  // namespace
