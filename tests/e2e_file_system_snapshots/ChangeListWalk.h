// Walks a change list the way a backup job does: one getSnapshotChangeList call per page on one
// record, until a call answers true with no changes at progress "100", or answers false.
#pragma once

#include <string>
#include <vector>

#include "ZrManageHuawei.h"

namespace zrtest {

struct ChangeListWalk {
  bool finished = false;  // ended on the empty page at progress "100"
  bool failed = false;    // a call answered false
  int calls = 0;
  std::vector<_HuaweiSnapshotChangeList> entries;
  // For each call, the page resource that the record's cursor before the call asks for.
  std::vector<std::string> expectedPages;
  _HuaweiSnapshotChangeListInfo last;  // the record after the last call
};

// The page resource for a session and a cursor, as the array expects it.
inline std::string PageResource(const std::string& sessionId, const _HuaweiSnapshotChangeListInfo& cursor) {
  return "fs_snapchangelist_result?sessionID=" + sessionId + "&parentType=40&posType=" + cursor.posType +
         "&posObj=" + cursor.posObj + "&posOffset=" + cursor.posOffset + "&linkPosType=" + cursor.linkPosType +
         "&linkPos=" + cursor.linkPos;
}

// Calls until the walk ends or breaks, at most `maxCalls` times.
inline ChangeListWalk WalkAll(ZrManageHuawei& array, const std::string& fileSystemId, const std::string& base,
                              const std::string& incremental, int maxCalls = 200) {
  ChangeListWalk walk;
  _HuaweiSnapshotChangeListInfo& info = walk.last;
  while (walk.calls < maxCalls) {
    const _HuaweiSnapshotChangeListInfo before = info;
    const bool answered = array.getSnapshotChangeList(fileSystemId, base, incremental, info);
    ++walk.calls;
    walk.expectedPages.push_back(PageResource(info.sessionId, before));
    if (!answered) {
      walk.failed = true;
      break;
    }
    walk.entries.insert(walk.entries.end(), info.changes.begin(), info.changes.end());
    if (info.changes.empty() && info.progress == "100") {
      walk.finished = true;
      break;
    }
  }
  return walk;
}

}  // namespace zrtest
