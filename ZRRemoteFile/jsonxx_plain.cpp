#include "jsonxx_plain.h"

#include <cstring>

#include "jsonxx_number.h"

namespace jsonxx {
namespace {

// The first quote or backslash in [p, end), or end; eight bytes at a time, as the parser's
// buffer reader finds them.
const char* quote_or_backslash(const char* p, const char* end) {
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

bool is_hex(char c) { return (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f'); }

}  // namespace

bool PlainReader::string(std::string_view& text) {
  skip_space();
  if (next_ == end_ || *next_ != '"') return false;
  const char* const start = next_ + 1;
  const char* const close = quote_or_backslash(start, end_);
  if (close == end_ || *close != '"') return false;
  text = std::string_view(start, static_cast<std::size_t>(close - start));
  next_ = close + 1;
  return true;
}

bool PlainReader::integer(Integer& number) {
  skip_space();
  if (next_ == end_) return false;
  const char* const end = detail::read_integer(next_, end_, number.magnitude, number.negative);
  if (end == nullptr) return false;
  next_ = end;
  return true;
}

bool PlainReader::literal(std::string_view word) {
  if (static_cast<std::size_t>(end_ - next_) < word.size() || std::memcmp(next_, word.data(), word.size()) != 0) {
    return false;
  }
  next_ += word.size();
  return true;
}

bool PlainReader::skip_string() {
  // At the opening quote. An escape takes the character behind the backslash; \u takes four hex
  // digits, as the parser reads four characters whatever they are.
  const char* p = next_ + 1;
  for (;;) {
    p = quote_or_backslash(p, end_);
    if (p == end_) return false;
    if (*p == '"') break;
    if (end_ - p < 2) return false;
    if (p[1] == 'u') {
      if (end_ - p < 6 || !is_hex(p[2]) || !is_hex(p[3]) || !is_hex(p[4]) || !is_hex(p[5])) return false;
      p += 6;
    } else {
      p += 2;
    }
  }
  next_ = p + 1;
  return true;
}

bool PlainReader::skip_value(int depth) {
  if (depth > kMaxDepth) return false;
  skip_space();
  if (next_ == end_) return false;
  switch (*next_) {
    case '"':
      return skip_string();
    case '{':
      return object([&](std::string_view) { return skip_value(depth + 1); });
    case '[':
      return array([&] { return skip_value(depth + 1); });
    case 't': return literal("true");
    case 'f': return literal("false");
    case 'n': return literal("null");
    default: {
      Integer ignored;
      return integer(ignored);
    }
  }
}

}  // namespace jsonxx
