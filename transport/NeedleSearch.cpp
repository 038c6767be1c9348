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

// Thirty-two places at a time: a place is a candidate for a needle when the byte there is the
// needle's first and the byte at its length's distance its last; only candidates are compared
// whole. Up to four needles go in one step, so a block is read once for all of them. Answers the
// first place not looked at (the caller searches the rest), or null when a needle was found.
template <std::size_t kNeedles>
__attribute__((target("avx2"))) const char* scanBlocks(const char* from, const char* stop,
                                                       const std::string* needles, const std::size_t* anchors) {
  __m256i firstByte[kNeedles], secondByte[kNeedles];
  for (std::size_t n = 0; n < kNeedles; ++n) {
    firstByte[n] = _mm256_set1_epi8(needles[n][anchors[2 * n]]);
    secondByte[n] = _mm256_set1_epi8(needles[n][anchors[2 * n + 1]]);
  }
  for (; from < stop; from += 32) {
    __m256i hits[kNeedles];
    __m256i any = _mm256_setzero_si256();
    for (std::size_t n = 0; n < kNeedles; ++n) {
      const __m256i first = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + anchors[2 * n]));
      const __m256i second = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + anchors[2 * n + 1]));
      hits[n] = _mm256_and_si256(_mm256_cmpeq_epi8(first, firstByte[n]), _mm256_cmpeq_epi8(second, secondByte[n]));
      any = _mm256_or_si256(any, hits[n]);
    }
    if (_mm256_movemask_epi8(any) == 0) continue;
    for (std::size_t n = 0; n < kNeedles; ++n) {
      for (unsigned mask = static_cast<unsigned>(_mm256_movemask_epi8(hits[n])); mask != 0; mask &= mask - 1) {
        if (std::memcmp(from + __builtin_ctz(mask), needles[n].data(), needles[n].size()) == 0) return nullptr;
      }
    }
  }
  return from;
}

using Scan = const char* (*)(const char*, const char*, const std::string*, const std::size_t*);
constexpr Scan kScans[] = {scanBlocks<1>, scanBlocks<2>, scanBlocks<3>, scanBlocks<4>};
#endif

}  // namespace

void NeedleSearch::add(std::string_view needle) {
  if (needle.empty()) return;
  for (const std::string& known : needles_) {
    if (known == needle) return;
  }
  needles_.emplace_back(needle);
  if (needle.size() > longest_) longest_ = needle.size();
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
  // Blocks wholly inside the text for the longest needle; the few places after them go to memmem.
  if (hasAvx2() && text.size() >= longest_ + 32 + 31) {
    const char* from = text.data();
    const char* const stop = text.data() + text.size() - longest_ - 31;
    for (std::size_t n = 0; n < needles_.size(); n += 4) {
      const std::size_t count = std::min<std::size_t>(4, needles_.size() - n);
      const char* end = kScans[count - 1](from, stop, needles_.data() + n, anchors_.data() + 2 * n);
      if (end == nullptr) return true;
      const std::string_view rest(end, static_cast<std::size_t>(text.data() + text.size() - end));
      if (memmemAny(rest, needles_.data() + n, count)) return true;
    }
    return false;
  }
#endif
  return memmemAny(text, needles_.data(), needles_.size());
}

}  // namespace HuaweiTransport
