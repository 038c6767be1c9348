// The string overloads of parse read the buffer in place; the stream overloads
// read a std::istream. Both have to give the same result and the same tree for
// any input, so a std::istringstream over the same text is the reference.
#include "jsonxx.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>
#include <vector>

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

// Random documents in the dialect the parser accepts, with its odd corners.
class DocumentGenerator {
 public:
  explicit DocumentGenerator(std::uint32_t seed) : random_(seed) {}

  std::string document() { return space() + object(0) + space(); }

  std::string number() {
    static const char* const fixed[] = {
        "0",    "-0", "+5", ".5",  "5.",   "-.5", "1e3", "1E+3", "1e-3", "1e", "1e+", "-", "+", ".", "0x10",
        "007",  "00.5", "1.2.3", "1e5e", "--1", "+-1", "1e99999", "-1e99999", "1e-99999", "18446744073709551615",
        "18446744073709551616", "-18446744073709551615", "0.000000000000000000000000001",
        "0.0000000000000000000000000001", "123456789012345678901234567890", "9007199254740993",
        "3.14159265358979323846264338327950288"};
    switch (pick(6)) {
      case 0: return fixed[pick(sizeof fixed / sizeof *fixed)];
      case 1: return std::to_string(random_()) + std::to_string(random_());
      case 2: return decimal();
      case 3: return decimal() + (pick(2) ? "e" : "E") + (pick(2) ? "-" : "+") + std::to_string(pick(5000));
      default: return std::to_string(static_cast<int>(random_() % 2001) - 1000);
    }
  }

  std::string decimal() {
    std::string text = pick(3) == 0 ? "-" : "";
    text += digits(1 + pick(20));
    if (pick(3) != 0) text += "." + digits(pick(29));
    return text;
  }

  std::uint32_t pick(std::uint32_t bound) { return random_() % bound; }

 private:
  std::string digits(std::uint32_t count) {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i) text += static_cast<char>('0' + pick(10));
    return text;
  }

  std::string space() {
    static const char* const spaces[] = {"", "", "", " ", "\n  ", "\t", "\r\n", "// note\n", " //x\r ", "\v\f"};
    return spaces[pick(sizeof spaces / sizeof *spaces)];
  }

  std::string string_literal() {
    static const char* const pieces[] = {
        "a",      "file name", "\xc3\xa9", "\xe2\x82\xac", "\\/",   "\\\\",   "\\b",   "\\n",     "\\t",
        "\\u0041", "\\u20ac",  "\\uzz",    "\\u4g",        "\\q",   "/",      "'",     "\\'",     "\\\"",
        "//",     "{}",        "[,]",      "\x01",         "\x7f",  "tr",     "0.5e",  ":",       ","};
    const char quote = pick(5) == 0 ? '\'' : '"';
    std::string text(1, quote);
    for (std::uint32_t n = pick(5); n > 0; --n) {
      const std::string piece = pieces[pick(sizeof pieces / sizeof *pieces)];
      if (piece.find(quote) != std::string::npos && piece[0] != '\\') continue;
      text += piece;
    }
    return text + quote;
  }

  std::string value(int depth) {
    switch (pick(depth > 4 ? 6 : 8)) {
      case 0: return string_literal();
      case 1:
      case 2: return number();
      case 3: return pick(2) ? "true" : "false";
      case 4: return "null";
      case 5: return "";  // the lone-comma null, or a key without value
      case 6: return array(depth + 1);
      default: return object(depth + 1);
    }
  }

  std::string array(int depth) {
    std::string text = "[" + space();
    for (std::uint32_t n = pick(5); n > 0; --n) text += value(depth) + space() + (n > 1 || pick(4) == 0 ? "," : "");
    return text + space() + "]";
  }

  std::string object(int depth) {
    std::string text = "{" + space();
    for (std::uint32_t n = pick(6); n > 0; --n) {
      text += string_literal() + space() + ":" + space() + value(depth) + space();
      if (n > 1 || pick(4) == 0) text += "," + space();
    }
    return text + "}";
  }

  std::mt19937 random_;
};

// Damage of the kinds a truncated or garbled response shows.
std::string mutated(const std::string& text, DocumentGenerator& random) {
  static const char* const tokens[] = {"/", "//", "/*", "\\", "\\u", "\"", "'", ",", ":", "{", "}", "[", "]",
                                       "e", "+",  "-",  ".",  "tr", "nu", "\n", " ", "0", "x", "\xff"};
  std::string out = text;
  for (std::uint32_t n = 1 + random.pick(3); n > 0 && !out.empty(); --n) {
    const std::size_t at = random.pick(static_cast<std::uint32_t>(out.size()));
    switch (random.pick(4)) {
      case 0: out.resize(at); break;
      case 1: out.insert(at, tokens[random.pick(sizeof tokens / sizeof *tokens)]); break;
      case 2: out.erase(at, 1 + random.pick(4)); break;
      default: out[at] = static_cast<char>(random.pick(256)); break;
    }
  }
  return out;
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

TEST(StreamEquivalence, HoldsForGeneratedAndDamagedDocuments) {
  DocumentGenerator generator(20240521);
  for (int i = 0; i < 3000; ++i) {
    const std::string document = generator.document();
    expect_stream_equivalence(document);
    for (int m = 0; m < 4; ++m) expect_stream_equivalence(mutated(document, generator));
    if (HasFailure()) return;
  }
}

}  // namespace
