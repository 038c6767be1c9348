// Change lists as text, so that what the library read compares with what it should have read in
// one assertion: every field of an entry on one line, the array's own difference in the same form,
// and a page with its counts and cursor.
#pragma once

#include <string>
#include <vector>

#include "ZrManageHuawei.h"
#include "filetree/TreeDifference.h"

namespace zrtest {

inline std::string EntryText(int changeType, int fType, const std::string& path, std::vector<unsigned long long> numbers) {
  std::string text = std::to_string(changeType) + " " + std::to_string(fType) + " [" + path + "]";
  for (const unsigned long long number : numbers) text += " " + std::to_string(number);
  return text;
}

template <class Entries>
std::vector<std::string> EntryTexts(const Entries& entries) {
  std::vector<std::string> texts;
  for (const _HuaweiSnapshotChangeList& e : entries) {
    texts.push_back(EntryText(e.changeType, e.fType, e.filePath, {e.inode, e.size, e.crTime, e.cTime, e.mTime, e.aTime,
                                                                  e.owner, e.group, e.dosAttr, static_cast<unsigned long long>(e.links)}));
  }
  return texts;
}

inline std::vector<std::string> EntryTexts(const std::vector<arraysim::Change>& truth) {
  std::vector<std::string> texts;
  for (const auto& c : truth) {
    const auto& a = c.attributes;
    texts.push_back(EntryText(static_cast<int>(c.changeType), static_cast<int>(c.fileType), c.path,
                              {a.inode, a.size, a.crTime, a.cTime, a.mTime, a.aTime, a.owner, a.group, a.dosAttr, a.links}));
  }
  return texts;
}

inline std::string PageText(const _HuaweiSnapshotChangeListInfo& page) {
  std::string text = page.numChanges + "|" + page.progress + "|" + page.linkPos + "|" + page.linkPosType + "|" +
                     page.posObj + "|" + page.posOffset + "|" + page.posType;
  for (const std::string& entry : EntryTexts(page.changes)) text += "\n" + entry;
  return text;
}

}  // namespace zrtest
