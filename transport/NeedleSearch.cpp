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

// Whether a needle stands where one of the block's bytes at `hits` is its anchor byte.
bool verify(const char* block, unsigned hits, std::string_view text, const std::string* needles,
            const std::size_t* anchors, std::size_t count) {
  const char* const end = text.data() + text.size();
  for (; hits != 0; hits &= hits - 1) {
    const char* const at = block + __builtin_ctz(hits);
    for (std::size_t n = 0; n < count; ++n) {
      const std::string& needle = needles[n];
      if (*at != needle[anchors[n]] || at - text.data() < static_cast<std::ptrdiff_t>(anchors[n])) continue;
      const char* const start = at - anchors[n];
      if (needle.size() <= static_cast<std::size_t>(end - start) &&
          std::memcmp(start, needle.data(), needle.size()) == 0) {
        return true;
      }
    }
  }
  return false;
}

// Thirty-two bytes a step, each block read once for up to eight needles: a byte equal to a
// needle's anchor makes the place it would start at a candidate, and only candidates are
// compared whole. The last block overlaps the one before; the text is at least a block long.
template <std::size_t kNeedles>
__attribute__((target("avx2"))) bool scanBlocks(std::string_view text, const std::string* needles,
                                                const std::size_t* anchors) {
  __m256i anchorBytes[kNeedles];
  for (std::size_t n = 0; n < kNeedles; ++n) anchorBytes[n] = _mm256_set1_epi8(needles[n][anchors[n]]);
  const char* block = text.data();
  const char* const last = text.data() + text.size() - 32;
  for (;;) {
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(block));
    __m256i any = _mm256_cmpeq_epi8(bytes, anchorBytes[0]);
    for (std::size_t n = 1; n < kNeedles; ++n) any = _mm256_or_si256(any, _mm256_cmpeq_epi8(bytes, anchorBytes[n]));
    const auto hits = static_cast<unsigned>(_mm256_movemask_epi8(any));
    if (hits != 0 && verify(block, hits, text, needles, anchors, kNeedles)) return true;
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
  std::size_t anchor = 0;
  for (std::size_t at = 1; at < needle.size(); ++at) {
    if (rarity(needle[at]) > rarity(needle[anchor])) anchor = at;
  }
  anchors_.push_back(anchor);
}

bool NeedleSearch::foundIn(std::string_view text) const {
#if defined(__x86_64__)
  const std::size_t kGroup = sizeof kScans / sizeof kScans[0];
  if (hasAvx2() && text.size() >= 32) {
    for (std::size_t n = 0; n < needles_.size(); n += kGroup) {
      const std::size_t count = std::min(kGroup, needles_.size() - n);
      if (kScans[count - 1](text, needles_.data() + n, anchors_.data() + n)) return true;
    }
    return false;
  }
#endif
  return memmemAny(text, needles_.data(), needles_.size());
}

}  // namespace HuaweiTransport
