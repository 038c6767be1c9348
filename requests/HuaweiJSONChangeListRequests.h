// Requests of snapshot change lists: the session, one page of the result, the session's deletion.
#pragma once

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

class HuaweiJSONGetChangeListSession : public HuaweiJSONBase {
 public:
  HuaweiJSONGetChangeListSession(unsigned long long const& jobId, std::string const& baseSnapshotId,
                                 std::string const& incrementalSnapshotId, std::string const& parentId);

  bool buildRequest(std::string& body) override;
  bool parseResponse(std::string& response) override;
  std::string getSessionId() { return m_sessionId; }

 private:
  std::string m_parentId;
  std::string m_baseSnapshotId;
  std::string m_incrementalSnapshotId;
  std::string m_sessionId;
};

class HuaweiJSONDeleteChangeListSession : public HuaweiJSONBase {
 public:
  explicit HuaweiJSONDeleteChangeListSession(unsigned long long const& jobId) : HuaweiJSONBase(jobId) {}
  bool parseResponse(std::string& response) override;
};

class HuaweiJSONGetChangeListResult : public HuaweiJSONBase {
 public:
  explicit HuaweiJSONGetChangeListResult(unsigned long long const& jobId);

  // Repairs the page in the caller's string (the array sends the change list as the escaped text
  // of an array), parses it, and decodes the entries and the cursor of the next page.
  bool parseResponse(std::string& response) override;
  // Decodes the entities "&amp;", "&lt;", "&gt;", "&#40;" and "&#41;" in one pass from the left.
  // An ampersand that opens none of them is dropped and what follows it stays.
  bool handleSpecialCharactersInFileName(std::string& name);
  _HuaweiSnapshotChangeListInfo getChangeListInfo(std::string const& sessionId);

 private:
  // Decodes one entry; false when its file name cannot be decoded.
  bool readChange(jsonxx::Object& entry, _HuaweiSnapshotChangeList& change);

  _HuaweiSnapshotChangeListInfo m_info;
  std::map<std::string, char> m_specialCharacters;
};
