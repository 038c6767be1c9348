// Requests of snapshot change lists: one page of the result. The session is made and deleted by
// generic requests.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <string>

#include "HuaweiIncludes.h"
#include "HuaweiJSONBase.h"
#include "jsonxx.h"

namespace HuaweiPageRepair {

// The text repair of a change-list page: the array sends the list as a string holding the escaped
// text of an array. The first "[ becomes [, then the first ]" becomes ], then every backslash goes.
void repair(std::string& page);

}  // namespace HuaweiPageRepair

class HuaweiJSONGetChangeListResult : public HuaweiJSONBase {
 public:
  explicit HuaweiJSONGetChangeListResult(unsigned long long const& jobId);

  // Repairs the page in the caller's string (the array sends the change list as the escaped text
  // of an array), parses it, and decodes the entries and the cursor of the next page; a page that
  // the repair would only unescape is read as it stands, with the same result. When the
  // process chose exact change-list names, reads the page with readExactPage() instead.
  bool parseResponse(std::string& response) override;
  // Reads the page as what it is, a JSON string holding the JSON text of the list, so that every
  // name comes out as the array holds it; the list is decoded in the caller's string. A page that
  // cannot be decoded so fails with its reason at level -1; one that lacks a required value fails
  // as every page does.
  bool readExactPage(std::string& page);
  // Decodes the entities "&amp;", "&lt;", "&gt;", "&#40;" and "&#41;" in one pass from the left.
  // An ampersand that opens none of them is dropped and what follows it stays.
  bool handleSpecialCharactersInFileName(std::string& name);
  _HuaweiSnapshotChangeListInfo getChangeListInfo(std::string const& sessionId) &;
  // The same from a request that is done with: the records move out instead of being copied.
  _HuaweiSnapshotChangeListInfo getChangeListInfo(std::string const& sessionId) &&;

  // Reads a repaired page into the request's record: straight into the records when the page is in
  // the plain form that the array writes, else, or with documentModelOnly, through the document
  // model, which reads any text. Both ways give the same records, cursor, log lines and result.
  bool readRepairedPage(std::string const& page, bool documentModelOnly = false);
  // Records of an earlier page whose nodes and path buffers the next page may take over.
  void reuseRecords(std::list<_HuaweiSnapshotChangeList>&& records) { m_spare.swap(records); }

 private:
  // Decodes one entry; false when its file name cannot be decoded.
  bool readChange(jsonxx::Object& entry, _HuaweiSnapshotChangeList& change);
  // Decodes the entities of the names of a page read straight into records; false, with the
  // records dropped, when one fails.
  bool decodeFileNames();
  // Decodes the entities of a name that has an ampersand; false, with its line, when that fails.
  bool decodeFileName(std::string& name);

  _HuaweiSnapshotChangeListInfo m_info;
  std::list<_HuaweiSnapshotChangeList> m_spare;
  // Ordered by std::less<> so that a candidate is looked up as a view of the name, not a copy.
  std::map<std::string, char, std::less<>> m_specialCharacters;
};
