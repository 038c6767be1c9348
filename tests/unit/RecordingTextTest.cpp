// What a recording line is made of: JSON string literals, rewritten string values, and the stand-ins
// of anonymised recordings.
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "JsonLineCheck.h"
#include "JsonStrings.h"
#include "RecordingAnonymiser.h"

namespace {

using HuaweiTransport::appendJsonString;
using HuaweiTransport::rewriteJsonStrings;

std::string literal(const std::string& text) {
  HuaweiTransport::TextBuffer out;
  appendJsonString(out, text);
  return std::string(out.view());
}

// Short texts against their literal; long ones (sixteen bytes a step, in slices) parsed back: every
// special byte at every place of a block, escaped quotes across block edges, a character across the
// edge of a slice.
TEST(RecordingText, StringLiteralsAreValidJsonAndUtf8) {
  const std::vector<std::pair<std::string, std::string>> rows = {
      {"\"\\\n\r\t\x01\x1f", R"("\"\\\n\r\t\u0001\u001f")"},
      // Bytes that are no UTF-8: a lone continuation, an overlong form, a surrogate, a cut sequence.
      {"\xff\x80", R"("\u00ff\u0080")"}, {"\xc0\xaf", R"("\u00c0\u00af")"},
      {"\xed\xa0\x80", R"("\u00ed\u00a0\u0080")"}, {"a\xe6\x97", R"("a\u00e6\u0097")"},
      {std::string("nul\0byte", 8), R"("nul\u0000byte")"},
  };
  for (const auto& row : rows) EXPECT_EQ(literal(row.first), row.second);

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
  for (const std::string& text : texts) ASSERT_EQ(nlohmann::json::parse(literal(text)).get<std::string>(), text);
}

TEST(RecordingText, RewriteSeesEachValueWithItsMemberAndKeepsEverythingElse) {
  std::string text = R"({"a":"1", "b" : ["x","y",3], "c":{"d":"z","e":null}, "f":"q\"r\\", "g":[{"h":"x"}], "i":"x"})";
  std::vector<std::string> seen;
  EXPECT_TRUE(rewriteJsonStrings(text, [&](std::string_view key, std::string_view value, std::string& out) {
    seen.push_back(std::string(key) + "=" + std::string(value));
    out = "XX";
    return value == "x" && key != "i";
  }));
  EXPECT_EQ(seen, (std::vector<std::string>{"a=1", "b=x", "b=y", "d=z", R"(f=q\"r\\)", "h=x", "i=x"}));
  EXPECT_EQ(text, R"({"a":"1", "b" : ["XX","y",3], "c":{"d":"z","e":null}, "f":"q\"r\\", "g":[{"h":"XX"}], "i":"x"})");
  // Not JSON, or cut short: walked as far as it reads, never beyond the text.
  for (std::string broken : {R"({"a":"cut)", "]]}}\"x\"", "\"\\", "plain"}) {
    rewriteJsonStrings(broken, [](std::string_view, std::string_view, std::string&) { return true; });
  }
}

// What may stand in a line as it came: exactly what a JSON reader accepts, without line breaks.
// Hand-picked texts, then every small fault at every place around the edges of the quick steps
// through a page's long string, judged against nlohmann's reader.
TEST(RecordingText, OneLineJsonValueIsWhatAReaderAcceptsWithoutLineBreaks) {
  using HuaweiTransport::isOneLineJsonValue;
  for (const char* valid : {"0", "-0.5e+10", " \t{\"a\" : [true, false, null, \"\\u00e9\\ud83d\\ude00\\/\"]}\t",
                            "\"\xe6\x97\xa5\"", "[]", "{}", "[[{}],{\"\":{}}]"}) {
    EXPECT_TRUE(isOneLineJsonValue(valid)) << valid;
  }
  for (const char* invalid : {"", " ", "01", "1.", "-", "+1", ".5", "1e", "tru", "nul", "[1,]", "{\"a\":1,}", "{\"a\"}",
                              "{1:2}", "[1 2]", "{} {}", "]", "[}", "\"\\ud800\"", "\"\\udc00x\"", "\"\\ud800\\u0041\"",
                              "\"\\x\"", "\"\\u12g4\"", "\"\xc0\xaf\"", "\"a", "{\"a\":1}\n", "[1,\r2]", "[\n]",
                              "\xef\xbb\xbf{}"}) {
    EXPECT_FALSE(isOneLineJsonValue(invalid)) << invalid;
  }
  EXPECT_TRUE(isOneLineJsonValue(std::string(256, '[') + std::string(256, ']')));
  EXPECT_FALSE(isOneLineJsonValue(std::string(257, '[') + std::string(257, ']')));

  std::string list;
  while (list.size() < 300) list += R"({\"inode\":65,\"filePath\":\"/d0/x.txt\"},)";
  const std::string page = R"({"data":{"changeList":"[)" + list + R"(]","progress":"100"},"error":{"code":0}})";
  ASSERT_TRUE(isOneLineJsonValue(page));
  const auto judged = [](const std::string& text) {
    return nlohmann::json::accept(text) && text.find_first_of("\r\n") == std::string::npos;
  };
  for (const std::string fault : {"\"", "\\", "\\\\", "\\\"\\", "\n", "\x1f", "\x7f", "\xc3\xa9", "\xc3",
                                  "\xed\xa0\x80", "\\u00e9", "\\ud83d", "\\/", "\\n"}) {
    for (std::size_t at = 20; at < 120; ++at) {
      for (const bool replacing : {false, true}) {
        std::string text = page;
        if (replacing) text.erase(at, 1);
        text.insert(at, fault);
        ASSERT_EQ(isOneLineJsonValue(text), judged(text)) << text.substr(0, 140);
      }
    }
  }
}

// (The login's user, the serial, the site's addresses and the host's relations in a whole
// session: e2e_recording.)
TEST(RecordingAnonymiser, SameValueSameStandInAcrossResourcesBodiesAndKinds) {
  HuaweiTransport::RecordingAnonymiser anonymiser;
  const std::string device = "/deviceManager/rest/{deviceid}/";
  // Resource, request, answer of each exchange, in turn.
  std::vector<std::string> texts = {
      device + "host?filter=NAME:paris-db-01&vstoreId=3", "",
      R"({"data":[{"ID":"4","NAME":"paris-db-01","DESCRIPTION":"backup at 192.168.7.20"}]})",
      device + "fc_initiator/21:00:00:24:FF:3C:5A:6B", "", R"({"data":{"ID":"21:00:00:24:FF:3C:5A:6B"}})",
      device + "system/", "",
      R"({"data":{"ID":"2102350BVB10K5000042","NAME":"paris-array","WWN":"6a0b1c2d3e4f5061",)"
      R"("IPV6ADDR":"2001:db8::7","DESCRIPTION":"mgmt 192.168.7.20, 10.1.2.3"}})",
      // Addresses at either end of a text or before a full stop; dotted texts that hold none.
      device + "host?filter=NAME:lyon%20app", "",
      R"({"data":[{"ID":"5","NAME":"lyon app","DESCRIPTION":"10.1.2.3 first, at 10.1.2.3. Then )"
      R"(a.txt,b1.log,v2.0,1.2.3.4.5,.5.6.7.8"}]})",
      // What identifies no site keeps its bytes: names of file systems, identifiers, numbers.
      device + "filesystem?filter=NAME::projects", R"({"NAME":"projects","PARENTID":"7"})",
      R"({"data":[{"ID":"7","NAME":"projects","CAPACITY":"1921681720"}]})",
  };
  const std::vector<std::string> originals = texts;
  std::string all;
  for (std::size_t i = 0; i < texts.size(); i += 3) {
    anonymiser.anonymise(texts[i], texts[i + 1], texts[i + 2]);
    all += texts[i] + "\n" + texts[i + 1] + "\n" + texts[i + 2] + "\n";
  }
  for (const char* original : {"192.168.7.20", "10.1.2.3", "21:00:00:24:FF:3C:5A:6B", "6a0b1c2d3e4f5061", "paris-array",
                               "lyon"}) {
    EXPECT_EQ(all.find(original), std::string::npos) << original << " survived in\n" << all;
  }
  // Stand-ins of the shape of their kind, one per value wherever it stood.
  EXPECT_EQ(anonymiser.standInFor("paris-db-01"), "host-1");
  EXPECT_EQ(anonymiser.standInFor("192.168.7.20"), "10.0.0.1");
  EXPECT_EQ(anonymiser.standInFor("21:00:00:24:FF:3C:5A:6B"), "00:00:00:00:00:00:00:01");
  EXPECT_EQ(anonymiser.standInFor("6a0b1c2d3e4f5061").size(), 16u);
  EXPECT_EQ(texts[0], device + "host?filter=NAME:host-1&vstoreId=3");
  for (const char* expected : {R"("NAME":"host-1")", "backup at 10.0.0.1", "fc_initiator/00:00:00:00:00:00:00:01",
                               "mgmt 10.0.0.1, 10.0.0.2\"",
                               "\"10.0.0.2 first, at 10.0.0.2. Then a.txt,b1.log,v2.0,1.2.3.4.5,.5.6.7.8\""}) {
    EXPECT_NE(all.find(expected), std::string::npos) << expected << " missing in\n" << all;
  }
  EXPECT_EQ(std::vector<std::string>(texts.end() - 3, texts.end()),
            std::vector<std::string>(originals.end() - 3, originals.end()));
}

}  // namespace
