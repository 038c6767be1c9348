// The library's records as JSON objects under their own field names, in the order they are
// declared, so that `jq '.[].name'` reads as the C++ does.
#pragma once

#include <nlohmann/json.hpp>

#include "HuaweiIncludes.h"

namespace zrarray {
using Json = nlohmann::ordered_json;
}

namespace HuaweiApi {
// The array's vocabularies travel as its own text.
template <class JsonType>
void to_json(JsonType& json, const Values& value) {
  json = value.getValue();
}
}  // namespace HuaweiApi

// One line per record: its type and the fields printed.
#define ZRARRAY_RECORD(Type, ...)                                               \
  template <class JsonType>                                                     \
  void to_json(JsonType& nlohmann_json_j, const Type& nlohmann_json_t) {        \
    NLOHMANN_JSON_EXPAND(NLOHMANN_JSON_PASTE(NLOHMANN_JSON_TO, __VA_ARGS__))    \
  }

ZRARRAY_RECORD(_HuaweiSystemInformation, id, healthStatus, name, productVersion, runningStatus)
ZRARRAY_RECORD(_HuaweiNDMPServiceSettings, isEnabled, ip, port, version, vstoreId, vstoreName, isSupportSnapshot)
ZRARRAY_RECORD(_HuaweiVStoreInfo, id, name, runningStatus)
ZRARRAY_RECORD(_HuaweiFileSystemsInfo, id, name, healthStatus)
ZRARRAY_RECORD(_HuaweiArrayInterfaces, name, ipv4Address, ipv6Address, vstoreId, vstoreName, supportProtocol, role,
               managementAccess, ndmpMonitoringIp)
ZRARRAY_RECORD(_HuaweiSnapshotInfo, parentId, id, name, parentName, snapType, notExist)
ZRARRAY_RECORD(_HuaweiSnapshotChangeList, inode, changeType, filePath, fType, crTime, cTime, mTime, aTime, owner,
               group, links, size, dosAttr)
ZRARRAY_RECORD(_HuaweiLUNInfo, id, name, parentId, splitMirrorIds, allocType, owningController, runningStatus,
               vstoreId, vstoreName, capacity)
ZRARRAY_RECORD(_HuaweiLUNSnapshotInfo, id, name, parentId, parentName, runningStatus, vstoreId, vstoreName, isCopy)
ZRARRAY_RECORD(_HuaweiHostGroupInfo, id, name, vstoreId, vstoreName)
ZRARRAY_RECORD(_HuaweiLunGroupInfo, id, name, appType, vstoreId, vstoreName)
ZRARRAY_RECORD(_HuaweiShareInfo, id, fileSystemId, name, sharePath, quotaName, vstoreId, vstoreName)
ZRARRAY_RECORD(_HuaweiCIFSSharePermissionInfo, id, name, permission, parentId, domainType, vstoreId, vstoreName)
ZRARRAY_RECORD(_HuaweiNFSSharePermissionInfo, id, name, parentId, accessVal, sync, allSquash, rootSquash, vstoreId,
               vstoreName)
ZRARRAY_RECORD(_HuaweiLUNHostInfo, id, name, operatingSystem, vstoreId, vstoreName)
ZRARRAY_RECORD(_HuaweiInitiator, id, name, parentId, parentName, vstoreId, vstoreName)
ZRARRAY_RECORD(_HuaweiLUNMappingView, id, name, vstoreId, vstoreName)
ZRARRAY_RECORD(_HuaweiStoragePoolInfo, id, name, parentId)
ZRARRAY_RECORD(_HuaweiCloneInfo, id, name, priLunId)
ZRARRAY_RECORD(_HuaweiCloneSecondaryLUN, id, name, parentId, speed, resumePolicy, runningStatus, process)
