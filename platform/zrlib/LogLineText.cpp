#include "LogLineText.h"

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace tklog {
namespace {

bool IsControl(unsigned char c) { return c < 0x20 || c == 0x7f; }

// The length of a UTF-8 line breaker at text[i] (C1 control, U+2028, U+2029), or 0.
size_t BreakerLength(const std::string& text, size_t i) {
  const auto at = [&](size_t k) { return k < text.size() ? static_cast<unsigned char>(text[k]) : 0u; };
  if (at(i) == 0xc2 && at(i + 1) >= 0x80 && at(i + 1) <= 0x9f) return 2;
  if (at(i) == 0xe2 && at(i + 1) == 0x80 && (at(i + 2) == 0xa8 || at(i + 2) == 0xa9)) return 3;
  return 0;
}

void AppendControl(std::string& out, unsigned char c) {
  switch (c) {
    case '\n': out += "\\n"; return;
    case '\r': out += "\\r"; return;
    case '\t': out += "\\t"; return;
    default: {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\x%02x", c);
      out += hex;
    }
  }
}

// Printable ASCII only: a byte below 0x20 borrows into its high bit, 0x7f carries into it, and any
// higher byte has it already.
bool IsPlainWord(const char* bytes) {
  constexpr uint64_t kOnes = 0x0101010101010101ULL, kHighBits = 0x8080808080808080ULL;
  uint64_t word;
  std::memcpy(&word, bytes, sizeof word);
  return (((word - kOnes * 0x20) | (word + kOnes) | word) & kHighBits) == 0;
}

// Byte by byte from `from`, before which every byte is printable ASCII.
bool IsOneLineFrom(const std::string& text, size_t from) {
  for (size_t i = from; i < text.size(); ++i) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (IsControl(c) || (c >= 0xc2 && BreakerLength(text, i) != 0)) return false;
  }
  return true;
}

}  // namespace

bool IsOneLine(const std::string& text) {
  // Eight bytes at a time while all are printable ASCII, as nearly all are; the last word overlaps
  // the one before so that no byte is left for the slow loop. A word with another byte is looked at
  // byte by byte.
  constexpr size_t kWord = sizeof(uint64_t);
  const size_t size = text.size();
  if (size < kWord) return IsOneLineFrom(text, 0);
  size_t i = 0;
  for (; i + kWord <= size; i += kWord) {
    if (!IsPlainWord(text.data() + i)) return IsOneLineFrom(text, i);
  }
  return i == size || IsPlainWord(text.data() + size - kWord) || IsOneLineFrom(text, i);
}

std::string OneLine(const std::string& text) {
  std::string out;
  out.reserve(text.size() + 16);
  for (size_t i = 0; i < text.size();) {
    const auto c = static_cast<unsigned char>(text[i]);
    if (IsControl(c)) {
      AppendControl(out, c);
      ++i;
      continue;
    }
    const size_t breaker = BreakerLength(text, i);
    if (breaker == 0) {
      out.push_back(text[i++]);
      continue;
    }
    // Two bytes 0xc2 0x8N give U+008N; three bytes 0xe2 0x80 0xa8/0xa9 give U+2028/U+2029.
    const unsigned codePoint = breaker == 2 ? static_cast<unsigned char>(text[i + 1])
                                            : 0x2000u + (static_cast<unsigned char>(text[i + 2]) - 0x80u);
    char escaped[8];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", codePoint);
    out += escaped;
    i += breaker;
  }
  return out;
}

}  // namespace tklog
