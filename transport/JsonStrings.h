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

// Length of the UTF-8 sequence starting at `at`, or 0 when the bytes there are none (a stray
// continuation byte, an overlong form, a surrogate, a sequence cut short).
std::size_t utf8Length(std::string_view text, std::size_t at);

// Text built at the end of a buffer that keeps its room from one use to the next, so that writing
// a long line again costs neither fresh pages nor zeroed bytes.
class TextBuffer {
 public:
  void clear() { used_ = 0; }
  void append(std::string_view text);
  // At least `bytes` writable bytes after the text; `commit` says where the writing ended.
  char* room(std::size_t bytes);
  void commit(const char* end) { used_ = static_cast<std::size_t>(end - storage_.data()); }
  std::string_view view() const { return std::string_view(storage_.data(), used_); }

 private:
  std::string storage_;
  std::size_t used_ = 0;
};

// Appends `text` as a JSON string literal, quotes included. Valid UTF-8 keeps its bytes; a byte
// that is not valid UTF-8 is written as the character of the same number (\u00XX), so the line
// stays valid UTF-8.
void appendJsonString(TextBuffer& out, std::string_view text);

}  // namespace HuaweiTransport
