// The "code" of an answer's error object, read only where it can be trusted: an integer written in
// plain decimal (an optional '-' and digits) that fits in 64 bits. A negative code keeps its two's
// complement, as every conversion of the array's numbers does (an array answers -401 to a session
// it no longer knows); like any code but 0 it is a failure. Anything else, such as a string, a
// fraction, an exponent or a magnitude beyond 64 bits, is no code: read as a number it could wrap
// to 0 and turn a refusal into a success, so the answer is refused instead.
#pragma once

#include "jsonxx.h"
#include "jsonxx_plain.h"

namespace HuaweiTransport {

/// A code that the plain reader took as an integer.
bool trustedCode(const jsonxx::PlainReader::Integer& number, unsigned long long& code);

/// A code of the document model. A number whose text the parser did not see (read from a stream)
/// counts when its value is whole and within the range above.
bool trustedCode(const jsonxx::Value& value, unsigned long long& code);

}  // namespace HuaweiTransport
