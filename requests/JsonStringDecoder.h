// The body of a JSON string (the text between its quotes) decoded exactly, for readers that must
// give every name as it was written: \" \\ \/ \b \f \n \r \t, and \uXXXX with surrogate pairs, as
// UTF-8. Other bytes, raw UTF-8 included, stay as they are.
#pragma once

#include <cstdint>
#include <string>

namespace HuaweiJsonString {

// Decodes text[from, end) in place; the string is cut behind the decoded text. Answers nullptr,
// or why the text is no string body (a bad or unfinished escape, a lone surrogate); the string is
// then of no use.
const char* decode(std::string& text, std::string::size_type from = 0);

// Writes the UTF-8 form of a code point below 0x110000 at `out`; answers the bytes written (1-4).
int putUtf8(char* out, std::uint32_t code);

}  // namespace HuaweiJsonString
