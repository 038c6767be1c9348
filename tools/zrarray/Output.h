// What zrarray prints on standard output: JSON for programs (`jq` reads it), or a table for people.
#pragma once

#include <cstdio>
#include <string>

#include "RecordJson.h"

namespace zrarray {

enum class Format { Json, Table };

// Invalid UTF-8 in the array's texts (file names are bytes) becomes U+FFFD instead of an error.
std::string JsonText(const Json& value, int indent = -1);

// An object as field/value lines, a list of objects as rows under their field names, anything else
// as its text.
std::string TableText(const Json& value);

// Writes the value and a newline; false when the stream refused it.
bool Print(std::FILE* stream, const Json& value, Format format);

}  // namespace zrarray
