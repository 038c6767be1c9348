// The body of a JSON string (the text between its quotes) decoded exactly, for readers that must
// give every name as it was written: \" \\ \/ \b \f \n \r \t, and \uXXXX with surrogate pairs, as
// UTF-8. Other bytes, raw UTF-8 included, stay as they are.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace HuaweiJsonString {

// Decodes the `size` bytes at `text` in place and sets `size` to the length of the result.
// Answers nullptr, or why the text is no string body (a bad or unfinished escape, a lone
// surrogate); the bytes are then of no use.
const char* decode(char* text, std::size_t& size);
// The same for text[from, end); the string is cut behind the decoded text.
const char* decode(std::string& text, std::string::size_type from = 0);

// Writes the UTF-8 form of a code point below 0x110000 at `out`; answers the bytes written (1-4).
int putUtf8(char* out, std::uint32_t code);

}  // namespace HuaweiJsonString
