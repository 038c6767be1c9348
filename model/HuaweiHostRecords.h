// Initiators, hosts and host groups: what the array knows of the machines that LUNs are shown to.
#pragma once

#include <string>

struct _HuaweiLUNHostInfo {
  // Chosen by the array.
  std::string id;
  std::string name;
  // The array's operating-system code, in decimal text.
  std::string operatingSystem;
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiLUNHostInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    operatingSystem.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
};
typedef _HuaweiLUNHostInfo HuaweiLUNHostInfo_t;

struct _HuaweiInitiator {
  // Given by the caller when the initiator is made.
  std::string id;
  // The initiator's name; after a lookup, the name of its host (see getInitiatorInfoFromID).
  std::string name;
  // The host it is bound to; empty when it is free.
  std::string parentId;
  std::string parentName;
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiInitiator() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    parentId.clear();
    parentName.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
};
typedef _HuaweiInitiator HuaweiInitiator_t;

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
