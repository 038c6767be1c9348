// Walks a change list the way a backup job does: one getSnapshotChangeList call per page on one
// record, until a call answers true with no changes at progress "100", or answers false.
#pragma once

#include <string>
#include <vector>

#include "ZrManageHuawei.h"
#include "filetree/TreeDifference.h"

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

// Every field of each entry, one text an entry, as the walk tells them and as the array's own
// difference holds them, for comparing the two.
inline std::string Described(int changeType, int fType, const std::string& path, std::vector<unsigned long long> numbers) {
  std::string text = std::to_string(changeType) + " " + std::to_string(fType) + " " + path;
  for (const unsigned long long number : numbers) text += " " + std::to_string(number);
  return text;
}

inline std::vector<std::string> Described(const std::vector<_HuaweiSnapshotChangeList>& entries) {
  std::vector<std::string> texts;
  for (const auto& e : entries) {
    texts.push_back(Described(e.changeType, e.fType, e.filePath, {e.inode, e.size, e.crTime, e.cTime, e.mTime, e.aTime,
                                                                 e.owner, e.group, e.dosAttr, static_cast<unsigned long long>(e.links)}));
  }
  return texts;
}

inline std::vector<std::string> Described(const std::vector<arraysim::Change>& truth) {
  std::vector<std::string> texts;
  for (const auto& c : truth) {
    const auto& a = c.attributes;
    texts.push_back(Described(static_cast<int>(c.changeType), static_cast<int>(c.fileType), c.path,
                              {a.inode, a.size, a.crTime, a.cTime, a.mTime, a.aTime, a.owner, a.group, a.dosAttr, a.links}));
  }
  return texts;
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
