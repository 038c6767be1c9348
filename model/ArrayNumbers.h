// Conversions of the array's numbers, held as long double by the document model, into the widths
// of the system's fields. Truncation towards zero, then wrap-around modulo the width, as a cast
// through a signed integer of that width would do for values in its range; defined for any input.
#pragma once

#include <cstdint>

namespace HuaweiNumbers {

unsigned long long toUnsigned64(long double value);
long long toSigned64(long double value);
int toSigned32(long double value);
unsigned int toUnsigned32(long double value);

}  // namespace HuaweiNumbers
