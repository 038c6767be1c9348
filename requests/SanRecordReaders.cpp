#include "SanRecordReaders.h"

#include "ResponseReading.h"
#include "SanAnswerReading.h"

namespace HuaweiSanRecords {

using HuaweiResponse::readRequiredStrings;
using HuaweiSanAnswer::textOrEmpty;

namespace {
template <typename Record>
void readVstore(const jsonxx::Object& data, Record& record) {
  record.vstoreId = textOrEmpty(data, "vstoreId");
  record.vstoreName = textOrEmpty(data, "vstoreName");
}
}  // namespace

void read(const jsonxx::Object& data, _HuaweiLUNSnapshotInfo& record) {
  readRequiredStrings(data, {{"ID", &record.id},
                             {"NAME", &record.name},
                             {"PARENTID", &record.parentId},
                             {"RUNNINGSTATUS", &record.runningStatus},
                             {"PARENTNAME", &record.parentName}});
  readVstore(data, record);
}

void read(const jsonxx::Object& data, _HuaweiLUNHostInfo& record) {
  readRequiredStrings(data, {{"ID", &record.id}, {"NAME", &record.name}, {"OPERATIONSYSTEM", &record.operatingSystem}});
  readVstore(data, record);
}

void read(const jsonxx::Object& data, _HuaweiHostGroupInfo& record) {
  readIdentity(data, record);
  readVstore(data, record);
}

void readIdentity(const jsonxx::Object& data, _HuaweiHostGroupInfo& record) {
  readRequiredStrings(data, {{"ID", &record.id}, {"NAME", &record.name}});
}

void read(const jsonxx::Object& data, _HuaweiInitiator& record) {
  record.id = data.get<std::string>("ID");
  record.name = textOrEmpty(data, "NAME");
  record.parentId = textOrEmpty(data, "PARENTID");
  record.parentName = textOrEmpty(data, "PARENTNAME");
  readVstore(data, record);
}

}  // namespace HuaweiSanRecords
