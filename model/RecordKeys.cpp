#include "RecordKeys.h"

namespace HuaweiKeys {

namespace {

template <class Record, class Field>
Key<Record> required(const char* key, const char* field, Field Record::*member, Kind kind = Kind::String) {
  return {field, key, Presence::Required, kind, member};
}
template <class Record, class Field>
Key<Record> optional(const char* key, const char* field, Field Record::*member) {
  return {field, key, Presence::Optional, Kind::String, member};
}
template <class Record, class Field>
Key<Record> unread(const char* field, Field Record::*member) {
  return {field, nullptr, Presence::Unread, Kind::String, member};
}

}  // namespace

// The field's name as written in the record, and the field itself.
#define FIELD(name) #name, &R::name

HUAWEI_RECORD_KEYS(_HuaweiSystemInformation) {
  using R = _HuaweiSystemInformation;
  static const KeyTable<R> keys{required("ID", FIELD(id)), required("HEALTHSTATUS", FIELD(healthStatus)),
                                required("NAME", FIELD(name)), required("PRODUCTVERSION", FIELD(productVersion)),
                                required("RUNNINGSTATUS", FIELD(runningStatus))};
  return keys;
}

// The array's keys come in its alphabetical order; the flags are texts, anything but "false" true.
HUAWEI_RECORD_KEYS(_HuaweiNDMPServiceSettings) {
  using R = _HuaweiNDMPServiceSettings;
  static const KeyTable<R> keys{required("ip", FIELD(ip)),
                                required("isEnabled", FIELD(isEnabled)),
                                required("isSupportSnapshot", FIELD(isSupportSnapshot)),
                                required("port", FIELD(port)),
                                required("version", FIELD(version)),
                                optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiVStoreInfo) {
  using R = _HuaweiVStoreInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)), required("NAME", FIELD(name)),
                                required("RUNNINGSTATUS", FIELD(runningStatus))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiFileSystemsInfo) {
  using R = _HuaweiFileSystemsInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)), required("HEALTHSTATUS", FIELD(healthStatus)),
                                required("NAME", FIELD(name))};
  return keys;
}

// An interface without vstoreId keeps the record's "-12345".
HUAWEI_RECORD_KEYS(_HuaweiArrayInterfaces) {
  using R = _HuaweiArrayInterfaces;
  static const KeyTable<R> keys{required("IPV4ADDR", FIELD(ipv4Address)),
                                required("IPV6ADDR", FIELD(ipv6Address)),
                                required("NAME", FIELD(name)),
                                required("MANAGEMENTACCESS", FIELD(managementAccess)),
                                required("ROLE", FIELD(role)),
                                required("SUPPORTPROTOCOL", FIELD(supportProtocol)),
                                optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName)),
                                unread(FIELD(ndmpMonitoringIp))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiSnapshotInfo) {
  using R = _HuaweiSnapshotInfo;
  static const KeyTable<R> keys{required("PARENTID", FIELD(parentId)), required("PARENTNAME", FIELD(parentName)),
                                required("NAME", FIELD(name)),         required("ID", FIELD(id)),
                                required("SNAPTYPE", FIELD(snapType)), unread(FIELD(notExist))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiSnapshotChangeList) {
  using R = _HuaweiSnapshotChangeList;
  const Kind number = Kind::Number;
  static const KeyTable<R> keys{
      required("inode", FIELD(inode), number), required("changeType", FIELD(changeType), number),
      required("fType", FIELD(fType), number), required("filePath", FIELD(filePath)),
      required("crTime", FIELD(crTime), number), required("cTime", FIELD(cTime), number),
      required("mTime", FIELD(mTime), number),   required("aTime", FIELD(aTime), number),
      required("owner", FIELD(owner), number),   required("group", FIELD(group), number),
      required("size", FIELD(size), number),     required("links", FIELD(links), number),
      required("dosAttr", FIELD(dosAttr), number)};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiShareInfo) {
  using R = _HuaweiShareInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)),
                                required("FSID", FIELD(fileSystemId)),
                                required("NAME", FIELD(name)),
                                required("SHAREPATH", FIELD(sharePath)),
                                unread(FIELD(quotaName)),
                                optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

// The vStore keys are the list's to decide on, across its elements.
HUAWEI_RECORD_KEYS(_HuaweiCIFSSharePermissionInfo) {
  using R = _HuaweiCIFSSharePermissionInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)),
                                required("NAME", FIELD(name)),
                                required("PARENTID", FIELD(parentId)),
                                required("PERMISSION", FIELD(permission)),
                                required("DOMAINTYPE", FIELD(domainType)),
                                unread(FIELD(vstoreId)),
                                unread(FIELD(vstoreName))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiNFSSharePermissionInfo) {
  using R = _HuaweiNFSSharePermissionInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)),
                                required("NAME", FIELD(name)),
                                required("PARENTID", FIELD(parentId)),
                                required("ACCESSVAL", FIELD(accessVal)),
                                required("ALLSQUASH", FIELD(allSquash)),
                                required("ROOTSQUASH", FIELD(rootSquash)),
                                required("SYNC", FIELD(sync)),
                                optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

// SPLITMIRRORIDS is a JSON list written as a string; decoded last, after every plain key.
HUAWEI_RECORD_KEYS(_HuaweiLUNInfo) {
  using R = _HuaweiLUNInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)),
                                required("NAME", FIELD(name)),
                                required("PARENTID", FIELD(parentId)),
                                required("RUNNINGSTATUS", FIELD(runningStatus)),
                                optional("ALLOCTYPE", FIELD(allocType)),
                                optional("CAPACITY", FIELD(capacity)),
                                optional("OWNINGCONTROLLER", FIELD(owningController)),
                                optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName)),
                                optional("SPLITMIRRORIDS", FIELD(splitMirrorIds))};
  return keys;
}

// A lookup reads RUNNINGSTATUS before PARENTNAME; a LUN group's list reads the declared order.
HUAWEI_RECORD_KEYS(_HuaweiLUNSnapshotInfo) {
  using R = _HuaweiLUNSnapshotInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)),
                                required("NAME", FIELD(name)),
                                required("PARENTID", FIELD(parentId)),
                                required("RUNNINGSTATUS", FIELD(runningStatus)),
                                required("PARENTNAME", FIELD(parentName)),
                                optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName)),
                                unread(FIELD(isCopy))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiInitiator) {
  using R = _HuaweiInitiator;
  static const KeyTable<R> keys{required("ID", FIELD(id)),
                                optional("NAME", FIELD(name)),
                                optional("PARENTID", FIELD(parentId)),
                                optional("PARENTNAME", FIELD(parentName)),
                                optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiLUNHostInfo) {
  using R = _HuaweiLUNHostInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)), required("NAME", FIELD(name)),
                                required("OPERATIONSYSTEM", FIELD(operatingSystem)),
                                optional("vstoreId", FIELD(vstoreId)), optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiHostGroupInfo) {
  using R = _HuaweiHostGroupInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)), required("NAME", FIELD(name)),
                                optional("vstoreId", FIELD(vstoreId)), optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiLunGroupInfo) {
  using R = _HuaweiLunGroupInfo;
  static const KeyTable<R> keys{required("ID", FIELD(id)), required("NAME", FIELD(name)),
                                optional("APPTYPE", FIELD(appType)), optional("vstoreId", FIELD(vstoreId)),
                                optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiLUNMappingView) {
  using R = _HuaweiLUNMappingView;
  static const KeyTable<R> keys{required("ID", FIELD(id)), required("NAME", FIELD(name)),
                                optional("vstoreId", FIELD(vstoreId)), optional("vstoreName", FIELD(vstoreName))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiStoragePoolInfo) {
  using R = _HuaweiStoragePoolInfo;
  static const KeyTable<R> keys{required("NAME", FIELD(name)), required("ID", FIELD(id)),
                                required("PARENTID", FIELD(parentId))};
  return keys;
}

HUAWEI_RECORD_KEYS(_HuaweiCloneInfo) {
  using R = _HuaweiCloneInfo;
  static const KeyTable<R> keys{required("NAME", FIELD(name)), required("ID", FIELD(id)),
                                required("PRILUNID", FIELD(priLunId))};
  return keys;
}

// PROCESS is a decimal text; SPEED keeps only the four speeds.
HUAWEI_RECORD_KEYS(_HuaweiCloneSecondaryLUN) {
  using R = _HuaweiCloneSecondaryLUN;
  static const KeyTable<R> keys{required("NAME", FIELD(name)),
                                required("ID", FIELD(id)),
                                required("PARENTID", FIELD(parentId)),
                                required("SPEED", FIELD(speed)),
                                required("RESUMEPOLICY", FIELD(resumePolicy)),
                                required("RUNNINGSTATUS", FIELD(runningStatus)),
                                required("PROCESS", FIELD(process))};
  return keys;
}

#undef FIELD

}  // namespace HuaweiKeys
