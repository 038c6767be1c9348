#include "RecordReaders.h"

#include "ResponseReading.h"

namespace HuaweiRecords {

using HuaweiResponse::readOptionalString;
using HuaweiResponse::readRequiredStrings;

void readRecord(const jsonxx::Object& data, _HuaweiSystemInformation& record) {
  readRequiredStrings(data, {{"ID", &record.id},
                             {"HEALTHSTATUS", &record.healthStatus},
                             {"NAME", &record.name},
                             {"PRODUCTVERSION", &record.productVersion},
                             {"RUNNINGSTATUS", &record.runningStatus}});
}

void readRecord(const jsonxx::Object& data, _HuaweiNDMPServiceSettings& record) {
  std::string isEnabled;
  std::string isSupportSnapshot;
  readRequiredStrings(data, {{"ip", &record.ip},
                             {"isEnabled", &isEnabled},
                             {"isSupportSnapshot", &isSupportSnapshot},
                             {"port", &record.port},
                             {"version", &record.version}});
  record.isEnabled = HuaweiResponse::textIsTrue(isEnabled);
  record.isSupportSnapshot = HuaweiResponse::textIsTrue(isSupportSnapshot);
  readOptionalString(data, "vstoreId", record.vstoreId);
  readOptionalString(data, "vstoreName", record.vstoreName);
}

void readRecord(const jsonxx::Object& data, _HuaweiVStoreInfo& record) {
  readRequiredStrings(data, {{"ID", &record.id}, {"NAME", &record.name}, {"RUNNINGSTATUS", &record.runningStatus}});
}

void readRecord(const jsonxx::Object& data, _HuaweiFileSystemsInfo& record) {
  readRequiredStrings(data, {{"ID", &record.id}, {"HEALTHSTATUS", &record.healthStatus}, {"NAME", &record.name}});
}

void readRecord(const jsonxx::Object& data, _HuaweiArrayInterfaces& record) {
  readRequiredStrings(data, {{"IPV4ADDR", &record.ipv4Address},
                             {"IPV6ADDR", &record.ipv6Address},
                             {"NAME", &record.name},
                             {"MANAGEMENTACCESS", &record.managementAccess},
                             {"ROLE", &record.role},
                             {"SUPPORTPROTOCOL", &record.supportProtocol}});
  readOptionalString(data, "vstoreId", record.vstoreId);
  readOptionalString(data, "vstoreName", record.vstoreName);
}

void readRecord(const jsonxx::Object& data, _HuaweiSnapshotInfo& record) {
  readRequiredStrings(data, {{"PARENTID", &record.parentId},
                             {"PARENTNAME", &record.parentName},
                             {"NAME", &record.name},
                             {"ID", &record.id},
                             {"SNAPTYPE", &record.snapType}});
}

void readRecord(const jsonxx::Object& data, _HuaweiShareInfo& record) {
  readRequiredStrings(data,
                      {{"ID", &record.id}, {"FSID", &record.fileSystemId}, {"NAME", &record.name}, {"SHAREPATH", &record.sharePath}});
  readOptionalString(data, "vstoreId", record.vstoreId);
  readOptionalString(data, "vstoreName", record.vstoreName);
}

void readRecord(const jsonxx::Object& data, _HuaweiNFSSharePermissionInfo& record) {
  readRequiredStrings(data, {{"ID", &record.id},
                             {"NAME", &record.name},
                             {"PARENTID", &record.parentId},
                             {"ACCESSVAL", &record.accessVal},
                             {"ALLSQUASH", &record.allSquash},
                             {"ROOTSQUASH", &record.rootSquash},
                             {"SYNC", &record.sync}});
  readOptionalString(data, "vstoreId", record.vstoreId);
  readOptionalString(data, "vstoreName", record.vstoreName);
}

void readRecord(const jsonxx::Object& data, _HuaweiCIFSSharePermissionInfo& record) {
  readRequiredStrings(data, {{"ID", &record.id},
                             {"NAME", &record.name},
                             {"PARENTID", &record.parentId},
                             {"PERMISSION", &record.permission},
                             {"DOMAINTYPE", &record.domainType}});
}

}  // namespace HuaweiRecords
