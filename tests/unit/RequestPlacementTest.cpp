// The bytes each place writes, and plain concatenation kept for ordinary values. That hostile
// values reach the array as passed, add no member, parameter or segment, and are refused with
// a logged reason is proven end to end for every family (e2e_hostile, HostileValuesTest).
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "HandBuiltBody.h"
#include "HuaweiJSONLunGroupRequests.h"
#include "HuaweiJSONProvisioningRequests.h"
#include "RequestPlacement.h"
#include "ResourcePath.h"

namespace {

TEST(BodyPlacement, EscapesOnlyWhatJsonNeeds) {
  EXPECT_EQ(RequestPlacement::jsonString(std::string("a\nb\t\x01\x7f\"\\", 8)), "a\\nb\\t\\u0001\\u007f\\\"\\\\");
  EXPECT_EQ(RequestPlacement::jsonString("/fs1/R&D docs caf\xc3\xa9"), "/fs1/R&D docs caf\xc3\xa9");
  EXPECT_EQ(RequestPlacement::jsonNumberOrString("21"), "21");
  EXPECT_EQ(RequestPlacement::jsonNumberOrString(""), "\"\"");
}

struct PlacedCase {
  std::string value;
  std::string placed;
};

TEST(QueryPlacement, EncodesWhatWouldChangeTheQueryAndKeepsTheFilterSyntax) {
  for (const PlacedCase& row : std::vector<PlacedCase>{
           {"200&vstoreId=2&ASSOCIATEOBJTYPE=11", "200%26vstoreId%3D2%26ASSOCIATEOBJTYPE%3D11"},
           {"NAME:R&D docs", "NAME:R%26D%20docs"},
           {"NAME:shareB#", "NAME:shareB%23"},
           {"100%+1;a", "100%25%2B1%3Ba"},
           {"a\nb\x7f", "a%0Ab%7F"},
           {"caf\xc3\xa9", "caf%C3%A9"},
           {"\"<>\\^`{|}", "%22%3C%3E%5C%5E%60%7B%7C%7D"},
           {"NAME:q?x", "NAME:q%3Fx"},
           {"NAME::p_1-2.x~!$'()*,:@/[0-1]", "NAME::p_1-2.x~!$'()*,:@/[0-1]"}}) {
    EXPECT_EQ(RequestPlacement::queryValue(row.value), row.placed);
  }
}

TEST(PathPlacement, RefusesWhatIsNoSingleSegmentAndEncodesTheRest) {
  for (const std::string& refused : {std::string(), std::string("."), std::string(".."), std::string("../lun/200#"),
                                     std::string("a/b"), std::string("..\\lun"), std::string("a\nb"),
                                     std::string("x\x7f"), std::string("\x01")}) {
    EXPECT_NE(RequestPlacement::pathSegmentRefusal(refused), nullptr) << refused;
  }
  const PlacedCase placed[] = {{"22#", "22%23"}, {"R&D docs", "R&D%20docs"}, {"q?x%", "q%3Fx%25"},
                               {"a;b=c", "a%3Bb%3Dc"}, {"...", "..."}, {"%2e%2e", "%252e%252e"},
                               {"caf\xc3\xa9", "caf%C3%A9"}, {"12-ab_3.x~:@+", "12-ab_3.x~:@+"}};
  for (const PlacedCase& row : placed) {
    EXPECT_EQ(RequestPlacement::pathSegmentRefusal(row.value), nullptr) << row.value;
    EXPECT_EQ(RequestPlacement::pathSegment(row.value), row.placed);
  }
}

TEST(PathPlacement, TheFirstRefusalNamesItsArgument) {
  const ResourcePath path = ResourcePath("lungroup").segment("../lun/200#", "lunGroupId").segment("..", "other");
  ASSERT_TRUE(path.refusal().refused());
  EXPECT_THAT(path.refusal().text(), testing::StartsWith("The input parameter [lunGroupId] cannot be placed"));
  EXPECT_FALSE(ResourcePath("lun").id("", "lun identifier").refusal().refused());
  EXPECT_EQ(ResourcePath("nfshare").add("filter", "FSID:1").bareVstore("2&x=1").str(), "nfshare?filter=FSID:1&2%26x%3D1");
}

// Ordinary values, in each place's own alphabet, come out exactly as plain concatenation put them.
std::string ordinaryValue(std::mt19937& random, const std::string& alphabet) {
  std::uniform_int_distribution<std::size_t> length(1, 24);
  std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
  std::string value;
  for (std::size_t n = length(random); n > 0; --n) value += alphabet[pick(random)];
  return value;
}

TEST(OrdinaryValues, EveryBuilderSendsThePlainConcatenation) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  const std::string bodyAlphabet = letters + " -_.:/@#&%+=?!$'()*,;[]{}<>|~^`\xc3\xa9";
  const std::string queryAlphabet = letters + "-_.:/@!$'()*,[]~";
  const std::string pathAlphabet = letters + "-_.:@!$&'()*+,~";
  std::mt19937 random(20);
  for (int round = 0; round < 3000; ++round) {
    const std::string v = ordinaryValue(random, bodyAlphabet);
    const std::string w = ordinaryValue(random, bodyAlphabet);
    EXPECT_EQ(HandBuiltBody().add("NAME", v).addPiece("vstoreId", w).str(),
              "{\"NAME\":\"" + v + "\" ,\"vstoreId\":\"" + w + "\" }");
    EXPECT_EQ(HandBuiltPiece::quoted("ID", v) + HandBuiltPiece::vstore(w),
              "\"ID\":\"" + v + "\",\"vstoreId\":\"" + w + "\" ");

    const std::string q = ordinaryValue(random, queryAlphabet);
    const std::string s = ordinaryValue(random, queryAlphabet);
    EXPECT_EQ(ResourcePath("cifshare").add("filter", "NAME:" + q).vstore(s).str(),
              "cifshare?filter=NAME:" + q + "&vstoreId=" + s);
    EXPECT_EQ(QueryPieces().add("ID", q).add("ASSOCIATEOBJID", s).str(), "ID=" + q + "&ASSOCIATEOBJID=" + s);
    EXPECT_EQ(HuaweiJSONRemoveAssociateWithLunGroup(1, q, HuaweiApiValue::OBJECT_TYPE_LUN, s, "-12345").getResourceUrl(),
              "lungroup/associate?&ID=" + q + "&ASSOCIATEOBJID=" + s + "&ASSOCIATEOBJTYPE=11");

    const std::string p = ordinaryValue(random, pathAlphabet);
    if (p == "." || p == "..") continue;
    EXPECT_EQ(ResourcePath("lun").segment(p, "lunId").vstore(s).str(), "lun/" + p + "?vstoreId=" + s);
    EXPECT_EQ(HuaweiJSONDeleteLun(1, p, "-12345").getResourceUrl(), "lun/" + p + "?");
  }
}

}  // namespace
