// The families that are rows of the object store and nothing more. Each declares its routes in
// the resource table; their store types are named here once, for the families that read one
// another's records and for the tests that seed and read them.
#pragma once

#include "resources/FileSystemResources.h"
#include "store/ResourceTable.h"

namespace arraysim {

namespace storetype {
// Tests seed LUNs with SPLITMIRRORIDS as the text of a JSON array, as the array sends it.
constexpr char kLun[] = "lun";
constexpr char kStoragePool[] = "storagepool";
constexpr char kLunSnapshot[] = "snapshot";
constexpr char kClone[] = "splitmirror";
// Records keyed by the secondary LUN's identifier; a LUN is secondary of one clone at most.
constexpr char kCloneTarget[] = "splitmirrortargetlun";
constexpr char kHost[] = "host";
constexpr char kHostGroup[] = "hostgroup";
constexpr char kIscsiInitiator[] = "iscsi_initiator";
constexpr char kFcInitiator[] = "fc_initiator";
constexpr char kLunGroup[] = "lungroup";
constexpr char kMappingView[] = "mappingview";
constexpr char kCIFSShare[] = "cifshare";
constexpr char kNFSShare[] = "nfshare";
constexpr char kCIFSPermission[] = "CIFS_SHARE_AUTH_CLIENT";
constexpr char kNFSPermission[] = "NFS_SHARE_AUTH_CLIENT";
}  // namespace storetype

void DeclareProvisioning(ResourceTable& table);
void DeclareLunSnapshots(ResourceTable& table);
void DeclareClones(ResourceTable& table);
void DeclareHosts(ResourceTable& table);
void DeclareLunGroups(ResourceTable& table);
void DeclareMappingViews(ResourceTable& table);
// A share names a file system the array holds.
void DeclareShares(ResourceTable& table, const FileSystemResources& fileSystems);

}  // namespace arraysim
