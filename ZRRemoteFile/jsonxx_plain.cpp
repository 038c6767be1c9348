#include "jsonxx_plain.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "jsonxx_number.h"

namespace jsonxx {

namespace {

// Bit i set where byte i of the 64 at p is c.
#if defined(__SSE2__)
std::uint64_t byte_mask(const char* p, char c) {
  const __m128i wanted = _mm_set1_epi8(c);
  std::uint64_t mask = 0;
  for (int i = 0; i < 4; ++i) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * i));
    mask |= static_cast<std::uint64_t>(static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(bytes, wanted))))
            << (16 * i);
  }
  return mask;
}
#else
std::uint64_t byte_mask(const char* p, char c) {
  std::uint64_t mask = 0;
  for (int i = 0; i < 64; ++i) mask |= std::uint64_t{p[i] == c} << i;
  return mask;
}
#endif

// The bytes of a block that a backslash escapes: those behind a run of backslashes of odd
// length. `first_escaped` (0 or 1) tells whether the block's first byte is escaped by a run that
// ended the block before, and becomes that for the next block.
std::uint64_t escaped_bytes(std::uint64_t backslashes, std::uint64_t& first_escaped) {
  constexpr std::uint64_t kEven = 0x5555555555555555u, kOdd = ~kEven;
  const std::uint64_t escaped_in = first_escaped;
  backslashes &= ~escaped_in;  // an escaped backslash opens no escape
  const std::uint64_t starts = backslashes & ~(backslashes << 1);
  // Adding a run's first bit carries to the byte behind the run; that byte is escaped when the
  // run is of odd length, i.e. when it lies at the other parity than the run's start.
  const std::uint64_t behind_even = (backslashes + (starts & kEven)) & ~backslashes;
  std::uint64_t sum_odd;
  first_escaped = __builtin_add_overflow(backslashes, starts & kOdd, &sum_odd) ? 1 : 0;
  const std::uint64_t behind_odd = sum_odd & ~backslashes;
  return (behind_even & kOdd) | (behind_odd & kEven) | escaped_in;
}

bool is_hex(char c) { return (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'f'); }

}  // namespace

bool PlainReader::escaped_string(std::string_view& text) {
  skip_space();
  if (next_ == end_ || *next_ != '"') return false;
  const char* const start = next_ + 1;
  if (!skip_string()) return false;
  text = std::string_view(start, static_cast<std::size_t>(next_ - 1 - start));
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
  // digits, as the parser reads four characters whatever they are. A large answer holds one
  // string of escaped text, so the bytes are classified 64 at a time and the escapes found by
  // arithmetic on the masks, not one by one. Most strings are short names and values without
  // escapes: those end at the first quote or backslash when it is a quote.
  const char* p = next_ + 1;
  const char* const stop = detail::quote_or_backslash(p, end_);
  if (stop != end_ && *stop == '"') {
    next_ = stop + 1;
    return true;
  }
  std::uint64_t first_escaped = 0;
  while (p < end_) {
    char padded[64];
    const char* bytes = p;
    if (end_ - p < 64) {
      const std::size_t left = static_cast<std::size_t>(end_ - p);
      std::memcpy(padded, p, left);
      std::memset(padded + left, 0, sizeof padded - left);
      bytes = padded;
    }
    const std::uint64_t quotes = byte_mask(bytes, '"'), backslashes = byte_mask(bytes, '\\');
    const std::uint64_t escaped = escaped_bytes(backslashes, first_escaped);
    const std::uint64_t closing = quotes & ~escaped;
    const std::uint64_t inside = closing == 0 ? ~std::uint64_t{0} : (closing & (0 - closing)) - 1;
    // Escaped quotes and backslashes, nearly all the escapes of a page, need no further look.
    if ((escaped & ~(quotes | backslashes) & inside) != 0) {
      for (std::uint64_t e = escaped & byte_mask(bytes, 'u') & inside; e != 0; e &= e - 1) {
        const char* const at = p + __builtin_ctzll(e);
        if (end_ - at < 5 || !is_hex(at[1]) || !is_hex(at[2]) || !is_hex(at[3]) || !is_hex(at[4])) return false;
      }
    }
    if (closing != 0) {
      next_ = p + __builtin_ctzll(closing) + 1;
      return true;
    }
    p += 64;
  }
  return false;
}

bool PlainReader::skip_inner(int depth) {
  // Most values inside are strings without escapes: those are passed over here, without a call.
  std::string_view text;
  return string(text) || skip_value(depth);
}

bool PlainReader::skip_value(int depth) {
  if (depth > kMaxDepth) return false;
  skip_space();
  if (next_ == end_) return false;
  switch (*next_) {
    case '"':
      return skip_string();
    case '{':
      return object([&](std::string_view) { return skip_inner(depth + 1); });
    case '[':
      return array([&] { return skip_inner(depth + 1); });
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
