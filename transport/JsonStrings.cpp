#include "JsonStrings.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "CpuFeatures.h"

#if defined(__x86_64__)
#include <immintrin.h>
#endif

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

// Length of each ASCII character in a JSON string literal.
constexpr std::array<unsigned char, 128> escapedLengths() {
  std::array<unsigned char, 128> lengths{};
  for (unsigned c = 0; c < 128; ++c) lengths[c] = c < 0x20 ? 6 : 1;
  lengths['"'] = lengths['\\'] = lengths['\n'] = lengths['\r'] = lengths['\t'] = 2;
  return lengths;
}
constexpr std::array<unsigned char, 128> kEscapedLength = escapedLengths();

}  // namespace

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

namespace {

#if defined(__x86_64__)
// Text whose only bytes to escape are quotes and backslashes (a change list's page, thick with
// escaped quotes) goes sixteen bytes a step: each half of a block, beside eight backslashes, is
// spread by one shuffle into its bytes with a backslash before each quote and backslash.
struct alignas(32) Spread {  // found by a shift
  unsigned char shuffle[16];  // source byte of each output byte: 0 to 7 the half's, 8 a backslash
  unsigned char length;       // eight and one more per quote or backslash
};

const Spread* spreads() {
  static const std::array<Spread, 256> table = [] {
    std::array<Spread, 256> all{};
    for (unsigned marks = 0; marks < 256; ++marks) {
      Spread& spread = all[marks];
      unsigned out = 0;
      for (unsigned i = 0; i < 8; ++i) {
        if (marks & (1u << i)) spread.shuffle[out++] = 8;
        spread.shuffle[out++] = static_cast<unsigned char>(i);
      }
      spread.length = static_cast<unsigned char>(out);
      while (out < 16) spread.shuffle[out++] = 0x80;
    }
    return all;
  }();
  return table.data();
}

// `half` holds eight bytes of text, then eight backslashes.
__attribute__((target("ssse3"))) __m128i spreadHalf(__m128i half, const Spread& spread) {
  return _mm_shuffle_epi8(half, _mm_load_si128(reinterpret_cast<const __m128i*>(spread.shuffle)));
}

// Goes on while whole blocks lie before `end` and hold no control character and no byte outside
// ASCII; answers where it stopped.
__attribute__((target("ssse3"))) const char* spreadRun(const char* from, const char* stop, const char* end,
                                                        char*& to) {
  if (end - from < 16) return from;
  const char* const last = std::min(stop, end - 15);  // the blocks start before it
  const Spread* const table = spreads();
  const __m128i quote = _mm_set1_epi8('"');
  const __m128i backslash = _mm_set1_epi8('\\');
  const __m128i blank = _mm_set1_epi8(' ');
  char* out = to;  // a local, so that the stores need not reload it
  for (; from < last; from += 16) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
    if (_mm_movemask_epi8(_mm_cmplt_epi8(block, blank)) != 0) break;
    const unsigned marks = static_cast<unsigned>(
        _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(block, quote), _mm_cmpeq_epi8(block, backslash))));
    if (marks == 0) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), block);
      out += 16;
      continue;
    }
    const Spread& low = table[marks & 0xFF];
    const Spread& high = table[marks >> 8];
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), spreadHalf(_mm_unpacklo_epi64(block, backslash), low));
    out += low.length;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), spreadHalf(_mm_unpackhi_epi64(block, backslash), high));
    out += high.length;
  }
  to = out;
  return from;
}

// The same, thirty-two bytes a step: one test for all of them, then four spread quarters.
__attribute__((target("avx2"))) const char* spreadRunWide(const char* from, const char* stop, const char* end,
                                                           char*& to) {
  if (end - from < 32) return from;
  const char* const last = std::min(stop, end - 31);
  const Spread* const table = spreads();
  const __m256i quote = _mm256_set1_epi8('"');
  const __m256i backslash = _mm256_set1_epi8('\\');
  const __m256i blank = _mm256_set1_epi8(' ');
  const __m128i backslashes = _mm_set1_epi8('\\');
  char* out = to;
  for (; from < last; from += 32) {
    const __m256i block = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from));
    if (_mm256_movemask_epi8(_mm256_cmpgt_epi8(blank, block)) != 0) break;
    const unsigned marks = static_cast<unsigned>(_mm256_movemask_epi8(
        _mm256_or_si256(_mm256_cmpeq_epi8(block, quote), _mm256_cmpeq_epi8(block, backslash))));
    if (marks == 0) {
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), block);
      out += 32;
      continue;
    }
    const __m128i lanes[2] = {_mm256_castsi256_si128(block), _mm256_extracti128_si256(block, 1)};
    for (int quarter = 0; quarter < 4; ++quarter) {
      const __m128i lane = lanes[quarter >> 1];
      const Spread& spread = table[(marks >> (8 * quarter)) & 0xFF];
      const __m128i half = quarter & 1 ? _mm_unpackhi_epi64(lane, backslashes) : _mm_unpacklo_epi64(lane, backslashes);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(out), spreadHalf(half, spread));
      out += spread.length;
    }
  }
  to = out;
  return from;
}
#endif

// Escapes from `from` until at least `stop` (a UTF-8 sequence or a block of plain bytes may run a
// little past it, never past `end`) into `to`, which has room for six bytes per byte and sixteen
// more. Answers where it stopped.
const char* escapeRun(const char* from, const char* stop, const char* end, char*& to) {
#ifdef __SSE2__
  const __m128i quote = _mm_set1_epi8('"');
  const __m128i backslash = _mm_set1_epi8('\\');
  const __m128i blank = _mm_set1_epi8(' ');
#endif
  while (from < stop) {
#if defined(__x86_64__)
    if (cpu::hasAvx2()) from = spreadRunWide(from, stop, end, to);
    if (cpu::hasSsse3()) {
      from = spreadRun(from, stop, end, to);
      if (from >= stop) break;
    }
#endif
#ifdef __SSE2__
    // Sixteen bytes at a time, up to the first that needs a look: a quote, a backslash, a control
    // character, or a byte outside ASCII (negative as a signed byte, so below the blank as well).
    if (end - from >= 16) {
      const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
      _mm_storeu_si128(reinterpret_cast<__m128i*>(to), block);
      const __m128i special = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(block, quote), _mm_cmpeq_epi8(block, backslash)),
                                           _mm_cmplt_epi8(block, blank));
      const int mask = _mm_movemask_epi8(special);
      if (mask == 0) {
        from += 16;
        to += 16;
        continue;
      }
      const int plain = __builtin_ctz(static_cast<unsigned>(mask));
      from += plain;
      to += plain;
    }
#endif
    const unsigned char c = static_cast<unsigned char>(*from);
    if (c >= 0x80) {
      const std::size_t sequence = utf8Length(std::string_view(from, static_cast<std::size_t>(end - from)), 0);
      if (sequence) {
        std::memcpy(to, from, sequence);
        to += sequence;
        from += sequence;
        continue;
      }
    } else if (kEscapedLength[c] == 1) {
      *to++ = static_cast<char>(c);
      ++from;
      continue;
    } else if (c == '\\' && end - from >= 2 && from[1] == '"') {
      // An escaped quote, as change lists hold thousands of: both in one step.
      std::memcpy(to, "\\\\\\\"", 4);
      to += 4;
      from += 2;
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
        std::memcpy(to, "u00", 3);
        to[3] = "0123456789abcdef"[c >> 4];
        to[4] = "0123456789abcdef"[c & 15];
        to += 5;
    }
    ++from;
  }
  return from;
}

}  // namespace

void TextBuffer::append(std::string_view text) {
  char* to = room(text.size());
  std::memcpy(to, text.data(), text.size());
  commit(to + text.size());
}

char* TextBuffer::room(std::size_t bytes) {
  if (storage_.size() - used_ < bytes) storage_.resize(std::max(2 * storage_.size(), used_ + bytes));
  return &storage_[used_];
}

// Written in place, a slice at a time, into room for the longest each slice can grow to: no
// append per byte, and a long answer never needs six times its size at once.
void appendJsonString(TextBuffer& out, std::string_view text) {
  const std::size_t kSlice = 1 << 16;
  out.append("\"");
  const char* from = text.data();
  const char* const end = from + text.size();
  while (from < end) {
    const std::size_t take = std::min(kSlice, static_cast<std::size_t>(end - from));
    char* to = out.room(6 * take + 16);
    from = escapeRun(from, from + take, end, to);
    out.commit(to);
  }
  out.append("\"");
}

}  // namespace HuaweiTransport
