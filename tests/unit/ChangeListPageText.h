// Change-list pages as the array sends them, for the readers' unit tests: the list's text escaped
// into the "changeList" string.
#pragma once

#include <string>
#include <vector>

#include "changelist/ChangeListPage.h"

// One entry of the list; `pathBody` stands between the quotes of the list's own text.
inline std::string ChangeEntry(const std::string& pathBody, const std::string& inode = "7") {
  return "{\"inode\":" + inode + ",\"changeType\":0,\"fType\":1,\"filePath\":\"" + pathBody +
         "\",\"crTime\":1,\"cTime\":2,\"mTime\":3,\"aTime\":4,\"owner\":5,\"group\":6,"
         "\"size\":18446744073709551615,\"links\":1,\"dosAttr\":32}";
}

inline std::string ChangePage(const std::vector<std::string>& entries, const std::string& posObj = "\"77\"") {
  std::string list = "[";
  for (const std::string& one : entries) list += (list.size() > 1 ? "," : "") + one;
  std::string listString;
  arraysim::AppendJsonString(listString, list + "]");
  return "{\"data\":{\"changeList\":" + listString + ",\"numChanges\":\"1\",\"progress\":\"50\","
         "\"linkPos\":\"9\",\"linkPosType\":\"1\",\"posObj\":" + posObj + ",\"posOffset\":\"3\",\"posType\":\"2\"},"
         "\"error\":{\"code\":0,\"description\":\"0\"}}";
}
