// Decoders of the array's objects into the system's records. Keys are read in the array's order
// with the asserting getters of the document model: a required key that is absent or mistyped
// ends the process; optional keys are read only where present.
#pragma once

#include "HuaweiIncludes.h"
#include "jsonxx.h"

namespace HuaweiRecords {

void readRecord(const jsonxx::Object& data, _HuaweiSystemInformation& record);
void readRecord(const jsonxx::Object& data, _HuaweiNDMPServiceSettings& record);
void readRecord(const jsonxx::Object& data, _HuaweiVStoreInfo& record);
void readRecord(const jsonxx::Object& data, _HuaweiFileSystemsInfo& record);
void readRecord(const jsonxx::Object& data, _HuaweiArrayInterfaces& record);
void readRecord(const jsonxx::Object& data, _HuaweiSnapshotInfo& record);
// Shares and permissions carry vstoreId and vstoreName only where the array sends them as strings.
void readRecord(const jsonxx::Object& data, _HuaweiShareInfo& record);
void readRecord(const jsonxx::Object& data, _HuaweiNFSSharePermissionInfo& record);
// Without the vStore keys: the list of CIFS permissions decides on them across elements.
void readRecord(const jsonxx::Object& data, _HuaweiCIFSSharePermissionInfo& record);

}  // namespace HuaweiRecords
