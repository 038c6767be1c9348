// Reading a long double from a character buffer exactly as
// `std::istream >> long double` of libstdc++ does in the "C" locale: the same
// characters accepted, the same characters consumed, the same value.
#pragma once

#include <cstddef>

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

}  // namespace detail
}  // namespace jsonxx
