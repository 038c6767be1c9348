// The members of one change-list entry, shared by the two readers of a page: their names, and how
// their numbers, converted to 64 bits as the array's numbers are, land in the record's fields.
#pragma once

#include <cstdint>
#include <string_view>

#include "HuaweiIncludes.h"

namespace HuaweiChangeEntry {

enum Key { kATime, kChangeType, kCTime, kCrTime, kDosAttr, kFType, kFilePath, kGroup, kInode, kLinks, kMTime,
           kOwner, kSize, kKeyCount };

// In the order of Key, which is the order of the keys in an entry's sorted map; in double
// quotes, as they stand in the text.
constexpr std::string_view kQuotedNames[kKeyCount] = {
    "\"aTime\"", "\"changeType\"", "\"cTime\"", "\"crTime\"", "\"dosAttr\"", "\"fType\"", "\"filePath\"",
    "\"group\"", "\"inode\"",      "\"links\"", "\"mTime\"",  "\"owner\"",   "\"size\""};
// The name of a key without its quotes.
constexpr std::string_view nameOf(int key) { return kQuotedNames[key].substr(1, kQuotedNames[key].size() - 2); }

// The order in which the array writes an entry's keys.
constexpr Key kWireOrder[kKeyCount] = {kInode, kChangeType, kFType, kFilePath, kCrTime, kCTime, kMTime,
                                       kATime, kOwner, kGroup, kSize, kLinks, kDosAttr};

// The numbers read behind the file path, in the order in which an entry is read.
constexpr Key kNumbersAfterPath[] = {kCrTime, kCTime, kMTime, kATime, kOwner, kGroup, kSize, kLinks, kDosAttr};

// The key of an entry member, or -1 for any other name.
int keyOf(std::string_view name);

// Every number field of the record, from the values under Key (filePath's slot is not read); the
// narrower fields take the low bits, as the conversions of ArrayNumbers.h do.
void storeNumbers(const std::uint64_t (&values)[kKeyCount], _HuaweiSnapshotChangeList& change);

}  // namespace HuaweiChangeEntry
