// NAS shares and their permissions.
#pragma once

#include <string>

// A CIFS or NFS share as the lookup finds it.
struct _HuaweiShareInfo {
  std::string id;
  std::string fileSystemId;
  std::string name;
  std::string sharePath;
  // The part of sharePath behind the file system's own directory; empty at the file system's root.
  std::string quotaName;
  // Only filled when the array sends them.
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiShareInfo() { clear(); }
  void clear() {
    id.clear();
    fileSystemId.clear();
    name.clear();
    sharePath.clear();
    quotaName.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
};
typedef _HuaweiShareInfo HuaweiShareInfo_t;

// A grant on a CIFS share. Permission and domain type are the array's values, passed through.
struct _HuaweiCIFSSharePermissionInfo {
  std::string id;
  // May hold a backslash, as in DOMAIN\user.
  std::string name;
  std::string permission;
  std::string parentId;
  std::string domainType;
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiCIFSSharePermissionInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    permission.clear();
    parentId.clear();
    domainType.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
};
typedef _HuaweiCIFSSharePermissionInfo HuaweiCIFSSharePermissionInfo_t;

// A client's access to an NFS share. The values are the array's, passed through.
struct _HuaweiNFSSharePermissionInfo {
  std::string id;
  // The client, an address or a host name.
  std::string name;
  std::string parentId;
  std::string accessVal;
  std::string sync;
  std::string allSquash;
  std::string rootSquash;
  std::string vstoreId;
  std::string vstoreName;

  _HuaweiNFSSharePermissionInfo() { clear(); }
  void clear() {
    id.clear();
    name.clear();
    parentId.clear();
    accessVal.clear();
    sync.clear();
    allSquash.clear();
    rootSquash.clear();
    vstoreId.clear();
    vstoreName.clear();
  }
};
typedef _HuaweiNFSSharePermissionInfo HuaweiNFSSharePermissionInfo_t;
