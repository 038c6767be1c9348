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

TEST(Object, HasMatchesOnlyTheStoredKind) {
  const Object object = parsed(R"({"n":1,"s":"12","b":true,"z":null,"a":[1],"o":{}})");
  for (const char* key : {"n", "s", "b", "z", "a", "o"}) {
    const std::string kinds = std::string(object.has<Number>(key) ? "n" : "") + (object.has<String>(key) ? "s" : "") +
                              (object.has<bool>(key) ? "b" : "") + (object.has<Null>(key) ? "z" : "") +
                              (object.has<Array>(key) ? "a" : "") + (object.has<Object>(key) ? "o" : "");
    EXPECT_EQ(kinds, key);
    EXPECT_TRUE(object.has<Value>(key));
  }
  EXPECT_FALSE(object.has<Value>("missing"));
}

TEST(Object, GetGivesAReferenceAndCopiesAreDeep) {
  Object original = parsed(R"({"a":{"b":["x"]},"s":"a"})");
  original.get<String>("s") += "b";
  Object copy(original);
  Object assigned;
  assigned = original;
  Value value(original);
  copy.get<Object>("a").get<Array>("b") = Value("changed");
  assigned.get<Object>("a").import("c", Value(1));
  value.get<Object>().import("a", Value(Null()));
  EXPECT_EQ(written(original), R"({"a": {"b": ["x"]}, "s": "ab"})");
  EXPECT_EQ(written(copy), R"({"a": {"b": ["changed"]}, "s": "ab"})");
  EXPECT_EQ(written(assigned), R"({"a": {"b": ["x"], "c": 1}, "s": "ab"})");
}

TEST(Object, ImportReplacesEqualKeysAndIsSafeOnItself) {
  Object object = parsed(R"({"a":[1,{"b":"c"}],"d":2})");
  const Object& alias = object;
  object = alias;
  object.import(alias);
  object.import("a", object.get<Value>("a"));  // the value replaced is the one given
  EXPECT_EQ(written(object), R"({"a": [1, {"b": "c"}], "d": 2})");
  object.import(parsed(R"({"d":"x","e":3})"));
  object << "k" << Value(1);
  object << "dropped";
  object.import("i", Value(true));  // forgets the pending key
  object << "l" << "v";
  EXPECT_EQ(written(object), R"({"a": [1, {"b": "c"}], "d": "x", "e": 3, "i": true, "k": 1, "l": "v"})");
}

TEST(Array, AssigningAValueWrapsIt) {
  const Object source = parsed(R"({"list":[1,2]})");
  Array array;
  array.import(Value(5));
  array = source.get<Value>("list");
  EXPECT_EQ(written(array), "[[1, 2]]");
  array = array.get<Value>(0);  // an element of its own
  EXPECT_EQ(written(array), "[[1, 2]]");
}

TEST(Writer, EscapesStringsAndUsesTheStreamsNumberFormatting) {
  const std::pair<std::string, const char*> cases[] = {
      {"\"\\/", R"("\"\\\/")"},
      {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
      {std::string("\0\x01\x1f", 3), R"("\u0000\u0001\u001f")"},
      {"\x7f ~", "\"\x7f ~\""},
      {"caf\xc3\xa9", R"("caf\uffffffc3\uffffffa9")"},
  };
  for (const auto& [text, out] : cases) EXPECT_EQ(written(Value(text)), out);
  Value reset(String("text"));
  reset.reset();  // frees the content and keeps the tag
  EXPECT_TRUE(reset.is<String>());
  EXPECT_EQ(written(reset) + written(Value()), "");
  std::ostringstream out;
  out << std::fixed << std::setprecision(2) << parsed(R"({"a":1.5,"b":[false,null]})");
  EXPECT_EQ(out.str(), R"({"a": 1.50, "b": [false, null]})");
}

// The assertion ends the process in every build type, NDEBUG included.
TEST(JsonxxDeathTest, GetOfAMissingOrMistypedMemberAborts) {
  const Object object = parsed(R"({"n":1})");
  EXPECT_DEATH(object.get<String>("missing"), R"(\[JSONXX\] expression 'has<T>\(key\)' failed at .*jsonxx\.h:[0-9]+ -> )");
  EXPECT_DEATH(object.get<String>("n"), R"(\[JSONXX\] expression 'has<T>\(key\)' failed)");
  const Value string("s");
  EXPECT_DEATH(Value(1).get<String>(), R"(expression 'is<String>\(\)' failed)");
  EXPECT_DEATH(string.get<Number>(), R"(expression 'is<Number>\(\)' failed)");
  Array array;
  array.import(Value("x"));
  EXPECT_DEATH(array.get<String>(1), R"(expression 'i < size\(\)' failed)");
}

}  // namespace
