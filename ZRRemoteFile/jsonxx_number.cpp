#include "jsonxx_number.h"

#include <algorithm>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>
#include <string>

namespace jsonxx {
namespace detail {
namespace {

bool is_digit(char c) { return c >= '0' && c <= '9'; }
bool is_sign(char c) { return c == '+' || c == '-'; }

// The stream's conversion runs in the "C" locale whatever the process has set.
locale_t c_locale() {
  static const locale_t locale = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
  return locale;
}

// Powers of ten that a long double with a 64-bit significand holds exactly
// (5^27 < 2^63).
constexpr int kMaxExactPower = 27;
constexpr long double kPowersOfTen[kMaxExactPower + 1] = {
    1e0L,  1e1L,  1e2L,  1e3L,  1e4L,  1e5L,  1e6L,  1e7L,  1e8L,  1e9L,  1e10L, 1e11L, 1e12L, 1e13L,
    1e14L, 1e15L, 1e16L, 1e17L, 1e18L, 1e19L, 1e20L, 1e21L, 1e22L, 1e23L, 1e24L, 1e25L, 1e26L, 1e27L};

// The value of eight ASCII digits, or false when one of them is no digit.
// Little-endian: the first character lands in the lowest byte; elsewhere the
// digits are taken one by one.
bool eight_digits(const char* p, std::uint64_t& value) {
  if (__BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__) return false;
  std::uint64_t chunk;
  std::memcpy(&chunk, p, sizeof chunk);
  const std::uint64_t high_nibbles = chunk & 0xF0F0F0F0F0F0F0F0u;
  const std::uint64_t above_nine = ((chunk + 0x0606060606060606u) & 0xF0F0F0F0F0F0F0F0u) >> 4;
  if ((high_nibbles | above_nine) != 0x3333333333333333u) return false;
  chunk -= 0x3030303030303030u;
  chunk = (chunk * 10 + (chunk >> 8)) & 0x00FF00FF00FF00FFu;
  chunk = (chunk * 100 + (chunk >> 16)) & 0x0000FFFF0000FFFFu;
  value = (chunk * 10000 + (chunk >> 32)) & 0xFFFFFFFFu;
  return true;
}

// The digits of a plain decimal, gathered into 64 bits as long as they fit.
struct Digits {
  std::uint64_t value = 0;
  bool fit = true;

  // Reads the run of digits at p and gives its end.
  const char* read(const char* p, const char* end) {
    std::uint64_t eight = 0;
    // value * 10^8 + eight stays below 10^19 while value < 10^11.
    while (end - p >= 8 && value < 100000000000u && eight_digits(p, eight)) {
      value = value * 100000000u + eight;
      p += 8;
    }
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
    for (; p != end && is_digit(*p); ++p) {
      const unsigned digit = static_cast<unsigned>(*p - '0');
      if (value > kMax / 10 || (value == kMax / 10 && digit > kMax % 10)) fit = false;
      value = value * 10 + digit;
    }
    return p;
  }

  // When the digits fit and the power of ten is exact (5^27 < 2^63), one
  // conversion or one IEEE division rounds once, correctly, as strtold does.
  bool convert(bool negative, std::ptrdiff_t fraction_digits, long double& number) const {
    if (std::numeric_limits<long double>::digits < 64 || !fit || fraction_digits > kMaxExactPower) return false;
    long double magnitude = static_cast<long double>(value);
    if (fraction_digits > 0) magnitude /= kPowersOfTen[fraction_digits];
    number = negative ? -magnitude : magnitude;
    return true;
  }
};

// What the stream does with the characters it took: strtold in the "C"
// locale must use all of them, and an overflow to infinity fails.
bool convert_with_strtold(const char* begin, const char* end, long double& value) {
  const std::size_t length = static_cast<std::size_t>(end - begin);
  char local[64];
  std::string heap;
  char* text = local;
  if (length >= sizeof local) {
    heap.assign(begin, length);
    text = &heap[0];
  } else {
    std::copy(begin, end, local);
    local[length] = '\0';
  }
  char* stop = nullptr;
  value = strtold_l(text, &stop, c_locale());
  if (stop == text || stop != text + length) return false;
  return !std::isinf(value);
}

}  // namespace

// The stream's scan, in the order it accepts the parts:
//   [sign] digits [. digits] [(e|E) [sign] digits]
// where the exponent is taken only behind at least one digit.
NumberScan scan_number(const char* begin, const char* end) {
  const char* p = begin;
  const bool negative = p != end && *p == '-';
  if (p != end && is_sign(*p)) ++p;
  Digits digits;
  const char* const integer = p;
  p = digits.read(p, end);
  bool found_mantissa = p != integer;
  const char* fraction = p;
  if (p != end && *p == '.') {
    fraction = ++p;
    p = digits.read(p, end);
    found_mantissa = found_mantissa || p != fraction;
  }
  const std::ptrdiff_t fraction_digits = p - fraction;
  bool found_exponent = false;
  if (found_mantissa && p != end && (*p == 'e' || *p == 'E')) {
    found_exponent = true;
    if (++p != end && is_sign(*p)) ++p;
    while (p != end && is_digit(*p)) ++p;
  }

  NumberScan scan;
  scan.consumed = static_cast<std::size_t>(p - begin);
  scan.ok = (found_mantissa && !found_exponent && digits.convert(negative, fraction_digits, scan.value)) ||
            convert_with_strtold(begin, p, scan.value);
  return scan;
}

}  // namespace detail
}  // namespace jsonxx
