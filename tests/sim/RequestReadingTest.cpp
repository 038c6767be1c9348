#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "http/PercentDecoding.h"
#include "http/StrictJson.h"
#include "store/Query.h"

namespace {

using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(RequestReadingTest, PathsSplitBeforeDecodingAndQueriesDecodeAfterTheSplit) {
  const std::pair<const char*, std::vector<std::string>> paths[] = {
      {"nfshare/22%23", {"nfshare", "22#"}},         {"lun/a%2Fb", {"lun", "a/b"}},
      {"lun/%2E%2E", {"lun", ".."}},                 {"x/100%25%zz%4", {"x", "100%%zz%4"}},
      {"CIFSHARE", {"CIFSHARE"}},                    {"a/R+D%20docs", {"a", "R+D docs"}}};
  for (const auto& [path, segments] : paths) EXPECT_EQ(arraysim::DecodedSegments(path), segments) << path;

  const std::pair<const char*, Pairs> queries[] = {
      {"", {}},
      {"filter=NAME::R%26D%20docs&vstoreId=1", {{"filter", "NAME::R&D docs"}, {"vstoreId", "1"}}},
      {"ID=200%26vstoreId%3D2&&7", {{"ID", "200&vstoreId=2"}, {"7", ""}}},
      {"&a%3Db=c%23", {{"a=b", "c#"}}}};
  for (const auto& [query, parameters] : queries) EXPECT_EQ(arraysim::DecodedQuery(query), parameters) << query;
}

TEST(RequestReadingTest, FilterConditionsSplitOnlyWhereTheSenderWroteAnd) {
  const std::vector<nlohmann::json> records = {{{"ID", "1"}, {"NAME", "R&D and co"}}, {{"ID", "2"}, {"NAME", "co"}}};
  const std::pair<const char*, std::size_t> rows[] = {
      {"filter=NAME::R%26D%20and%20co", 1}, {"filter=NAME::co and ID::2", 1}, {"filter=NAME:co", 2},
      {"filter=NAME::R&D and co", 0}};
  for (const auto& [text, kept] : rows) {
    const auto query = arraysim::Query::Parse(text);
    ASSERT_TRUE(query) << text;
    EXPECT_EQ(query->select(records).size(), kept) << text;
  }
  EXPECT_EQ(arraysim::Query::Parse("ID=200%26vstoreId%3D2")->value("ID"), "200&vstoreId=2");
  EXPECT_FALSE(arraysim::Query::Parse("vstoreId=1&ID=2%26")->value("2"));
}

TEST(RequestReadingTest, BodiesMustBeStrictJsonWithoutDoubledKeys) {
  const std::pair<const char*, bool> rows[] = {
      {R"({"NAME":"n\", \"FSID\":\"20", "FSID":"1" })", true},
      {R"({"A":{"ID":"1"}, "ID":"2", "L":[{"ID":"3"},{"ID":"4"}]})", true},
      {R"({"NAME":"n", "FSID":"20", "FSID":"1" })", false},
      {R"({"A":{"K":"1","K":"2"}})", false},
      {R"({"NAME":"n"", "FSID":"20"})", false},
      {"{\"NAME\":\"a\nb\"}", false},
      {"{\"NAME\":\"\xff\"}", false},
      {R"({"NAME":"a\\"})", true},
      {R"({"NAME":"a\"})", false}};
  for (const auto& [body, accepted] : rows) {
    const auto verdict = arraysim::StrictJson::Parse(body);
    EXPECT_EQ(verdict.accepted(), accepted) << body << ": " << verdict.fault;
    EXPECT_EQ(verdict.value.is_discarded(), !accepted) << body;
  }
  EXPECT_EQ(arraysim::StrictJson::Parse(R"({"I\nD":1, "I\nD":2})").fault, R"(the body holds the key "I\nD" twice)");
}

}  // namespace
