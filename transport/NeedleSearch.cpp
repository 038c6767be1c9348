#include "NeedleSearch.h"

#include <algorithm>
#include <cstring>

#include "CpuFeatures.h"

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

// How seldom a byte stands in an answer, as a first guess: digits, JSON's punctuation and the most
// frequent small letters are everywhere (a change list's names and numbers); other small letters
// less so, capitals and the rest seldom.
int rarity(char c) {
  if (c == '\0') return 3;
  if ((c >= '0' && c <= '9') || std::strchr("\"\\,:{} /.etaoinsrhldcump", c)) return 0;
  if ((c >= 'a' && c <= 'z') || std::strchr("[]_-", c)) return 1;
  return c >= 'A' && c <= 'Z' ? 2 : 3;
}

#if defined(__x86_64__)
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

// What a scan looks for: each needle's rarest byte, its second rarest and how far apart they stand.
template <std::size_t kNeedles>
struct Anchors {
  __m256i first[kNeedles], second[kNeedles];
  std::ptrdiff_t apart[kNeedles];
};

// Whether a needle starts in the block of thirty-two: a place is a candidate for a needle when its
// rarest byte stands there and its second rarest at their distance; only candidates are compared
// whole.
template <std::size_t kNeedles>
__attribute__((target("avx2"))) bool holdsNeedle(const char* block, __m256i bytes, std::string_view text,
                                                 const std::string* needles, const std::size_t* places,
                                                 const Anchors<kNeedles>& anchors) {
  const char* const last = text.data() + text.size() - 32;
  for (std::size_t n = 0; n < kNeedles; ++n) {
    auto candidates = static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(bytes, anchors.first[n])));
    if (candidates == 0) continue;
    // Where the second anchor's block lies outside the text, the comparison whole decides.
    const char* const other = block + anchors.apart[n];
    if (other >= text.data() && other <= last) {
      const __m256i seconds = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(other));
      candidates &= static_cast<unsigned>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(seconds, anchors.second[n])));
    }
    if (candidates != 0 && verify(block, candidates, text, needles[n], places[2 * n])) return true;
  }
  return false;
}

// Sixty-four bytes a step, read once for up to eight needles: bytes that hold no needle's rarest
// byte are done with at once, the others are looked at block by block. The last block overlaps
// the one before; the text is at least a block long.
template <std::size_t kNeedles>
__attribute__((target("avx2"))) bool scanBlocks(std::string_view text, const std::string* needles,
                                                const std::size_t* places) {
  Anchors<kNeedles> anchors;
  for (std::size_t n = 0; n < kNeedles; ++n) {
    anchors.first[n] = _mm256_set1_epi8(needles[n][places[2 * n]]);
    anchors.second[n] = _mm256_set1_epi8(needles[n][places[2 * n + 1]]);
    anchors.apart[n] = static_cast<std::ptrdiff_t>(places[2 * n + 1]) - static_cast<std::ptrdiff_t>(places[2 * n]);
  }
  const char* const end = text.data() + text.size();
  const char* const last = end - 32;
  const char* block = text.data();
  for (; last - block >= 32; block += 64) {
    const __m256i low = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(block));
    const __m256i high = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(block + 32));
    __m256i any = _mm256_or_si256(_mm256_cmpeq_epi8(low, anchors.first[0]), _mm256_cmpeq_epi8(high, anchors.first[0]));
    for (std::size_t n = 1; n < kNeedles; ++n) {
      any = _mm256_or_si256(any, _mm256_or_si256(_mm256_cmpeq_epi8(low, anchors.first[n]),
                                                 _mm256_cmpeq_epi8(high, anchors.first[n])));
    }
    if (_mm256_movemask_epi8(any) != 0 && (holdsNeedle(block, low, text, needles, places, anchors) ||
                                           holdsNeedle(block + 32, high, text, needles, places, anchors))) {
      return true;
    }
  }
  if (block == end) return false;
  if (block > last) block = last;
  for (;;) {
    const __m256i bytes = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(block));
    if (holdsNeedle(block, bytes, text, needles, places, anchors)) return true;
    if (block == last) return false;
    block = last - block > 32 ? block + 32 : last;
  }
}

using Scan = bool (*)(std::string_view, const std::string*, const std::size_t*);
constexpr Scan kScans[] = {scanBlocks<1>, scanBlocks<2>, scanBlocks<3>, scanBlocks<4>,
                           scanBlocks<5>, scanBlocks<6>, scanBlocks<7>, scanBlocks<8>};
#endif

}  // namespace

NeedleSearch::NeedleSearch() {
  // Before any text is seen, a guess; the texts searched soon outweigh it.
  for (int c = 0; c < 256; ++c) seen_[static_cast<std::size_t>(c)] = 3 - rarity(static_cast<char>(c));
}

void NeedleSearch::add(std::string_view needle) {
  if (needle.empty()) return;
  for (const std::string& known : needles_) {
    if (known == needle) return;
  }
  needles_.emplace_back(needle);
  anchors_.resize(2 * needles_.size());
  chooseAnchors();
}

// Every so many bytes of each text searched is counted, so that the anchors follow what the
// texts really hold: a byte that one array's change lists are full of is another's rare one.
void NeedleSearch::learn(std::string_view text) {
  const std::size_t kStride = 509;  // odd, so that it does not keep step with repeated records
  for (std::size_t at = 0; at < text.size(); at += kStride) {
    if (++seen_[static_cast<unsigned char>(text[at])] == kHalving) {
      for (std::uint32_t& count : seen_) count /= 2;
    }
  }
}

void NeedleSearch::chooseAnchors() {
  const auto count = [this](char c) { return seen_[static_cast<unsigned char>(c)]; };
  for (std::size_t n = 0; n < needles_.size(); ++n) {
    const std::string& needle = needles_[n];
    std::size_t first = 0;
    for (std::size_t at = 1; at < needle.size(); ++at) {
      if (count(needle[at]) < count(needle[first])) first = at;
    }
    std::size_t second = first == 0 ? needle.size() - 1 : 0;
    for (std::size_t at = 0; at < needle.size(); ++at) {
      if (at != first && count(needle[at]) < count(needle[second])) second = at;
    }
    anchors_[2 * n] = first;
    anchors_[2 * n + 1] = second;
  }
}

bool NeedleSearch::foundIn(std::string_view text) {
  learn(text);
  chooseAnchors();
#if defined(__x86_64__)
  const std::size_t kGroup = sizeof kScans / sizeof kScans[0];
  if (cpu::hasAvx2() && text.size() >= 32) {
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
