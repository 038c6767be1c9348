#include "JsonStringDecoder.h"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "BackslashSqueeze.h"

namespace HuaweiJsonString {
namespace {

// The first backslash in [at, size) that does not open an escaped quote, or size. Everything
// before it is text with escaped quotes only, the bulk of a change list, which the backslash
// squeeze decodes many bytes at a time.
std::string::size_type nextOtherEscape(const char* text, std::string::size_type at, std::string::size_type size) {
#if defined(__SSE2__)
  const __m128i backslash = _mm_set1_epi8('\\'), quote = _mm_set1_epi8('"');
  for (; at + 17 <= size; at += 16) {
    const __m128i here = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at));
    const __m128i behind = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + at + 1));
    const unsigned found = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(here, backslash))) &
                           ~static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(behind, quote)));
    if (found != 0) return at + static_cast<unsigned>(__builtin_ctz(found));
  }
#endif
  for (; at < size; ++at) {
    if (text[at] == '\\' && (at + 1 == size || text[at + 1] != '"')) return at;
  }
  return size;
}

// Four hex digits at text[at]; false when there are not four.
bool hex4(const char* text, std::string::size_type at, std::string::size_type size, std::uint32_t& code) {
  if (size - at < 4) return false;
  code = 0;
  for (int i = 0; i < 4; ++i) {
    const char c = text[at + i];
    std::uint32_t digit;
    if (c >= '0' && c <= '9') {
      digit = static_cast<std::uint32_t>(c - '0');
    } else if ((c | 0x20) >= 'a' && (c | 0x20) <= 'f') {
      digit = static_cast<std::uint32_t>((c | 0x20) - 'a' + 10);
    } else {
      return false;
    }
    code = code * 16 + digit;
  }
  return true;
}

}  // namespace

int putUtf8(char* out, std::uint32_t code) {
  if (code < 0x80) {
    out[0] = static_cast<char>(code);
    return 1;
  }
  if (code < 0x800) {
    out[0] = static_cast<char>(0xC0 | (code >> 6));
    out[1] = static_cast<char>(0x80 | (code & 0x3F));
    return 2;
  }
  if (code < 0x10000) {
    out[0] = static_cast<char>(0xE0 | (code >> 12));
    out[1] = static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out[2] = static_cast<char>(0x80 | (code & 0x3F));
    return 3;
  }
  out[0] = static_cast<char>(0xF0 | (code >> 18));
  out[1] = static_cast<char>(0x80 | ((code >> 12) & 0x3F));
  out[2] = static_cast<char>(0x80 | ((code >> 6) & 0x3F));
  out[3] = static_cast<char>(0x80 | (code & 0x3F));
  return 4;
}

const char* decode(std::string& text, std::string::size_type from) {
  if (from >= text.size()) return nullptr;
  std::size_t size = text.size() - from;
  const char* const why = decode(&text[from], size);
  if (why == nullptr) text.resize(from + size);
  return why;
}

const char* decode(char* const s, std::size_t& decodedSize) {
  const std::size_t size = decodedSize;
  // Every escape is at least as long as what it stands for, so the decoded text never overtakes
  // the bytes still to be read.
  std::size_t read = 0, write = 0;
  for (;;) {
    const std::string::size_type other = nextOtherEscape(s, read, size);
    write = BackslashSqueeze::squeeze(s, read, other, write);
    for (; read < other; ++read) {
      s[write] = s[read];
      write += s[read] != '\\';
    }
    if (other == size) break;
    if (size - read < 2) return "a backslash ends the text";
    const char escape = s[read + 1];
    read += 2;
    switch (escape) {
      case '\\': s[write++] = '\\'; break;
      case '/': s[write++] = '/'; break;
      case 'b': s[write++] = '\b'; break;
      case 'f': s[write++] = '\f'; break;
      case 'n': s[write++] = '\n'; break;
      case 'r': s[write++] = '\r'; break;
      case 't': s[write++] = '\t'; break;
      case 'u': {
        std::uint32_t code;
        if (!hex4(s, read, size, code)) return "a \\u escape without four hex digits";
        read += 4;
        if (code >= 0xDC00 && code <= 0xDFFF) return "a low surrogate without a high one before it";
        if (code >= 0xD800 && code <= 0xDBFF) {
          std::uint32_t low;
          if (size - read < 6 || s[read] != '\\' || s[read + 1] != 'u' || !hex4(s, read + 2, size, low) ||
              low < 0xDC00 || low > 0xDFFF) {
            return "a high surrogate without a low one behind it";
          }
          read += 6;
          code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        }
        write += static_cast<std::string::size_type>(putUtf8(s + write, code));
        break;
      }
      default: return "an unknown escape";
    }
  }
  decodedSize = write;
  return nullptr;
}

}  // namespace HuaweiJsonString
