// Reading a long double from a character buffer exactly as
// `std::istream >> long double` of libstdc++ does in the "C" locale: the same
// characters accepted, the same characters consumed, the same value.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace jsonxx {
namespace detail {

struct NumberScan {
  std::size_t consumed = 0;  ///< characters the stream extraction takes, also on failure
  bool ok = false;           ///< false where the stream would set failbit
  long double value = 0;     ///< meaningful only when ok
};

/// Scans the text at [begin, end), which must not start with white space
/// (the stream skips that in its sentry before the scan).
///
/// The stream takes an optional sign, digits with at most one '.', then at
/// most one 'e' or 'E' (only behind a digit) with an optional sign and more
/// digits; it stops at the first character that does not fit, without
/// consuming it. What it took is then converted by strtold in the "C" locale,
/// which has to use up all of it; an infinite result is a failure too. So
/// "+5" and ".5" are numbers, "1e" and "-" consume their characters and
/// fail, and "0x10" reads as 0 and leaves "x10".
NumberScan scan_number(const char* begin, const char* end);

/// The number of digits that the eight bytes at p start with, which are
/// appended to value. Little-endian: the first character lands in the lowest
/// byte; elsewhere the caller goes on one by one.
inline int leading_digits(const char* p, std::uint64_t& value) {
  if (__BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__) return 0;
  std::uint64_t word;
  std::memcpy(&word, p, sizeof word);
  // A digit byte is 0x30..0x39: high nibble 3, and no carry out of the low
  // nibble when 6 is added. Carries run only into later bytes, behind the
  // first one that is no digit, so that one is found exactly.
  const std::uint64_t tested = (word & 0xF0F0F0F0F0F0F0F0u) | (((word + 0x0606060606060606u) & 0xF0F0F0F0F0F0F0F0u) >> 4);
  const std::uint64_t other = tested ^ 0x3333333333333333u;
  const int run = other == 0 ? 8 : __builtin_ctzll(other) >> 3;
  if (run == 0) return 0;
  // The digits, moved to the top bytes, read as a number with leading zeros.
  std::uint64_t chunk = (word - 0x3030303030303030u) << (8 * (8 - run));
  chunk = (chunk * 10 + (chunk >> 8)) & 0x00FF00FF00FF00FFu;
  chunk = (chunk * 100 + (chunk >> 16)) & 0x0000FFFF0000FFFFu;
  chunk = (chunk * 10000 + (chunk >> 32)) & 0xFFFFFFFFu;
  static constexpr std::uint64_t kScale[9] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};
  value = value * kScale[run] + chunk;
  return run;
}

/// The plain integers that fit in 64 bits, which make most numbers, without
/// the general scan: an optional '-' and the digits, which the stream converts
/// exactly. Anything else (a '+', a '.', an exponent, more digits) is left to
/// scan_number: null then. Otherwise the end of the digits, with the
/// magnitude and sign. Expects begin < end.
inline const char* read_integer(const char* begin, const char* end, std::uint64_t& value, bool& negative) {
  const char* p = begin;
  negative = *p == '-';
  if (negative) ++p;
  const char* const digits = p;
  value = 0;
  // Up to 16 digits eight at a time, the rest one by one.
  for (int word = 0; word < 2 && end - p >= 8; ++word) {
    const int run = leading_digits(p, value);
    p += run;
    if (run < 8) break;
  }
  for (; p != end && static_cast<unsigned char>(*p - '0') < 10; ++p) {
    if (p - digits >= 20 || __builtin_mul_overflow(value, 10u, &value) ||
        __builtin_add_overflow(value, static_cast<unsigned>(*p - '0'), &value))
      return nullptr;
  }
  if (p == digits) return nullptr;
  if (p != end && (*p == '.' || *p == 'e' || *p == 'E')) return nullptr;
  return p;
}

}  // namespace detail
}  // namespace jsonxx
