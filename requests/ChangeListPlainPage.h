// A change-list page read straight into records, without the document model's tree, when it is in
// the plain form that the array writes (see jsonxx::PlainReader).
#pragma once

#include <list>
#include <string>

#include "HuaweiIncludes.h"

namespace HuaweiChangeListPage {

// Fills the cursor and the records of a repaired `page` (file names as sent, their entities not
// decoded) when the text is plain JSON whose "data" object holds every key of a page, each once
// and of its kind, and whose entries hold every key of an entry, each once, the numbers as
// integers of up to 64 bits. False for any other text, with `page` untouched: the document model
// has to read it, and decides whether it is a page at all. Records are made from the nodes of
// `spare` while it has any, so that a walk that hands back its last page allocates nothing per
// entry.
bool readPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page,
               std::list<_HuaweiSnapshotChangeList>* spare = nullptr);

// The page as the array sends it, read as readPlain() reads it once repaired, but without
// repairing it: true when the list string holds entries in the plain form only (quotes escaped,
// no other escape) and the repair would touch nothing else, so that it would give the same page.
// False for any other text, with `page` untouched: that text is repaired and read as before.
// `ampersands` tells whether a name holds an ampersand, whose entities are left to the caller.
bool readSentPlain(const std::string& text, _HuaweiSnapshotChangeListInfo& page, bool& ampersands,
                   std::list<_HuaweiSnapshotChangeList>* spare = nullptr);

// A page read as what it is, unrepaired: "changeList" a JSON string holding the JSON text of the
// array (or the array itself), every string decoded, the entities of the names too.
struct ExactReading {
  enum Outcome {
    kRead,         // `page` holds the page
    kUndecodable,  // not JSON text in the array's form, or a name that cannot be decoded: `why`
    kOtherShape,   // JSON text, but a key of a page or an entry is absent, repeated or of another kind
  };
  Outcome outcome = kRead;
  std::string why;
  // kOtherShape: the page with its list as plain JSON (names decoded by one layer), for the
  // document model to find what is missing.
  std::string documentText;
};
// Reads `text` in the form that readPlain() takes, but with escapes allowed in every string. The
// list string, unless it holds entries in the plain form only, is decoded in place, which changes
// `text`; on any outcome but kRead `page` is untouched.
ExactReading readExact(std::string& text, _HuaweiSnapshotChangeListInfo& page,
                       std::list<_HuaweiSnapshotChangeList>* spare = nullptr);

}  // namespace HuaweiChangeListPage
