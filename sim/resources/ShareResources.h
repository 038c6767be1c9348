// CIFS and NFS shares and their permissions: rows of the object store. A share names a file
// system the array holds (by FSID, or by the first directory of its path); a permission names a
// share of its protocol, once per client; deleting a share drops its permissions.
//
//   POST CIFSHARE, GET cifshare, DELETE cifshare/<id>
//   POST NFSHARE, GET nfshare, DELETE nfshare/<id>
//   POST CIFS_SHARE_AUTH_CLIENT, GET CIFS_SHARE_AUTH_CLIENT
//   POST NFS_SHARE_AUTH_CLIENT, GET NFS_SHARE_AUTH_CLIENT, DELETE NFS_SHARE_AUTH_CLIENT/<id>
#pragma once

#include "resources/FileSystemResources.h"
#include "store/ResourceTable.h"

namespace arraysim {

struct ShareResources {
  static void Declare(ResourceTable& table, const FileSystemResources& fileSystems);

  // Store types, as tests insert and read them.
  static constexpr const char* kCIFSShare = "cifshare";
  static constexpr const char* kNFSShare = "nfshare";
  static constexpr const char* kCIFSPermission = "CIFS_SHARE_AUTH_CLIENT";
  static constexpr const char* kNFSPermission = "NFS_SHARE_AUTH_CLIENT";
};

}  // namespace arraysim
