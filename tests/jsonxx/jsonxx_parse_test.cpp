#include "WrittenText.h"
#include "jsonxx.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace {

using jsonxx::Array;
using jsonxx::Object;
using jsonxx::Value;

std::string nested_arrays(int depth) {
  return "{\"a\":" + std::string(depth, '[') + std::string(depth, ']') + "}";
}

struct ParseCase {
  const char* name;
  std::string input;
  bool ok;
  std::string tree;  // as the writer renders the object afterwards
};

class ObjectParse : public ::testing::TestWithParam<ParseCase> {};

TEST_P(ObjectParse, GivesResultAndTree) {
  Object object;
  EXPECT_EQ(object.parse(GetParam().input), GetParam().ok);
  EXPECT_EQ(written(object), GetParam().tree);
}

const ParseCase kParseCases[] = {
    {"EmptyText", "", false, "{}"},
    {"SpacesEverywhere", " \t\n{ \"a\" :\r[ 1 , 2 ] }\n", true, "{\"a\": [1, 2]}"},
    {"Nested", R"({"a":{"b":[true,false,null,"s",{}]}})", true, R"({"a": {"b": [true, false, null, "s", {}]}})"},
    {"KeysComeOutSorted", R"({"b":1,"a":2})", true, R"({"a": 2, "b": 1})"},
    {"RepeatedKeyLastWins", R"({"a":1,"a":2})", true, R"({"a": 2})"},
    {"FailureKeepsEarlierMembers", R"({"a":1, "b":tru})", false, R"({"a": 1})"},
    {"UnquotedKeyFails", "{a:1}", false, "{}"},
    {"TextBehindBraceIgnored", R"({"a":1} trailing [)", true, R"({"a": 1})"},
    // Leniency
    {"SingleQuotes", "{'a':'b'}", true, R"({"a": "b"})"},
    {"OpeningQuoteEscapeOnly", R"({'a':'it\'s \"q\"'})", true, R"({"a": "it's \\\"q\\\""})"},
    {"LineCommentBeforeKey", "{// note\n\"a\":1}", true, R"({"a": 1})"},
    {"LineCommentInsideKeyword", "{\"a\":t// x\nrue}", true, R"({"a": true})"},
    {"BlockCommentRejected", R"({/* note */"a":1})", false, "{}"},
    {"CommentUpToEndOfInput", R"({"a":1 // no end)", false, R"({"a": 1})"},
    {"KeyWithoutValue", R"({"a":})", true, "{}"},
    {"CommaCountsAsNull", R"({"a":,"b":1})", true, R"({"a": null, "b": 1})"},
    {"TrailingCommas", R"({"a":[1,2,],"b":3,})", true, R"({"a": [1, 2], "b": 3})"},
    // Numbers are what the stream's long double extraction accepts.
    {"StreamNumbers", R"({"a":+5,"b":.5,"c":1e3,"d":-0.25,"e":007})", true,
     R"({"a": 5, "b": 0.5, "c": 1000, "d": -0.25, "e": 7})"},
    {"HexReadsLeadingZeroOnly", R"({"a":0x10})", false, R"({"a": 0})"},
    {"IncompleteExponentFails", R"({"a":1e,"b":2})", false, "{}"},
    {"OverflowFails", R"({"a":1e99999})", false, "{}"},
    {"UnderflowIsZero", R"({"a":1e-99999})", true, R"({"a": 0})"},
    // Escapes
    {"NamedEscapes", R"({"a":"\/\\\b\f\n\r\t"})", true, R"({"a": "\/\\\b\f\n\r\t"})"},
    {"UnicodeEscapeAddsLowByte", R"({"a":"\u0041\u20ac"})", true, R"({"a": "A\uffffffac"})"},
    {"UnicodeEscapeStopsAtNonHex", R"({"a":"\u4g00"})", true, R"({"a": "\u0004"})"},
    {"UnicodeEscapeReadsFourCharacters", R"({"a":"\u41"})", false, "{}"},
    {"UnknownEscapeKept", R"({"a":"\q"})", true, R"({"a": "\\q"})"},
    // Depth
    {"NestingWithinLimit", nested_arrays(Object::kMaxDepth - 1), true,
     "{\"a\": " + std::string(Object::kMaxDepth - 1, '[') + std::string(Object::kMaxDepth - 1, ']') + "}"},
    {"NestingBeyondLimitFails", nested_arrays(Object::kMaxDepth), false, "{}"},
    {"AbsurdNestingFails", "{\"a\":" + std::string(100000, '['), false, "{}"},
};

INSTANTIATE_TEST_SUITE_P(Cases, ObjectParse, ::testing::ValuesIn(kParseCases),
                         [](const auto& info) { return std::string(info.param.name); });

// A stream goes on behind the closing brace; a failed parse frees what was there before.
TEST(ObjectParse, StopsBehindTheClosingBraceAndFreesEarlierContent) {
  std::istringstream input(R"({"a":1} {"b":2})");
  Object first, second;
  ASSERT_TRUE(first.parse(input));
  ASSERT_TRUE(second.parse(input));
  EXPECT_EQ(written(second), R"({"b": 2})");
  EXPECT_FALSE(second.parse("nonsense"));
  EXPECT_TRUE(second.empty());
}

// The reader remembers the order of keys between texts on a thread: a text of another shape at
// the same depths, with fewer or more keys, must still give its own tree.
TEST(ObjectParse, KeyOrderOfEarlierTextsOnlyGuides) {
  const char* const texts[] = {
      "{\"z\":{\"e\":1,\"d\":2,\"c\":3,\"b\":4,\"a\":5},\"y\":[{\"b\":1,\"a\":2}]}",
      "{\"a\":{\"b\":1,\"a\":2},\"b\":[{\"c\":1,\"a\":2,\"b\":3,\"d\":4,\"a\":5}]}",
      "{\"m\":{\"x\":1},\"a\":{\"c\":1,\"e\":2,\"a\":3,\"d\":4,\"b\":5,\"f\":6}}",
  };
  const char* const trees[] = {
      "{\"y\": [{\"a\": 2, \"b\": 1}], \"z\": {\"a\": 5, \"b\": 4, \"c\": 3, \"d\": 2, \"e\": 1}}",
      "{\"a\": {\"a\": 2, \"b\": 1}, \"b\": [{\"a\": 5, \"b\": 3, \"c\": 1, \"d\": 4}]}",
      "{\"a\": {\"a\": 3, \"b\": 5, \"c\": 1, \"d\": 4, \"e\": 2, \"f\": 6}, \"m\": {\"x\": 1}}",
  };
  for (int round = 0; round < 2; ++round) {
    for (int i = 0; i < 3; ++i) {
      Object object;
      ASSERT_TRUE(object.parse(texts[i])) << texts[i];
      EXPECT_EQ(written(object), trees[i]) << texts[i];
    }
  }
}

TEST(ValueParse, TakesFirstKindThatFits) {
  const struct {
    const char* input;
    Value::Type type;
  } cases[] = {
      {"'x'", Value::Type::String},  {" 12 ", Value::Type::Number}, {"false", Value::Type::Boolean},
      {"null", Value::Type::Null},   {",", Value::Type::Null},      {"[1,[2]]", Value::Type::Array},
      {"{}", Value::Type::Object},   {"[1,", Value::Type::Invalid}, {"nul", Value::Type::Invalid},
  };
  for (const auto& c : cases) {
    Value value;
    EXPECT_EQ(value.parse(std::string(c.input)), c.type != Value::Type::Invalid) << c.input;
    EXPECT_EQ(value.type(), c.type) << c.input;
  }
}

// Texts whose trees take many times their size: each is read within its memory bound, or refused
// whole, with the reason kept for the caller, and what was read of it freed.
struct BoundCase {
  const char* name;
  const char* element;  // repeated, comma-separated, under "data"
  std::size_t bytes;
  bool read;
};

std::string repeated(const std::string& element, std::size_t bytes) {
  std::string text = "{\"data\":[";
  text.reserve(bytes + element.size() + 16);
  while (text.size() < bytes) text += element + ",";
  text.back() = ']';
  return text + "}";
}

std::size_t heap_in_use() { return mallinfo2().uordblks; }

class MemoryBound : public ::testing::TestWithParam<BoundCase> {};

TEST_P(MemoryBound, TreeStaysWithinTheBoundOrTheTextIsRefused) {
  const BoundCase& row = GetParam();
  const std::string text = repeated(row.element, row.bytes);
  const std::size_t before = heap_in_use();
  {
    Object object;
    EXPECT_EQ(object.parse(text), row.read);
    EXPECT_EQ(jsonxx::parse_stopped_at_memory_bound(), !row.read);
    EXPECT_EQ(object.empty(), !row.read);
    // The block pool (4 MiB at most) is not malloc's; the bound covers it as well.
    EXPECT_LE(heap_in_use() - std::min(before, heap_in_use()), jsonxx::memory_bound(text.size()));
  }
  EXPECT_LE(heap_in_use(), before + (std::size_t{1} << 20)) << "what was read goes back";
  // The next parse starts afresh.
  Object small;
  EXPECT_TRUE(small.parse("{\"a\":[{}]}"));
  EXPECT_FALSE(jsonxx::parse_stopped_at_memory_bound());
}

const char kRecord[] =
    R"({"ID":"123456","NAME":"filesystem_123456","PARENTID":"0","CAPACITY":"2147483648","ALLOCTYPE":1,)"
    R"("HEALTHSTATUS":"1","RUNNINGSTATUS":"27","SECTORSIZE":512,"DESCRIPTION":"records as an array lists them"})";

INSTANTIATE_TEST_SUITE_P(
    Shapes, MemoryBound,
    ::testing::Values(BoundCase{"RecordsOf2MB", kRecord, 2u << 20, true},
                      BoundCase{"ZerosOf400KB", "0", 400u << 10, true},
                      BoundCase{"ZerosOf2MB", "0", 2u << 20, false},
                      BoundCase{"EmptyObjectsOf2MB", "{}", 2u << 20, false}),
    [](const ::testing::TestParamInfo<BoundCase>& info) { return std::string(info.param.name); });

}  // namespace
