#include "BackslashSqueeze.h"

#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace BackslashSqueeze {

// The backslash bytes of a word are found with an exact per-byte test and squeezed out of it in
// the register, highest first, before the word is stored whole.
std::size_t squeezeWords(char* text, std::size_t& read, std::size_t to, std::size_t write) {
  for (; read + 8 <= to; read += 8) {
    std::uint64_t word;
    std::memcpy(&word, text + read, 8);
    const std::uint64_t probe = word ^ 0x5C5C5C5C5C5C5C5CULL;
    std::uint64_t backslashes =
        ~(((probe & 0x7F7F7F7F7F7F7F7FULL) + 0x7F7F7F7F7F7F7F7FULL) | probe) & 0x8080808080808080ULL;
    int kept = 8;
    while (backslashes != 0) {
      const int bit = 63 - __builtin_clzll(backslashes);
      const int shift = bit - 7;  // first bit of that byte
      const std::uint64_t below = word & ((1ULL << shift) - 1);
      word = shift == 56 ? below : (below | ((word >> (shift + 8)) << shift));
      backslashes &= ~(1ULL << bit);
      --kept;
    }
    std::memcpy(text + write, &word, 8);
    write += static_cast<std::size_t>(kept);
  }
  return write;
}

#if defined(__x86_64__)
// Sixteen bytes at a time with a byte shuffle: each half of eight bytes is packed by the
// shuffle that its backslash mask selects, so a chunk costs the same whatever it holds.
namespace {
struct Shuffles {
  alignas(16) unsigned char order[256][16];
  unsigned char kept[256];
  Shuffles() {
    for (int mask = 0; mask < 256; ++mask) {
      int out = 0;
      for (int i = 0; i < 8; ++i) {
        if (!(mask & (1 << i))) order[mask][out++] = static_cast<unsigned char>(i);
      }
      kept[mask] = static_cast<unsigned char>(out);
      for (; out < 16; ++out) order[mask][out] = 0x80;
    }
  }
};
}  // namespace

__attribute__((target("ssse3"))) std::size_t squeezeChunks(char* text, std::size_t& read, std::size_t to,
                                                            std::size_t write) {
  static const Shuffles kShuffles;
  const __m128i backslash = _mm_set1_epi8('\\');
  const __m128i highHalf = _mm_set1_epi8(8);
  for (; read + 16 <= to; read += 16) {
    const __m128i chunk = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text + read));
    const unsigned mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(chunk, backslash)));
    if (mask == 0) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(text + write), chunk);
      write += 16;
      continue;
    }
    const unsigned low = mask & 0xFF, high = mask >> 8;
    const __m128i lowOrder = _mm_load_si128(reinterpret_cast<const __m128i*>(kShuffles.order[low]));
    _mm_storel_epi64(reinterpret_cast<__m128i*>(text + write), _mm_shuffle_epi8(chunk, lowOrder));
    write += kShuffles.kept[low];
    const __m128i highOrder =
        _mm_add_epi8(_mm_load_si128(reinterpret_cast<const __m128i*>(kShuffles.order[high])), highHalf);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(text + write), _mm_shuffle_epi8(chunk, highOrder));
    write += kShuffles.kept[high];
  }
  return write;
}

bool shufflesAvailable() {
  static const bool kAvailable = __builtin_cpu_supports("ssse3");
  return kAvailable;
}
#else
bool shufflesAvailable() { return false; }
std::size_t squeezeChunks(char*, std::size_t&, std::size_t, std::size_t write) { return write; }
#endif

std::size_t squeeze(char* text, std::size_t& read, std::size_t to, std::size_t write) {
  return shufflesAvailable() ? squeezeChunks(text, read, to, write) : squeezeWords(text, read, to, write);
}

}  // namespace BackslashSqueeze
