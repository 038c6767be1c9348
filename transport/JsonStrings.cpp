#include "JsonStrings.h"

#include <array>
#include <cstring>
#include <vector>

namespace HuaweiTransport {

namespace {

// The end of the string that opens at `open` (the index after its closing quote), or npos.
std::string::size_type stringEnd(const std::string& text, std::string::size_type open) {
  for (std::string::size_type at = open + 1; at < text.size(); ++at) {
    if (text[at] == '\\') {
      ++at;
    } else if (text[at] == '"') {
      return at + 1;
    }
  }
  return std::string::npos;
}

bool followedByColon(const std::string& text, std::string::size_type at) {
  while (at < text.size() && (text[at] == ' ' || text[at] == '\t' || text[at] == '\r' || text[at] == '\n')) ++at;
  return at < text.size() && text[at] == ':';
}

// Length of the UTF-8 sequence starting at `at`, or 0 when the bytes there are none.
std::size_t utf8Length(std::string_view text, std::size_t at) {
  const unsigned char lead = static_cast<unsigned char>(text[at]);
  std::size_t length = 0;
  unsigned char low = 0x80, high = 0xBF;  // range of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (at + length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = static_cast<unsigned char>(text[at + i]);
    if (next < (i == 1 ? low : 0x80) || next > (i == 1 ? high : 0xBF)) return 0;
  }
  return length;
}

// Length of each ASCII character in a JSON string literal.
constexpr std::array<unsigned char, 128> escapedLengths() {
  std::array<unsigned char, 128> lengths{};
  for (unsigned c = 0; c < 128; ++c) lengths[c] = c < 0x20 ? 6 : 1;
  lengths['"'] = lengths['\\'] = lengths['\n'] = lengths['\r'] = lengths['\t'] = 2;
  return lengths;
}
constexpr std::array<unsigned char, 128> kEscapedLength = escapedLengths();

}  // namespace

bool rewriteJsonStrings(std::string& text, const JsonStringVisitor& visit) {
  // The member name in force at each depth of objects and arrays.
  std::vector<std::string> keys(1);
  std::string rewritten;
  std::string replacement;
  std::string::size_type copied = 0;  // text before this index is in `rewritten` or unchanged
  bool changed = false;
  for (std::string::size_type at = 0; at < text.size();) {
    const char c = text[at];
    if (c == '{' || c == '[') {
      keys.push_back(c == '[' ? keys.back() : std::string());
    } else if ((c == '}' || c == ']') && keys.size() > 1) {
      keys.pop_back();
    } else if (c == '"') {
      const std::string::size_type end = stringEnd(text, at);
      if (end == std::string::npos) break;
      const std::string_view content(text.data() + at + 1, end - at - 2);
      if (followedByColon(text, end)) {
        keys.back().assign(content);
      } else if (replacement.clear(), visit(keys.back(), content, replacement)) {
        rewritten.append(text, copied, at + 1 - copied);
        rewritten += replacement;
        copied = end - 1;
        changed = true;
      }
      at = end;
      continue;
    }
    ++at;
  }
  if (changed) {
    rewritten.append(text, copied, std::string::npos);
    text.swap(rewritten);
  }
  return changed;
}

// Two passes: the length first, then the bytes written in place, so that a long answer costs one
// allocation and no append per byte.
void appendJsonString(std::string& out, std::string_view text) {
  std::size_t length = 2;
  for (std::size_t at = 0; at < text.size();) {
    const unsigned char c = static_cast<unsigned char>(text[at]);
    if (c < 0x80) {
      length += kEscapedLength[c];
      ++at;
    } else {
      const std::size_t sequence = utf8Length(text, at);
      length += sequence ? sequence : 6;
      at += sequence ? sequence : 1;
    }
  }
  const std::size_t start = out.size();
  out.resize(start + length);
  char* to = &out[start];
  *to++ = '"';
  for (std::size_t at = 0; at < text.size();) {
    const unsigned char c = static_cast<unsigned char>(text[at]);
    if (c < 0x80 && kEscapedLength[c] == 1) {
      *to++ = static_cast<char>(c);
      ++at;
      continue;
    }
    const std::size_t sequence = c < 0x80 ? 1 : utf8Length(text, at);
    if (c >= 0x80 && sequence) {
      std::memcpy(to, text.data() + at, sequence);
      to += sequence;
      at += sequence;
      continue;
    }
    *to++ = '\\';
    switch (c) {
      case '"': *to++ = '"'; break;
      case '\\': *to++ = '\\'; break;
      case '\n': *to++ = 'n'; break;
      case '\r': *to++ = 'r'; break;
      case '\t': *to++ = 't'; break;
      default:
        // A control character, or a byte that is no UTF-8: the character of its number.
        *to++ = 'u';
        *to++ = '0';
        *to++ = '0';
        *to++ = "0123456789abcdef"[c >> 4];
        *to++ = "0123456789abcdef"[c & 15];
    }
    ++at;
  }
  *to = '"';
}

}  // namespace HuaweiTransport
