#include "NeedleSearch.h"

#include <algorithm>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace HuaweiTransport {

namespace {

bool memmemAny(std::string_view text, const std::string* needles, std::size_t count) {
  for (const std::string* needle = needles; needle != needles + count; ++needle) {
    if (memmem(text.data(), text.size(), needle->data(), needle->size()) != nullptr) return true;
  }
  return false;
}

// How seldom a byte stands in an answer: digits, JSON's punctuation and the most frequent small
// letters are everywhere (a change list's names and numbers); other small letters less so,
// capitals and the rest seldom.
int rarity(char c) {
  if (c == '\0') return 3;
  if ((c >= '0' && c <= '9') || std::strchr("\"\\,:{} /.etaoinsrhldcump", c)) return 0;
  if ((c >= 'a' && c <= 'z') || std::strchr("[]_-", c)) return 1;
  return c >= 'A' && c <= 'Z' ? 2 : 3;
}

#if defined(__x86_64__)
bool hasAvx2() {
  static const bool supported = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
  }();
  return supported;
}

// Whether the needle starts at one of the candidates, given by the place of its first anchor in
// the block.
bool verify(const char* block, unsigned candidates, std::string_view text, const std::string& needle,
            std::size_t anchor) {
  for (; candidates != 0; candidates &= candidates - 1) {
    const char* const at = block + __builtin_ctz(candidates);
    if (at - text.data() < static_cast<std::ptrdiff_t>(anchor)) continue;
    const char* const start = at - anchor;
    if (needle.size() <= static_cast<std::size_t>(text.data() + text.size() - start) &&
        std::memcmp(start, needle.data(), needle.size()) == 0) {
      return true;
    }
  }
  return false;
}

// Thirty-two bytes a step, each block read once for up to eight needles: a block holding no
// needle's rarest byte is done with at once. In the others a place is a candidate for a needle
// when its rarest byte stands there and its second rarest at their distance; only candidates are
// compared whole. The last block overlaps the one before; the text is at least a block long.
template <std::size_t kNeedles>
__attribute__((target("avx2"))) bool scanBlocks(std::string_view text, const std::string* needles,
                                                const std::size_t* anchors) {
  __m256i firstBytes[kNeedles], secondBytes[kNeedles];
  std::ptrdiff_t apart[kNeedles];
  for (std::size_t n = 0; n < kNeedles; ++n) {
    firstBytes[n] = _mm256_set1_epi8(needles[n][anchors[2 * n]]);
    secondBytes[n] = _mm256_set1_epi8(needles[n][anchors[2 * n + 1]]);
    apart[n] = static_cast<std::ptrdiff_t>(anchors[2 * n + 1]) - static_cast<std::ptrdiff_t>(anchors[2 * n]);
  }
  const char* block = text.data();
  const char* const last = text.data() + text.size() - 32;
  for (;;) {
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(block));
    __m256i any = _mm256_cmpeq_epi8(bytes, firstBytes[0]);
    for (std::size_t n = 1; n < kNeedles; ++n) any = _mm256_or_si256(any, _mm256_cmpeq_epi8(bytes, firstBytes[n]));
    if (_mm256_movemask_epi8(any) != 0) {
      for (std::size_t n = 0; n < kNeedles; ++n) {
        auto candidates = static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(bytes, firstBytes[n])));
        if (candidates == 0) continue;
        // Where the second anchor's block lies outside the text, the comparison whole decides.
        const char* const other = block + apart[n];
        if (other >= text.data() && other <= last) {
          const __m256i seconds = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(other));
          candidates &= static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(seconds, secondBytes[n])));
        }
        if (candidates != 0 && verify(block, candidates, text, needles[n], anchors[2 * n])) return true;
      }
    }
    if (block == last) return false;
    block = last - block > 32 ? block + 32 : last;
  }
}

using Scan = bool (*)(std::string_view, const std::string*, const std::size_t*);
constexpr Scan kScans[] = {scanBlocks<1>, scanBlocks<2>, scanBlocks<3>, scanBlocks<4>,
                           scanBlocks<5>, scanBlocks<6>, scanBlocks<7>, scanBlocks<8>};
#endif

}  // namespace

void NeedleSearch::add(std::string_view needle) {
  if (needle.empty()) return;
  for (const std::string& known : needles_) {
    if (known == needle) return;
  }
  needles_.emplace_back(needle);
  std::size_t first = 0;
  for (std::size_t at = 1; at < needle.size(); ++at) {
    if (rarity(needle[at]) > rarity(needle[first])) first = at;
  }
  std::size_t second = first == 0 ? needle.size() - 1 : 0;
  for (std::size_t at = 0; at < needle.size(); ++at) {
    if (at != first && rarity(needle[at]) > rarity(needle[second])) second = at;
  }
  anchors_.push_back(first);
  anchors_.push_back(second);
}

bool NeedleSearch::foundIn(std::string_view text) const {
#if defined(__x86_64__)
  const std::size_t kGroup = sizeof kScans / sizeof kScans[0];
  if (hasAvx2() && text.size() >= 32) {
    for (std::size_t n = 0; n < needles_.size(); n += kGroup) {
      const std::size_t count = std::min(kGroup, needles_.size() - n);
      if (kScans[count - 1](text, needles_.data() + n, anchors_.data() + 2 * n)) return true;
    }
    return false;
  }
#endif
  return memmemAny(text, needles_.data(), needles_.size());
}

}  // namespace HuaweiTransport
