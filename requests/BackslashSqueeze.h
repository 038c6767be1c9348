// Drops the backslashes of a text in place, many bytes at a time: the page repair's inner loop.
// Each function copies whole blocks of text[read, to) down to text[write...], without the
// backslashes, advances `read` past the blocks it took and gives the new write position; the
// caller finishes the tail of fewer bytes than a block. write <= read always holds, so only
// bytes already read are overwritten.
#pragma once

#include <cstddef>

namespace BackslashSqueeze {

// Eight bytes at a time in a general register.
std::size_t squeezeWords(char* text, std::size_t& read, std::size_t to, std::size_t write);
// Sixteen bytes at a time with a byte shuffle; only where shufflesAvailable() (takes nothing
// elsewhere).
std::size_t squeezeChunks(char* text, std::size_t& read, std::size_t to, std::size_t write);
bool shufflesAvailable();
// The fastest of the two that this processor runs.
std::size_t squeeze(char* text, std::size_t& read, std::size_t to, std::size_t write);

}  // namespace BackslashSqueeze
