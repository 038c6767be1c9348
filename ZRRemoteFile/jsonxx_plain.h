// A cursor over JSON text in its plain form, for readers that want a few values of a large answer
// without building its tree.
//
// The plain form is what the array writes: double-quoted strings, integers, true, false, null,
// objects and arrays, white space between tokens and nothing else. On such text the document
// model's lenient parser and a strict one read the same values, so a reader that understands it
// gets what Object::parse would give. Whatever lies outside it (comments, single quotes, a
// fraction or exponent, a missing or trailing comma, deep nesting, a \u escape without four hex
// digits) makes the cursor refuse, and the reader falls back to the document model, which has the
// last word on every other text.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "jsonxx_number.h"

namespace jsonxx {
namespace detail {

/// The `size` bytes at `at` (2 to 16 of them) against `expected`, by two loads that overlap: a
/// call of memcmp costs more than these few bytes, and so would a call of this function.
__attribute__((always_inline)) inline bool same_bytes(const char* at, const char* expected, std::size_t size) {
  const auto differ = [&](auto word) {
    decltype(word) a, b, c, d;
    std::memcpy(&a, at, sizeof a);
    std::memcpy(&b, expected, sizeof b);
    std::memcpy(&c, at + size - sizeof c, sizeof c);
    std::memcpy(&d, expected + size - sizeof d, sizeof d);
    return ((a ^ b) | (c ^ d)) != 0;
  };
  if (size >= 8) return !differ(std::uint64_t{});
  if (size >= 4) return !differ(std::uint32_t{});
  return at[0] == expected[0] && at[1] == expected[1] && at[size - 1] == expected[size - 1];
}

/// The first quote or backslash in [p, end), or end: eight bytes at a time, as the parser's
/// buffer reader finds them. In line, as the names and values it ends are mostly short.
inline const char* quote_or_backslash(const char* p, const char* end) {
  constexpr std::uint64_t kOnes = 0x0101010101010101u;
  constexpr std::uint64_t kHighs = 0x8080808080808080u;
  if (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__) {
    while (end - p >= 8) {
      std::uint64_t word;
      std::memcpy(&word, p, sizeof word);
      const std::uint64_t q = word ^ (kOnes * '"');
      const std::uint64_t b = word ^ (kOnes * '\\');
      const std::uint64_t found = (((q - kOnes) & ~q) | ((b - kOnes) & ~b)) & kHighs;
      if (found != 0) return p + (__builtin_ctzll(found) >> 3);
      p += 8;
    }
  }
  while (p != end && *p != '"' && *p != '\\') ++p;
  return p;
}

}  // namespace detail

class PlainReader {
 public:
  /// An integer of the text: its magnitude and sign, as the document model reads it exactly.
  struct Integer {
    std::uint64_t magnitude = 0;
    bool negative = false;
    /// The value as the model's conversion to 64-bit unsigned gives it: wrapped modulo 2^64.
    std::uint64_t wrapped() const { return negative ? 0 - magnitude : magnitude; }
  };

  explicit PlainReader(std::string_view text)
      : begin_(text.data()), next_(text.data()), end_(text.data() + text.size()) {}

  /// Skips white space; takes @p c when it comes next.
  bool take(char c) {
    skip_space();
    if (next_ == end_ || *next_ != c) return false;
    ++next_;
    return true;
  }

  /// An object, each member's value read by `member(name)`, which answers false to refuse the
  /// text (a member it does not want it passes over with skip_value()). Names have no escapes.
  template <class Member>
  bool object(Member member) {
    return object([] { return std::string_view(); }, member);
  }
  /// The same, with `guess()` giving the name that the caller expects next, quoted as it would
  /// stand in the text (at most 16 bytes, no quote or backslash between the quotes): a name that
  /// is the guess is taken as a view into the guess, without searching for its end.
  template <class Guess, class Member>
  bool object(Guess guess, Member member) {
    if (!take('{')) return false;
    if (take('}')) return true;
    do {
      std::string_view name;
      if (!(guessed_name(guess(), name) || string(name)) || !take(':') || !member(name)) return false;
    } while (take(','));
    return take('}');
  }
  /// An array, each element read by `element()`, which answers false to refuse the text.
  template <class Element>
  bool array(Element element) {
    if (!take('[')) return false;
    if (take(']')) return true;
    do {
      if (!element()) return false;
    } while (take(','));
    return take(']');
  }

  /// A string without escapes: the text between its quotes. On false nothing is taken but white
  /// space, so the same string can be read again with escaped_string().
  bool string(std::string_view& text) {
    skip_space();
    if (next_ == end_ || *next_ != '"') return false;
    const char* const start = next_ + 1;
    const char* const close = detail::quote_or_backslash(start, end_);
    if (close == end_ || *close != '"') return false;
    text = std::string_view(start, static_cast<std::size_t>(close - start));
    next_ = close + 1;
    return true;
  }
  /// A string whose escapes are well formed: the text between its quotes, escapes undecoded.
  bool escaped_string(std::string_view& text);
  /// The next byte after white space, or 0 at the end.
  char peek() {
    skip_space();
    return next_ == end_ ? '\0' : *next_;
  }
  /// Where the cursor stands in the text.
  const char* position() const { return next_; }
  /// Where the text begins and ends.
  const char* begin() const { return begin_; }
  const char* end() const { return end_; }
  /// Moves the cursor to `at`, in [position(), end()]: past text that the caller read itself.
  void advance_to(const char* at) { next_ = at; }
  /// True when nothing but white space is left.
  bool at_end() {
    skip_space();
    return next_ == end_;
  }
  /// An integer whose magnitude fits in 64 bits, not followed by a fraction or an exponent.
  /// In line: a page holds a dozen of them for each entry, and a call through the library's
  /// symbol table costs as much as a short number.
  bool integer(Integer& number) {
    skip_space();
    if (next_ == end_) return false;
    const char* const end = detail::read_integer(next_, end_, number.magnitude, number.negative);
    if (end == nullptr) return false;
    next_ = end;
    return true;
  }
  /// Skips one value of any kind.
  bool skip_value() { return skip_value(0); }

 private:
  static constexpr int kMaxDepth = 64;

  void skip_space() {
    // White space as the model's parser skips it. Most tokens follow none: a byte above the space
    // ends it at the first test.
    while (next_ != end_ && static_cast<unsigned char>(*next_) <= ' ' &&
           (*next_ == ' ' || (*next_ >= '\t' && *next_ <= '\r')))
      ++next_;
  }
  bool guessed_name(std::string_view quoted, std::string_view& name) {
    const std::size_t size = quoted.size();
    if (size < 2 || size > 16) return false;  // no guess: the name is read as a string
    skip_space();
    if (static_cast<std::size_t>(end_ - next_) < size || !same_bytes(quoted.data(), size)) return false;
    name = quoted.substr(1, size - 2);
    next_ += size;
    return true;
  }
  bool same_bytes(const char* expected, std::size_t size) const { return detail::same_bytes(next_, expected, size); }
  bool skip_value(int depth);
  bool skip_inner(int depth);
  bool skip_string();
  bool literal(std::string_view word);

  const char* const begin_;
  const char* next_;
  const char* const end_;
};

}  // namespace jsonxx
