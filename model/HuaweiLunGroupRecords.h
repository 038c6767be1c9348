// LUN groups: the side of a mapping view that holds the LUNs and snapshot LUNs shown.
#pragma once

#include <string>

namespace jsonxx {
class Object;
}

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
