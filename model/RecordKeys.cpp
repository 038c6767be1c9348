#include "RecordKeys.h"

namespace HuaweiKeys {

namespace {

template <class Record, class Field>
Key<Record> required(const char* key, const char* field, Field Record::*member) {
  return {field, key, Presence::Required, Kind::String, member};
}
template <class Record, class Field>
Key<Record> number(const char* key, const char* field, Field Record::*member) {
  return {field, key, Presence::Required, Kind::Number, member};
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
// The vStore of an object, which the array sends only for one in a vStore.
#define IN_VSTORE optional("vstoreId", FIELD(vstoreId)), optional("vstoreName", FIELD(vstoreName))
#define KEYS(Record, ...)                       \
  HUAWEI_RECORD_KEYS(Record) {                  \
    using R = Record;                           \
    static const KeyTable<R> keys{__VA_ARGS__}; \
    return keys;                                \
  }

KEYS(_HuaweiSystemInformation,
    required("ID", FIELD(id)), required("HEALTHSTATUS", FIELD(healthStatus)), required("NAME", FIELD(name)),
    required("PRODUCTVERSION", FIELD(productVersion)), required("RUNNINGSTATUS", FIELD(runningStatus)))

// The array's keys come in its alphabetical order; the flags are texts, anything but "false" true.
KEYS(_HuaweiNDMPServiceSettings,
    required("ip", FIELD(ip)), required("isEnabled", FIELD(isEnabled)),
    required("isSupportSnapshot", FIELD(isSupportSnapshot)), required("port", FIELD(port)),
    required("version", FIELD(version)), IN_VSTORE)

KEYS(_HuaweiVStoreInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), required("RUNNINGSTATUS", FIELD(runningStatus)))

KEYS(_HuaweiFileSystemsInfo,
    required("ID", FIELD(id)), required("HEALTHSTATUS", FIELD(healthStatus)), required("NAME", FIELD(name)))

// An interface without vstoreId keeps the record's "-12345".
KEYS(_HuaweiArrayInterfaces,
    required("IPV4ADDR", FIELD(ipv4Address)), required("IPV6ADDR", FIELD(ipv6Address)),
    required("NAME", FIELD(name)), required("MANAGEMENTACCESS", FIELD(managementAccess)),
    required("ROLE", FIELD(role)), required("SUPPORTPROTOCOL", FIELD(supportProtocol)),
    IN_VSTORE, unread(FIELD(ndmpMonitoringIp)))

KEYS(_HuaweiSnapshotInfo,
    required("PARENTID", FIELD(parentId)), required("PARENTNAME", FIELD(parentName)), required("NAME", FIELD(name)),
    required("ID", FIELD(id)), required("SNAPTYPE", FIELD(snapType)), unread(FIELD(notExist)))

KEYS(_HuaweiSnapshotChangeList,
    number("inode", FIELD(inode)), number("changeType", FIELD(changeType)), number("fType", FIELD(fType)),
    required("filePath", FIELD(filePath)), number("crTime", FIELD(crTime)), number("cTime", FIELD(cTime)),
    number("mTime", FIELD(mTime)), number("aTime", FIELD(aTime)), number("owner", FIELD(owner)),
    number("group", FIELD(group)), number("size", FIELD(size)), number("links", FIELD(links)),
    number("dosAttr", FIELD(dosAttr)))

KEYS(_HuaweiShareInfo,
    required("ID", FIELD(id)), required("FSID", FIELD(fileSystemId)), required("NAME", FIELD(name)),
    required("SHAREPATH", FIELD(sharePath)), unread(FIELD(quotaName)), IN_VSTORE)

// The vStore keys are the list's to decide on, across its elements.
KEYS(_HuaweiCIFSSharePermissionInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), required("PARENTID", FIELD(parentId)),
    required("PERMISSION", FIELD(permission)), required("DOMAINTYPE", FIELD(domainType)), unread(FIELD(vstoreId)),
    unread(FIELD(vstoreName)))

KEYS(_HuaweiNFSSharePermissionInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), required("PARENTID", FIELD(parentId)),
    required("ACCESSVAL", FIELD(accessVal)), required("ALLSQUASH", FIELD(allSquash)),
    required("ROOTSQUASH", FIELD(rootSquash)), required("SYNC", FIELD(sync)), IN_VSTORE)

// SPLITMIRRORIDS is a JSON list written as a string; decoded last, after every plain key.
KEYS(_HuaweiLUNInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), required("PARENTID", FIELD(parentId)),
    required("RUNNINGSTATUS", FIELD(runningStatus)), optional("ALLOCTYPE", FIELD(allocType)),
    optional("CAPACITY", FIELD(capacity)), optional("OWNINGCONTROLLER", FIELD(owningController)),
    IN_VSTORE, optional("SPLITMIRRORIDS", FIELD(splitMirrorIds)))

// A lookup reads RUNNINGSTATUS before PARENTNAME; a LUN group's list reads the declared order.
KEYS(_HuaweiLUNSnapshotInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), required("PARENTID", FIELD(parentId)),
    required("RUNNINGSTATUS", FIELD(runningStatus)), required("PARENTNAME", FIELD(parentName)),
    IN_VSTORE, unread(FIELD(isCopy)))

KEYS(_HuaweiInitiator,
    required("ID", FIELD(id)), optional("NAME", FIELD(name)), optional("PARENTID", FIELD(parentId)),
    optional("PARENTNAME", FIELD(parentName)), IN_VSTORE)

KEYS(_HuaweiLUNHostInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), required("OPERATIONSYSTEM", FIELD(operatingSystem)),
    IN_VSTORE)

KEYS(_HuaweiHostGroupInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), IN_VSTORE)

KEYS(_HuaweiLunGroupInfo,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), optional("APPTYPE", FIELD(appType)), IN_VSTORE)

KEYS(_HuaweiLUNMappingView,
    required("ID", FIELD(id)), required("NAME", FIELD(name)), IN_VSTORE)

KEYS(_HuaweiStoragePoolInfo,
    required("NAME", FIELD(name)), required("ID", FIELD(id)), required("PARENTID", FIELD(parentId)))

KEYS(_HuaweiCloneInfo,
    required("NAME", FIELD(name)), required("ID", FIELD(id)), required("PRILUNID", FIELD(priLunId)))

// PROCESS is a decimal text; SPEED keeps only the four speeds.
KEYS(_HuaweiCloneSecondaryLUN,
    required("NAME", FIELD(name)), required("ID", FIELD(id)), required("PARENTID", FIELD(parentId)),
    required("SPEED", FIELD(speed)), required("RESUMEPOLICY", FIELD(resumePolicy)),
    required("RUNNINGSTATUS", FIELD(runningStatus)), required("PROCESS", FIELD(process)))

#undef KEYS
#undef IN_VSTORE
#undef FIELD

}  // namespace HuaweiKeys
