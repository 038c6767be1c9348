// File-system snapshots and the change list between two of them.
#pragma once

#include <list>
#include <string>

struct _HuaweiSnapshotInfo {
  std::string parentId;
  std::string id;
  std::string name;
  std::string parentName;
  std::string snapType;
  // Set when the array answered that the snapshot does not exist.
  bool notExist;

  _HuaweiSnapshotInfo() { clear(); }
  // A record never filled reads as a snapshot of type 8, which the deletion relies on.
  void clear() {
    parentId.clear();
    id.clear();
    name.clear();
    parentName.clear();
    snapType = "8";
    notExist = false;
  }
};
typedef _HuaweiSnapshotInfo HuaweiSnapshotInfo_t;

// One changed file or directory. The codes and times are the array's, passed through unchanged.
struct _HuaweiSnapshotChangeList {
  unsigned long long inode;
  int changeType;
  std::string filePath;
  int fType;
  unsigned long long crTime;
  unsigned long long cTime;
  unsigned long long mTime;
  unsigned long long aTime;
  unsigned long long owner;
  unsigned long long group;
  int links;
  unsigned long long size;
  unsigned int dosAttr;

  _HuaweiSnapshotChangeList() { clear(); }
  void clear() {
    inode = 0;
    changeType = -1;
    filePath.clear();
    fType = 0;
    crTime = cTime = mTime = aTime = 0;
    owner = group = 0;
    links = 0;
    size = 0;
    dosAttr = 0;
  }
};
typedef _HuaweiSnapshotChangeList HuaweiSnapshotChangeList_t;

// One page of a change list and the cursor of the next. A fresh or cleared record is the cursor of
// the first page. The cursor values are the array's strings, carried verbatim into the next query.
struct _HuaweiSnapshotChangeListInfo {
  std::list<_HuaweiSnapshotChangeList> changes;
  std::string linkPos;
  std::string linkPosType;
  std::string numChanges;
  std::string posObj;
  std::string posOffset;
  std::string posType;
  std::string progress;
  std::string sessionId;
  int sessionFailed;

  _HuaweiSnapshotChangeListInfo() { clear(); }
  _HuaweiSnapshotChangeListInfo(const _HuaweiSnapshotChangeListInfo&) = default;
  _HuaweiSnapshotChangeListInfo& operator=(const _HuaweiSnapshotChangeListInfo&) = default;
  _HuaweiSnapshotChangeListInfo& operator=(_HuaweiSnapshotChangeListInfo&&) = default;

  void clear() {
    changes.clear();
    linkPos = "18446744073709551614";
    linkPosType = "255";
    numChanges = "0";
    posObj = "0";
    posOffset = "0";
    posType = "255";
    progress = "0";
    sessionId.clear();
    sessionFailed = 0;
  }
};
typedef _HuaweiSnapshotChangeListInfo HuaweiSnapshotChangeListInfo_t;
