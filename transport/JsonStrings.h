// The strings of a JSON text, walked without building a document: for recording, where every
// answer is rewritten on its way to the file and nothing else of it may change.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace HuaweiTransport {

// Receives each string value with the name of the member that holds it (the array's member name
// for a string inside an array; empty at the top). Both are given as they stand between their
// quotes, escapes kept. Answering true, with `replacement` filled (escaped as it must stand),
// puts another value in its place.
using JsonStringVisitor =
    std::function<bool(std::string_view key, std::string_view value, std::string& replacement)>;

// Walks the JSON text and applies the visitor to every string value. Whatever lies outside string
// values keeps its bytes; a text that is no JSON is walked just the same, as far as it reads.
// True when something was replaced.
bool rewriteJsonStrings(std::string& text, const JsonStringVisitor& visit);

// Appends `text` as a JSON string literal, quotes included. Valid UTF-8 keeps its bytes; a byte
// that is not valid UTF-8 is written as the character of the same number (\u00XX), so the line
// stays valid UTF-8.
void appendJsonString(std::string& out, std::string_view text);

}  // namespace HuaweiTransport
