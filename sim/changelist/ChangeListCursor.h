// The five values with which a client asks for the next page of a change list. They look
// opaque on the wire, but the simulator can read them back: posObj is the index of the next
// entry, and posOffset and linkPos are checks derived from it and from the session, so a
// cursor that was altered, or belongs to another session, is refused.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace arraysim {

struct ChangeListCursor {
  std::string posType;
  std::string posObj;
  std::string posOffset;
  std::string linkPosType;
  std::string linkPos;

  // The cursor of the first page, as a client sends it before it has seen any page.
  static ChangeListCursor First();
  bool operator==(const ChangeListCursor& other) const;
};

class ChangeListCursorCodec {
 public:
  explicit ChangeListCursorCodec(std::uint64_t sessionSalt) : salt_(sessionSalt) {}

  // The cursor that asks for the entries from `nextEntry` on.
  ChangeListCursor encode(std::size_t nextEntry) const;
  // The index of the next entry, or nothing when the cursor was not made by this session.
  std::optional<std::size_t> decode(const ChangeListCursor& cursor) const;

 private:
  std::uint64_t check(std::size_t nextEntry, std::uint64_t tweak) const;

  std::uint64_t salt_;
};

}  // namespace arraysim
