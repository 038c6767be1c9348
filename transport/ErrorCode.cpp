#include "ErrorCode.h"

#include <cmath>

#include "ArrayNumbers.h"

namespace HuaweiTransport {
namespace {
const unsigned long long kMostNegative = 1ULL << 63;  // magnitude of -2^63
}  // namespace

bool trustedCode(const jsonxx::PlainReader::Integer& number, unsigned long long& code) {
  if (number.negative && number.magnitude > kMostNegative) return false;
  code = number.wrapped();
  return true;
}

bool trustedCode(const jsonxx::Value& value, unsigned long long& code) {
  if (!value.is<jsonxx::Number>() || value.number_text() == jsonxx::Value::NumberText::Other) return false;
  const long double number = value.get<jsonxx::Number>();
  // Whole and within [-2^63, 2^64): then the conversion is exact.
  if (!std::isfinite(number) || std::trunc(number) != number) return false;
  if (number < -9223372036854775808.0L || number >= 18446744073709551616.0L) return false;
  code = HuaweiNumbers::toUnsigned64(number);
  return true;
}

}  // namespace HuaweiTransport
