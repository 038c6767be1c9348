// LUNs and LUN snapshots: the two records through which they travel in the whole library.
#pragma once

#include <list>
#include <string>

#include "HuaweiApiValues.h"

namespace jsonxx {
class Object;
}

struct _HuaweiLUNInfo {
  std::string id;
  std::string name;
  // The storage pool.
  std::string parentId;
  // Clone identifiers, kept for the caller; the library reads none of them.
  std::list<std::string> splitMirrorIds;
  HuaweiApi::AllocType allocType;
  std::string owningController;
  HuaweiApi::RunningStatus runningStatus;
  std::string vstoreId;
  std::string vstoreName;
  // The array's text, no arithmetic on it. The one field that survives clear().
  std::string capacity;

  _HuaweiLUNInfo() : allocType(std::string()), runningStatus(std::string()) { clear(); }
  void clear() {
    id.clear();
    name.clear();
    parentId.clear();
    owningController.clear();
    vstoreId.clear();
    vstoreName.clear();
    allocType.clear();
    runningStatus.clear();
    splitMirrorIds.clear();
  }
  // Reads one LUN of an answer. A required key that is absent ends the process through the
  // document model's assertion (or fails the operation reading it, where the embedder chose so);
  // any other exception is logged and answers false.
  bool parseFromJson(jsonxx::Object const& object);
};
typedef _HuaweiLUNInfo HuaweiLUNInfo_t;

struct _HuaweiLUNSnapshotInfo {
  std::string id;
  std::string name;
  // The LUN the snapshot belongs to.
  std::string parentId;
  std::string parentName;
  std::string runningStatus;
  std::string vstoreId;
  std::string vstoreName;
  // Asks for a copy of the snapshot when the record is used to create one.
  bool isCopy;

  _HuaweiLUNSnapshotInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    parentId.clear();
    parentName.clear();
    runningStatus.clear();
    vstoreId.clear();
    vstoreName.clear();
    isCopy = false;
  }
};
typedef _HuaweiLUNSnapshotInfo HuaweiLUNSnapshotInfo_t;
