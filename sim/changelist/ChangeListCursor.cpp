#include "changelist/ChangeListCursor.h"

namespace arraysim {
namespace {

constexpr const char* kFirstPosType = "255";
constexpr const char* kFirstLinkPosType = "255";
constexpr const char* kFirstLinkPos = "18446744073709551614";
constexpr const char* kNextPosType = "3";
constexpr const char* kNextLinkPosType = "1";

std::uint64_t Mix(std::uint64_t value) {  // splitmix64 finaliser
  value += 0x9E3779B97F4A7C15ULL;
  value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9ULL;
  value = (value ^ (value >> 27)) * 0x94D049BB133111EBULL;
  return value ^ (value >> 31);
}

std::optional<std::uint64_t> ParseDecimal(const std::string& text) {
  if (text.empty() || text.size() > 20) return std::nullopt;
  std::uint64_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9') return std::nullopt;
    const std::uint64_t digit = static_cast<std::uint64_t>(c - '0');
    if (value > (UINT64_MAX - digit) / 10) return std::nullopt;
    value = value * 10 + digit;
  }
  return value;
}

}  // namespace

ChangeListCursor ChangeListCursor::First() {
  return ChangeListCursor{kFirstPosType, "0", "0", kFirstLinkPosType, kFirstLinkPos};
}

bool ChangeListCursor::operator==(const ChangeListCursor& other) const {
  return posType == other.posType && posObj == other.posObj && posOffset == other.posOffset &&
         linkPosType == other.linkPosType && linkPos == other.linkPos;
}

std::uint64_t ChangeListCursorCodec::check(std::size_t nextEntry, std::uint64_t tweak) const {
  return Mix(salt_ ^ Mix(static_cast<std::uint64_t>(nextEntry) + tweak));
}

ChangeListCursor ChangeListCursorCodec::encode(std::size_t nextEntry) const {
  return ChangeListCursor{kNextPosType, std::to_string(nextEntry), std::to_string(check(nextEntry, 1) & 0xFFFFFFFFu),
                          kNextLinkPosType, std::to_string(check(nextEntry, 2))};
}

std::optional<std::size_t> ChangeListCursorCodec::decode(const ChangeListCursor& cursor) const {
  if (cursor == ChangeListCursor::First()) return 0;
  if (cursor.posType != kNextPosType || cursor.linkPosType != kNextLinkPosType) return std::nullopt;
  const auto next = ParseDecimal(cursor.posObj);
  const auto offset = ParseDecimal(cursor.posOffset);
  const auto link = ParseDecimal(cursor.linkPos);
  if (!next || !offset || !link) return std::nullopt;
  if (*offset != (check(*next, 1) & 0xFFFFFFFFu) || *link != check(*next, 2)) return std::nullopt;
  return static_cast<std::size_t>(*next);
}

}  // namespace arraysim
