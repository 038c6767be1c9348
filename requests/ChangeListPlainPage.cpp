#include "ChangeListPlainPage.h"

#include <array>
#include <cstdint>
#include <list>
#include <string_view>

#include "ChangeListEntry.h"
#include "jsonxx_plain.h"

namespace HuaweiChangeListPage {
namespace {

using jsonxx::PlainReader;

// The names of an entry as the array writes them, one after the other.
constexpr auto kWireNames = [] {
  std::array<std::string_view, HuaweiChangeEntry::kKeyCount> names{};
  for (int i = 0; i < HuaweiChangeEntry::kKeyCount; ++i) {
    names[i] = HuaweiChangeEntry::kQuotedNames[HuaweiChangeEntry::kWireOrder[i]];
  }
  return names;
}();

// Every reader below refuses a repeated key: the document model would keep its last value.

bool readEntry(PlainReader& in, _HuaweiSnapshotChangeList& change) {
  using namespace HuaweiChangeEntry;
  std::uint64_t numbers[kKeyCount] = {};
  unsigned seen = 0;
  // The array writes the keys in one order: the name after the last one read is tried first.
  int expected = 0;
  const auto guess = [&] { return expected < kKeyCount ? kWireNames[expected] : std::string_view(); };
  const bool plain = in.object(guess, [&](std::string_view name) {
    const bool asGuessed = expected < kKeyCount && name.data() == kWireNames[expected].data() + 1;
    const int key = asGuessed ? kWireOrder[expected] : keyOf(name);
    expected = asGuessed ? expected + 1 : kKeyCount;
    if (key < 0) return in.skip_value();
    if (seen & (1u << key)) return false;
    seen |= 1u << key;
    std::string_view path;
    PlainReader::Integer number;
    if (key == kFilePath) {
      if (!in.string(path)) return false;
      change.filePath.assign(path);
      return true;
    }
    if (!in.integer(number)) return false;
    numbers[key] = number.wrapped();
    return true;
  });
  if (!plain || seen != (1u << kKeyCount) - 1) return false;
  storeNumbers(numbers, change);
  return true;
}

// The next record of the page: a spare node moved to the end of the page's list, its path keeping
// its buffer, or a new one.
_HuaweiSnapshotChangeList& nextRecord(std::list<_HuaweiSnapshotChangeList>& records,
                                      std::list<_HuaweiSnapshotChangeList>* spare) {
  if (spare == nullptr || spare->empty()) return records.emplace_back();
  records.splice(records.end(), *spare, spare->begin());
  records.back().clear();
  return records.back();
}

bool readData(PlainReader& in, _HuaweiSnapshotChangeListInfo& page, std::list<_HuaweiSnapshotChangeList>* spare) {
  // The page's own keys; the rest of "data" is passed over.
  struct Cursor {
    std::string_view name;
    std::string _HuaweiSnapshotChangeListInfo::*field;
  };
  static const Cursor kCursor[] = {
      {"numChanges", &_HuaweiSnapshotChangeListInfo::numChanges},
      {"progress", &_HuaweiSnapshotChangeListInfo::progress},
      {"linkPos", &_HuaweiSnapshotChangeListInfo::linkPos},
      {"linkPosType", &_HuaweiSnapshotChangeListInfo::linkPosType},
      {"posObj", &_HuaweiSnapshotChangeListInfo::posObj},
      {"posOffset", &_HuaweiSnapshotChangeListInfo::posOffset},
      {"posType", &_HuaweiSnapshotChangeListInfo::posType}};
  constexpr unsigned kChangeList = 1u << 7, kAll = (1u << 8) - 1;
  unsigned seen = 0;
  const bool plain = in.object([&](std::string_view name) {
    if (name == "changeList") {
      if (seen & kChangeList) return false;
      seen |= kChangeList;
      return in.array([&] { return readEntry(in, nextRecord(page.changes, spare)); });
    }
    for (unsigned i = 0; i < sizeof kCursor / sizeof *kCursor; ++i) {
      if (name != kCursor[i].name) continue;
      std::string_view text;
      if ((seen & (1u << i)) || !in.string(text)) return false;
      (page.*kCursor[i].field).assign(text);
      seen |= 1u << i;
      return true;
    }
    return in.skip_value();
  });
  return plain && seen == kAll;
}

}  // namespace

bool readPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page,
               std::list<_HuaweiSnapshotChangeList>* spare) {
  _HuaweiSnapshotChangeListInfo read;
  PlainReader in(text);
  bool haveData = false;
  const bool plain = in.object([&](std::string_view name) {
    if (name != "data") return in.skip_value();
    if (haveData) return false;
    haveData = true;
    return readData(in, read, spare);
  });
  if (!plain || !haveData) return false;
  read.sessionId.swap(page.sessionId);
  read.sessionFailed = page.sessionFailed;
  page = std::move(read);
  return true;
}

}  // namespace HuaweiChangeListPage
