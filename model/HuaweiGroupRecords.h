// Host groups and LUN groups: the two sides that a mapping view ties together.
#pragma once

#include <string>

namespace jsonxx {
class Object;
}

struct _HuaweiHostGroupInfo {
  std::string id;
  std::string name;
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiHostGroupInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
};
typedef _HuaweiHostGroupInfo HuaweiHostGroupInfo_t;

struct _HuaweiLunGroupInfo {
  std::string id;
  std::string name;
  // Application type, as the array's text.
  std::string appType;
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiLunGroupInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    appType.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
  // Reads one group of an answer. A required key that is absent ends the process through the
  // document model's assertion (or fails the operation reading it, where the embedder chose so);
  // any other exception is logged and answers false.
  bool parseFromJson(jsonxx::Object const& object);
};
typedef _HuaweiLunGroupInfo HuaweiLunGroupInfo_t;
