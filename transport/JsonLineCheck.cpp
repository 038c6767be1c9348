#include "JsonLineCheck.h"

#include <cstring>
#include <string>

#include "CpuFeatures.h"
#include "JsonStrings.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace HuaweiTransport {

namespace {

// Deep enough for any answer of an array; a deeper text is not worth a line of its own.
const std::size_t kDeepest = 256;

bool isDigit(char c) { return c >= '0' && c <= '9'; }

int hexValue(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

const char* skipBlanks(const char* p, const char* end) {
  while (p < end && (*p == ' ' || *p == '\t')) ++p;
  return p;
}

// The four hex digits of a \u escape at `p` (its backslash), or -1.
long unicodeEscape(const char* p, const char* end) {
  if (end - p < 6 || p[0] != '\\' || p[1] != 'u') return -1;
  long code = 0;
  for (int i = 2; i < 6; ++i) {
    const int digit = hexValue(p[i]);
    if (digit < 0) return -1;
    code = code * 16 + digit;
  }
  return code;
}

// The place after the escape that starts at `p`, or null when it is none.
const char* escapeEnd(const char* p, const char* end) {
  if (end - p < 2) return nullptr;
  if (std::strchr("\"\\/bfnrt", p[1]) != nullptr && p[1] != '\0') return p + 2;
  const long code = unicodeEscape(p, end);
  if (code < 0xD800 || code > 0xDFFF) return code < 0 ? nullptr : p + 6;
  // Half of a surrogate pair: the high half and then the low one, or it is no character.
  if (code > 0xDBFF) return nullptr;
  const long low = unicodeEscape(p + 6, end);
  return low >= 0xDC00 && low <= 0xDFFF ? p + 12 : nullptr;
}

#if defined(__x86_64__)
// Inside a string, sixty-four bytes a step over blocks that hold only printable ASCII and
// escaped quotes (a change list's page is one long string of them): there a byte is a quote
// exactly when the one before it is a backslash. The byte before `p` must be no backslash (so
// that a backslash in the blocks skipped escapes the quote after it). Answers where the first
// other block starts, or the backslash that ends the last one skipped.
__attribute__((target("avx2"))) const char* skipPlainBlocks(const char* p, const char* end) {
  const __m256i quote = _mm256_set1_epi8('"');
  const __m256i backslash = _mm256_set1_epi8('\\');
  const __m256i blank = _mm256_set1_epi8(' ');
  const char* const start = p;
  for (; end - p >= 64; p += 64) {
    __m256i odd = _mm256_setzero_si256();
    for (int half = 0; half < 64; half += 32) {
      const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + half));
      const __m256i before = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + half - 1));
      // A quote without a backslash before it, or the reverse; or a byte below the blank as signed
      // bytes: a control character or any byte outside ASCII.
      const __m256i unpaired = _mm256_xor_si256(_mm256_cmpeq_epi8(bytes, quote), _mm256_cmpeq_epi8(before, backslash));
      odd = _mm256_or_si256(odd, unpaired);
      odd = _mm256_or_si256(odd, _mm256_cmpgt_epi8(blank, bytes));
    }
    if (_mm256_movemask_epi8(odd) != 0) break;
  }
  return p != start && p[-1] == '\\' ? p - 1 : p;
}
#endif

// From the place after an opening quote: the place after the closing one, or null when the
// string is no valid one.
const char* stringEnd(const char* p, const char* end) {
  for (;;) {
#if defined(__x86_64__)
    if (cpu::hasAvx2() && p[-1] != '\\') p = skipPlainBlocks(p, end);
#endif
    // A block's worth byte by byte, then the quick steps again.
    const char* const stop = end - p > 64 ? p + 64 : end;
    while (p < stop) {
      const unsigned char c = static_cast<unsigned char>(*p);
      if (c == '"') return p + 1;
      if (c == '\\') {
        p = escapeEnd(p, end);
        if (p == nullptr) return nullptr;
      } else if (c >= 0x80) {
        const std::size_t length = utf8Length(std::string_view(p, static_cast<std::size_t>(end - p)), 0);
        if (length == 0) return nullptr;
        p += length;
      } else if (c < 0x20) {
        return nullptr;
      } else {
        ++p;
      }
    }
    if (p >= end) return nullptr;
  }
}

const char* numberEnd(const char* p, const char* end) {
  if (p < end && *p == '-') ++p;
  if (p == end || !isDigit(*p)) return nullptr;
  if (*p == '0') {
    ++p;
  } else {
    while (p < end && isDigit(*p)) ++p;
  }
  if (p < end && *p == '.') {
    const char* const digits = ++p;
    while (p < end && isDigit(*p)) ++p;
    if (p == digits) return nullptr;
  }
  if (p < end && (*p == 'e' || *p == 'E')) {
    ++p;
    if (p < end && (*p == '+' || *p == '-')) ++p;
    const char* const digits = p;
    while (p < end && isDigit(*p)) ++p;
    if (p == digits) return nullptr;
  }
  return p;
}

const char* literalEnd(const char* p, const char* end, const char* word) {
  const std::size_t length = std::strlen(word);
  return static_cast<std::size_t>(end - p) >= length && std::memcmp(p, word, length) == 0 ? p + length : nullptr;
}

// From where a member's name should start: the place after its colon, or null.
const char* afterMemberName(const char* p, const char* end) {
  p = skipBlanks(p, end);
  if (p == end || *p != '"') return nullptr;
  p = stringEnd(p + 1, end);
  if (p == nullptr) return nullptr;
  p = skipBlanks(p, end);
  return p < end && *p == ':' ? p + 1 : nullptr;
}

}  // namespace

bool isOneLineJsonValue(std::string_view text) {
  const char* p = text.data();
  const char* const end = p + text.size();
  std::string open;  // the opening bracket of each container around the place
  for (;;) {
    // A value.
    p = skipBlanks(p, end);
    if (p == end) return false;
    switch (*p) {
      case '{':
      case '[':
        if (open.size() == kDeepest) return false;
        open.push_back(*p);
        p = skipBlanks(p + 1, end);
        if (p < end && *p == (open.back() == '{' ? '}' : ']')) {
          open.pop_back();
          ++p;
          break;
        }
        if (open.back() == '{' && (p = afterMemberName(p, end)) == nullptr) return false;
        continue;
      case '"':
        p = stringEnd(p + 1, end);
        break;
      case 't':
        p = literalEnd(p, end, "true");
        break;
      case 'f':
        p = literalEnd(p, end, "false");
        break;
      case 'n':
        p = literalEnd(p, end, "null");
        break;
      default:
        p = numberEnd(p, end);
    }
    if (p == nullptr) return false;
    // What follows a value: the containers it ends, then the next member or element.
    for (;;) {
      p = skipBlanks(p, end);
      if (open.empty()) return p == end;
      if (p == end) return false;
      if (*p == (open.back() == '{' ? '}' : ']')) {
        open.pop_back();
        ++p;
        continue;
      }
      if (*p != ',') return false;
      ++p;
      if (open.back() == '{' && (p = afterMemberName(p, end)) == nullptr) return false;
      break;
    }
  }
}

}  // namespace HuaweiTransport
