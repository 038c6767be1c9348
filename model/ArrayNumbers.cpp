#include "ArrayNumbers.h"

#include <cmath>

namespace HuaweiNumbers {

namespace {
const long double kTwoTo63 = 9223372036854775808.0L;
const long double kTwoTo64 = 18446744073709551616.0L;

// Truncation towards zero of a value in [0, 2^63). A cast would switch the x87 rounding mode on
// every call; rounding in the current mode and stepping back once is the same and much cheaper
// (this file is built without errno from math functions, so llrintl is one instruction).
inline unsigned long long truncateBelowTwoTo63(long double value) {
  long long rounded = __builtin_llrintl(value);
  if (static_cast<long double>(rounded) > value) --rounded;
  return static_cast<unsigned long long>(rounded);
}

}  // namespace

unsigned long long toUnsigned64(long double value) {
  // The array's numbers are nearly always in range; only the rest pays for the reduction.
  if (value >= 0 && value < kTwoTo64) {
    if (value < kTwoTo63) return truncateBelowTwoTo63(value);
    return truncateBelowTwoTo63(value - kTwoTo63) | (1ULL << 63);
  }
  if (value < 0 && value > -kTwoTo63) return static_cast<unsigned long long>(static_cast<long long>(value));
  if (!std::isfinite(value)) return 0;
  long double whole = std::fmod(std::trunc(value), kTwoTo64);
  if (whole < 0) whole += kTwoTo64;
  if (whole >= kTwoTo64) return 0;  // rounding of whole + 2^64 can reach the bound exactly
  if (whole >= kTwoTo63) return static_cast<unsigned long long>(whole - kTwoTo63) | (1ULL << 63);
  return static_cast<unsigned long long>(whole);
}

long long toSigned64(long double value) {
  return static_cast<long long>(toUnsigned64(value));
}

unsigned int toUnsigned32(long double value) {
  return static_cast<unsigned int>(toUnsigned64(value) & 0xFFFFFFFFULL);
}

int toSigned32(long double value) {
  return static_cast<int>(toUnsigned32(value));
}

}  // namespace HuaweiNumbers
