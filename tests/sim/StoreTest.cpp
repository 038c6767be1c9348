#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "store/Query.h"

namespace {

using nlohmann::json;

// The identifiers of a list answer, whichever shape it came in.
std::vector<std::string> Ids(const json& data) {
  std::vector<std::string> ids;
  if (data.is_object() && data.contains("ID")) ids.push_back(data["ID"]);
  if (data.is_array()) {
    for (const auto& item : data) ids.push_back(item["ID"]);
  }
  return ids;
}

TEST(StoreQueryTest, FiltersRangesAndMalformedQueries) {
  const std::vector<json> records = {{{"ID", "1"}, {"NAME", "pool1"}, {"FSID", "12"}},
                                     {{"ID", "2"}, {"NAME", "pool10"}, {"FSID", "1"}},
                                     {{"ID", "15"}, {"NAME", "other"}}};
  const std::pair<const char*, std::vector<std::string>> rows[] = {
      {"", {"1", "2", "15"}},           {"filter=NAME:pool1", {"1", "2"}},
      {"&filter=NAME::pool1", {"1"}},   {"filter=ID:1", {"1"}},
      {"filter=FSID:1", {"2"}},         {"filter=NAME:pool&filter=FSID::1", {"2"}},
      {"filter=NAME:o and ID::15", {"15"}}, {"range=[1-3]", {"2", "15"}},
      {"filter=NAME:pool&range=[0-1]&7", {"1"}}, {"filter=OWNER::x", {}}};
  for (const auto& [text, expected] : rows) {
    const auto query = arraysim::Query::Parse(text);
    ASSERT_TRUE(query) << text;
    EXPECT_EQ(Ids(json(query->select(records))), expected) << text;
  }
  for (const char* malformed : {"filter=NAME", "filter=:x", "range=[3-1]", "range=1-2", "range=[a-2]"}) {
    EXPECT_FALSE(arraysim::Query::Parse(malformed)) << malformed;
  }
}

}  // namespace
