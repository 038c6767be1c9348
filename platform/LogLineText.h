// Every log line stays one line: a value with a line break in it (a caller's host name, an array's
// description, a file name of a change list) must not make a line that looks like another one.
//
// Escapes, each a backslash and then:
//   n, r, t                  for line feed, carriage return and tab;
//   xHH (two lower-case hex) for every other byte below 0x20, and for 0x7f;
//   uHHHH                    for the line breakers of UTF-8 text: the C1 controls U+0080 to U+009F
//                            (NEL among them) and the separators U+2028 and U+2029.
// Every other byte, the backslash included, stays as it is, so that ordinary lines keep their bytes.
#pragma once

#include <string>

namespace tklog {

// True when the text needs no escape.
bool IsOneLine(const std::string& text);
// The text with its control characters escaped as above.
std::string OneLine(const std::string& text);

}  // namespace tklog
