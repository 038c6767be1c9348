#include "WrittenText.h"
#include "jsonxx.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>

namespace {

using jsonxx::Array;
using jsonxx::Null;
using jsonxx::Number;
using jsonxx::Object;
using jsonxx::String;
using jsonxx::Value;

Object parsed(const std::string& text) {
  Object object;
  EXPECT_TRUE(object.parse(text)) << text;
  return object;
}

TEST(Value, StartsInvalidAndResetKeepsTheTag) {
  EXPECT_EQ(Value().type(), Value::Type::Invalid);
  EXPECT_EQ(written(Value()), "");
  Value value(String("text"));
  value.reset();
  EXPECT_TRUE(value.is<String>());
  EXPECT_EQ(written(value), "");
  value = Value(Object());  // usable again
  EXPECT_TRUE(value.is<Object>());
}

TEST(Object, HasMatchesOnlyTheStoredKind) {
  const Object object = parsed(R"({"n":1,"s":"12","b":true,"z":null,"a":[1],"o":{}})");
  const struct {
    const char* key;
    bool number, string, boolean, null, array, object;
  } rows[] = {
      {"n", true, false, false, false, false, false},  {"s", false, true, false, false, false, false},
      {"b", false, false, true, false, false, false},  {"z", false, false, false, true, false, false},
      {"a", false, false, false, false, true, false},  {"o", false, false, false, false, false, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.key);
    EXPECT_TRUE(object.has<Value>(row.key));
    EXPECT_EQ(object.has<Number>(row.key), row.number);
    EXPECT_EQ(object.has<String>(row.key), row.string);
    EXPECT_EQ(object.has<bool>(row.key), row.boolean);
    EXPECT_EQ(object.has<Null>(row.key), row.null);
    EXPECT_EQ(object.has<Array>(row.key), row.array);
    EXPECT_EQ(object.has<Object>(row.key), row.object);
  }
  EXPECT_FALSE(object.has<Value>("missing"));
}

TEST(Object, GetGivesAReferenceIntoTheTree) {
  Object object = parsed(R"({"s":"a","o":{"n":1}})");
  object.get<String>("s") += "b";
  object.get<Object>("o").import("m", Value(2));
  EXPECT_EQ(written(object), R"({"o": {"m": 2, "n": 1}, "s": "ab"})");
}

TEST(Object, CopiesAreDeep) {
  Object original = parsed(R"({"a":{"b":["x"]}})");
  Object copy(original);
  Object assigned;
  assigned = original;
  Value value(original);
  copy.get<Object>("a").get<Array>("b") = Value("changed");
  assigned.get<Object>("a").import("c", Value(1));
  value.get<Object>().import("a", Value(Null()));
  EXPECT_EQ(written(original), R"({"a": {"b": ["x"]}})");
  EXPECT_EQ(written(copy), R"({"a": {"b": ["changed"]}})");
  EXPECT_EQ(written(assigned), R"({"a": {"b": ["x"], "c": 1}})");
}

TEST(Object, SelfAssignmentAndSelfImportChangeNothing) {
  Object object = parsed(R"({"a":[1,{"b":"c"}]})");
  const Object& alias = object;
  object = alias;
  object.import(alias);
  object.import("a", object.get<Value>("a"));  // the value replaced is the one given
  EXPECT_EQ(written(object), R"({"a": [1, {"b": "c"}]})");
}

TEST(Object, ImportReplacesEqualKeys) {
  Object object = parsed(R"({"a":1,"b":2})");
  object.import(parsed(R"({"b":"x","c":3})"));
  object.import("a", Value(true));
  EXPECT_EQ(written(object), R"({"a": true, "b": "x", "c": 3})");
}

TEST(Object, BuildsByPairsAndForgetsPendingKeyOnImport) {
  Object object;
  object << "k" << Value(1);
  object << "dropped";
  object.import("i", Value(2));
  object << "l" << "v";
  EXPECT_EQ(written(object), R"({"i": 2, "k": 1, "l": "v"})");
}

TEST(Array, AssigningAValueWrapsIt) {
  const Object source = parsed(R"({"list":[1,2]})");
  Array array;
  array.import(Value(5));
  array = source.get<Value>("list");
  ASSERT_EQ(array.size(), 1u);
  EXPECT_EQ(written(array), "[[1, 2]]");
  array = array.get<Value>(0);  // an element of its own
  EXPECT_EQ(written(array), "[[1, 2]]");
}

TEST(Array, CopiesAreDeepAndSelfAssignmentIsHarmless) {
  Array original;
  original.import(Value(parsed(R"({"a":"b"})")));
  Array copy(original);
  copy.get<Object>(0).import("a", Value("c"));
  original = static_cast<const Array&>(original);
  EXPECT_EQ(written(original), R"([{"a": "b"}])");
  EXPECT_EQ(written(copy), R"([{"a": "c"}])");
}

TEST(Writer, EscapesStrings) {
  const struct {
    std::string text;
    const char* out;
  } cases[] = {
      {"plain text", R"("plain text")"},
      {"\"\\/", R"("\"\\\/")"},
      {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
      {std::string("\0\x01\x1f", 3), R"("\u0000\u0001\u001f")"},
      {"\x7f ~", "\"\x7f ~\""},
      {"caf\xc3\xa9", R"("caf\uffffffc3\uffffffa9")"},
  };
  for (const auto& c : cases) EXPECT_EQ(written(Value(c.text)), c.out);
}

TEST(Writer, UsesTheStreamsNumberFormatting) {
  std::ostringstream out;
  out << std::fixed << std::setprecision(2) << parsed(R"({"a":1.5,"b":[false,null]})");
  EXPECT_EQ(out.str(), R"({"a": 1.50, "b": [false, null]})");
}

// The assertion ends the process in every build type, NDEBUG included.

TEST(JsonxxDeathTest, GetOfMissingOrMistypedKeyAborts) {
  const Object object = parsed(R"({"n":1})");
  const char* expected = R"(\[JSONXX\] expression 'has<T>\(key\)' failed at .*jsonxx\.h:[0-9]+ -> )";
  EXPECT_DEATH(object.get<String>("missing"), expected);
  EXPECT_DEATH(object.get<String>("n"), expected);
}

TEST(JsonxxDeathTest, ValueGetOfAnotherKindAborts) {
  const Value string("s");
  const Value number(1);
  EXPECT_DEATH(number.get<String>(), R"(\[JSONXX\] expression 'is<String>\(\)' failed)");
  EXPECT_DEATH(string.get<Number>(), R"(\[JSONXX\] expression 'is<Number>\(\)' failed)");
  EXPECT_DEATH(string.get<bool>(), R"(\[JSONXX\] expression 'is<Boolean>\(\)' failed)");
  EXPECT_DEATH(string.get<Array>(), R"(\[JSONXX\] expression 'is<Array>\(\)' failed)");
  EXPECT_DEATH(string.get<Object>(), R"(\[JSONXX\] expression 'is<Object>\(\)' failed)");
}

TEST(JsonxxDeathTest, ArrayGetBeyondTheEndAborts) {
  Array array;
  array.import(Value("x"));
  EXPECT_DEATH(array.get<String>(1), R"(\[JSONXX\] expression 'i < size\(\)' failed)");
}

}  // namespace
