// A repaired change-list page read straight into records, without the document model's tree, when
// it is in the plain form that the array writes (see jsonxx::PlainReader).
#pragma once

#include <list>
#include <string>

#include "HuaweiIncludes.h"

namespace HuaweiChangeListPage {

// Fills the cursor and the records of `page` (file names as sent, their entities not decoded)
// when the text is plain JSON whose "data" object holds every key of a page, each once and of its
// kind, and whose entries hold every key of an entry, each once, the numbers as integers of up
// to 64 bits. False for any other text, with `page` untouched: the document model has to read
// it, and decides whether it is a page at all. Records are made from the nodes of `spare` while it
// has any, so that a walk that hands back its last page allocates nothing per entry.
bool readPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page,
               std::list<_HuaweiSnapshotChangeList>* spare = nullptr);

}  // namespace HuaweiChangeListPage
