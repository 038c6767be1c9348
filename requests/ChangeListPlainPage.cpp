#include "ChangeListPlainPage.h"

#include <cstdint>
#include <list>
#include <string_view>

#include "ChangeListEntry.h"
#include "jsonxx_plain.h"

namespace HuaweiChangeListPage {
namespace {

using jsonxx::PlainReader;

bool readEntry(PlainReader& in, _HuaweiSnapshotChangeList& change) {
  using namespace HuaweiChangeEntry;
  if (!in.take('{')) return false;
  std::uint64_t numbers[kKeyCount] = {};
  unsigned seen = 0;
  do {
    std::string_view name, path;
    if (!in.string(name) || !in.take(':')) return false;
    const int key = keyOf(name);
    if (key < 0) {
      if (!in.skip_value()) return false;
      continue;
    }
    if (seen & (1u << key)) return false;  // a repeated key: the model keeps the last
    seen |= 1u << key;
    if (key == kFilePath) {
      if (!in.string(path)) return false;
      change.filePath.assign(path);
    } else {
      PlainReader::Integer number;
      if (!in.integer(number)) return false;
      numbers[key] = number.wrapped();
    }
  } while (in.take(','));
  if (!in.take('}') || seen != (1u << kKeyCount) - 1) return false;
  storeNumbers(numbers, change);
  return true;
}

bool readChanges(PlainReader& in, std::list<_HuaweiSnapshotChangeList>& changes) {
  if (!in.take('[')) return false;
  if (in.take(']')) return true;
  do {
    if (!readEntry(in, changes.emplace_back())) return false;
  } while (in.take(','));
  return in.take(']');
}

bool readData(PlainReader& in, _HuaweiSnapshotChangeListInfo& page) {
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
  if (!in.take('{')) return false;
  unsigned seen = 0;
  do {
    std::string_view name, text;
    if (!in.string(name) || !in.take(':')) return false;
    if (name == "changeList") {
      if ((seen & kChangeList) || !readChanges(in, page.changes)) return false;
      seen |= kChangeList;
      continue;
    }
    bool cursor = false;
    for (unsigned i = 0; i < sizeof kCursor / sizeof *kCursor && !cursor; ++i) {
      if (name != kCursor[i].name) continue;
      if ((seen & (1u << i)) || !in.string(text)) return false;
      (page.*kCursor[i].field).assign(text);
      seen |= 1u << i;
      cursor = true;
    }
    if (!cursor && !in.skip_value()) return false;
  } while (in.take(','));
  return in.take('}') && seen == kAll;
}

}  // namespace

bool readPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page) {
  _HuaweiSnapshotChangeListInfo read;
  PlainReader in(text);
  if (!in.take('{')) return false;
  bool haveData = false;
  do {
    std::string_view name;
    if (!in.string(name) || !in.take(':')) return false;
    if (name == "data") {
      if (haveData || !readData(in, read)) return false;
      haveData = true;
    } else if (!in.skip_value()) {
      return false;
    }
  } while (in.take(','));
  if (!in.take('}') || !haveData) return false;
  read.sessionId.swap(page.sessionId);
  read.sessionFailed = page.sessionFailed;
  page = std::move(read);
  return true;
}

}  // namespace HuaweiChangeListPage
