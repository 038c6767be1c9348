// Whether a text can go into a JSON line as it stands, as a value among the line's members: for
// the recorder, which would otherwise write each answer (itself JSON) once more as a string.
#pragma once

#include <string_view>

namespace HuaweiTransport {

// True when `text` is exactly one JSON value: strings of valid UTF-8 with valid escapes (a
// surrogate escape only in a pair), numbers, true, false, null, objects and arrays nested at most
// a few hundred deep, with blanks and tabs around its parts but no line break anywhere. Anything
// else, an empty text included, is false.
bool isOneLineJsonValue(std::string_view text);

}  // namespace HuaweiTransport
