// The string overloads of parse read the buffer in place; the stream overloads
// read a std::istream. Both have to give the same result and the same tree for
// any input, so a std::istringstream over the same text is the reference.
#include "jsonxx.h"

#include <gtest/gtest.h>

#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

namespace {

using jsonxx::Array;
using jsonxx::Object;
using jsonxx::Value;

// Enough digits that two different long doubles never print alike.
template <class T>
std::string exact(const T& tree) {
  std::ostringstream out;
  out << std::setprecision(std::numeric_limits<long double>::max_digits10) << tree;
  return out.str();
}

template <class Tree>
void expect_same_parse(const std::string& text) {
  Tree fast, reference;
  std::istringstream input(text);
  const bool fast_ok = fast.parse(text);
  EXPECT_EQ(fast_ok, reference.parse(input));
  EXPECT_EQ(exact(fast), exact(reference));
}

void expect_stream_equivalence(const std::string& text) {
  SCOPED_TRACE(::testing::PrintToString(text));
  expect_same_parse<Object>(text);
  expect_same_parse<Array>(text);
  expect_same_parse<Value>(text);
}

// The dialect's odd corners: numbers the stream's extraction reads in part or
// not at all, escapes, quotes, comments and the lone-comma null.
const char* const kNumbers[] = {
    "0",    "-0", "+5", ".5",  "5.",   "-.5", "1e3", "1E+3", "1e-3", "1e", "1e+", "-", "+", ".", "0x10",
    "007",  "00.5", "1.2.3", "1e5e", "--1", "+-1", "1e99999", "-1e99999", "1e-99999", "18446744073709551615",
    "18446744073709551616", "-18446744073709551615", "0.000000000000000000000000001",
    "0.0000000000000000000000000001", "123456789012345678901234567890", "9007199254740993",
    "3.14159265358979323846264338327950288"};

const char* const kStringPieces[] = {
    "a",      "file name", "\xc3\xa9", "\xe2\x82\xac", "\\/",   "\\\\",   "\\b",   "\\n",     "\\t",
    "\\u0041", "\\u20ac",  "\\uzz",    "\\u4g",        "\\q",   "/",      "\\'",     "//",
    "{}",     "[,]",       "\x01",     "\x7f",         "tr",    "0.5e",   ":",     ","};

// A document that holds every corner once, with spaces and comments between the tokens.
const std::string kDocument =
    "{ // note\n\"a\" : [1, -.5, 1e3, , 'x\\'y', true, null, [], {},] ,\r\n"
    "'b':{\"c\":\"\\u0041\\q\\/\", \"d\":+5 //x\r ,\"e\":} \t, \"f\":\"\\uzz\", }";

TEST(StreamEquivalence, HoldsForEveryNumberAndEscape) {
  for (const char* number : kNumbers) {
    for (const std::string& text : {std::string("{\"a\":") + number + "}", std::string("[") + number + ",1]",
                                    std::string(number)}) {
      expect_stream_equivalence(text);
    }
  }
  for (const char* piece : kStringPieces) {
    expect_stream_equivalence(std::string("{\"a\":\"") + piece + "\"}");
    expect_stream_equivalence(std::string("['") + piece + "']");
  }
}

// Damage of the kinds a truncated or garbled response shows: the document cut
// at every byte, and every byte replaced by a token that ends or opens something.
TEST(StreamEquivalence, HoldsForEveryCutAndReplacement) {
  expect_stream_equivalence(kDocument);
  for (std::size_t at = 0; at < kDocument.size(); ++at) {
    expect_stream_equivalence(kDocument.substr(0, at));
    for (const char* token : {"/", "\"", "'", "\\", "e", "\xff"}) {
      expect_stream_equivalence(kDocument.substr(0, at) + token + kDocument.substr(at + 1));
    }
    if (HasFailure()) return;
  }
}

// The in-place reader knows the "C" rules only; under another global locale
// the string overloads have to read through a stream as well.
TEST(StreamEquivalence, HoldsUnderAnotherGlobalLocale) {
  struct CommaDecimalPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  const std::locale previous = std::locale::global(std::locale(std::locale::classic(), new CommaDecimalPoint));
  Array array;
  const bool ok = array.parse("[1,5]");
  std::locale::global(previous);
  EXPECT_TRUE(ok);
  EXPECT_EQ(exact(array), "[1.5]");
}

}  // namespace
