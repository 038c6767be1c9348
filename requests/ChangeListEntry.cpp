#include "ChangeListEntry.h"

namespace HuaweiChangeEntry {

int keyOf(std::string_view name) {
  if (name.empty()) return -1;
  // Length and first letter tell the keys apart; the name itself then confirms.
  int key = -1;
  switch (name.size() * 256 + static_cast<unsigned char>(name[0])) {
    case 5 * 256 + 'a': key = kATime; break;
    case 10 * 256 + 'c': key = kChangeType; break;
    case 5 * 256 + 'c': key = kCTime; break;
    case 6 * 256 + 'c': key = kCrTime; break;
    case 7 * 256 + 'd': key = kDosAttr; break;
    case 5 * 256 + 'f': key = kFType; break;
    case 8 * 256 + 'f': key = kFilePath; break;
    case 5 * 256 + 'g': key = kGroup; break;
    case 5 * 256 + 'i': key = kInode; break;
    case 5 * 256 + 'l': key = kLinks; break;
    case 5 * 256 + 'm': key = kMTime; break;
    case 5 * 256 + 'o': key = kOwner; break;
    case 4 * 256 + 's': key = kSize; break;
    default: return -1;
  }
  // Compared in line: the library's memcmp costs more than these few bytes.
  const std::string_view expected = nameOf(key);
  for (std::size_t i = 1; i < expected.size(); ++i) {
    if (name[i] != expected[i]) return -1;
  }
  return key;
}

void storeNumbers(const std::uint64_t (&values)[kKeyCount], _HuaweiSnapshotChangeList& change) {
  const auto low32 = [&](Key key) { return static_cast<std::uint32_t>(values[key]); };
  change.inode = values[kInode];
  change.changeType = static_cast<int>(low32(kChangeType));
  change.fType = static_cast<int>(low32(kFType));
  change.crTime = values[kCrTime];
  change.cTime = values[kCTime];
  change.mTime = values[kMTime];
  change.aTime = values[kATime];
  change.owner = values[kOwner];
  change.group = values[kGroup];
  change.size = values[kSize];
  change.links = static_cast<int>(low32(kLinks));
  change.dosAttr = low32(kDosAttr);
}

}  // namespace HuaweiChangeEntry
