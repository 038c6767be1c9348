#include "HuaweiJSONLunGroupRequests.h"

#include "HandBuiltBody.h"
#include "ResponseReading.h"
#include "SanAnswerReading.h"
#include "jsonxx.h"

namespace HuaweiResponse {
namespace {

HuaweiSanAnswer::CodeWidth widthOf(ListErrorReport report) {
  return report.signed32 ? HuaweiSanAnswer::CodeWidth::Signed32 : HuaweiSanAnswer::CodeWidth::Unsigned64;
}

}  // namespace

bool readList(const char* logName, unsigned long long jobId, const std::string& response, ListErrorReport report,
              const std::function<bool(const jsonxx::Object&)>& readElement) {
  jsonxx::Object answer;
  if (!HuaweiSanAnswer::open(logName, jobId, response, answer)) return false;
  if (!answer.has<jsonxx::Array>("data")) {
    return HuaweiSanAnswer::statusIsZero(logName, jobId, answer, widthOf(report), report.level);
  }
  const jsonxx::Array& data = answer.get<jsonxx::Array>("data");
  for (unsigned int i = 0; i < data.size(); ++i) {
    if (!readElement(data.get<jsonxx::Object>(i))) return false;
  }
  return true;
}

bool readStatus(const char* logName, unsigned long long jobId, const std::string& response) {
  jsonxx::Object answer;
  return HuaweiSanAnswer::open(logName, jobId, response, answer) &&
         HuaweiSanAnswer::statusIsZero(logName, jobId, answer, HuaweiSanAnswer::CodeWidth::Signed32);
}

bool readCreated(const char* logName, unsigned long long jobId, const std::string& response,
                 const std::function<void(const jsonxx::Object&)>& readData) {
  jsonxx::Object answer;
  if (!HuaweiSanAnswer::open(logName, jobId, response, answer)) return false;
  if (!answer.has<jsonxx::Object>("data")) return HuaweiSanAnswer::unusable(logName, jobId, HuaweiSanAnswer::kNoDataObject);
  readData(answer.get<jsonxx::Object>("data"));
  return true;
}

}  // namespace HuaweiResponse

namespace {

std::string optionalText(const jsonxx::Object& object, const char* key) {
  std::string text;
  HuaweiResponse::readOptionalString(object, key, text);
  return text;
}

// ID and NAME are required; the vStore keys count only where they are strings.
template <typename Record>
bool readIdentity(const jsonxx::Object& element, Record& record) {
  HuaweiResponse::readRequiredStrings(element, {{"ID", &record.id}, {"NAME", &record.name}});
  record.vstoreId = optionalText(element, "vstoreId");
  record.vstoreName = optionalText(element, "vstoreName");
  return true;
}

bool readElement(const jsonxx::Object& element, _HuaweiLunGroupInfo& record) { return record.parseFromJson(element); }
bool readElement(const jsonxx::Object& element, _HuaweiHostGroupInfo& record) { return readIdentity(element, record); }
bool readElement(const jsonxx::Object& element, _HuaweiLUNMappingView& record) { return readIdentity(element, record); }
bool readElement(const jsonxx::Object& element, _HuaweiLUNSnapshotInfo& record) {
  HuaweiResponse::readRequiredStrings(element, {{"ID", &record.id},
                                                {"NAME", &record.name},
                                                {"PARENTID", &record.parentId},
                                                {"PARENTNAME", &record.parentName},
                                                {"RUNNINGSTATUS", &record.runningStatus}});
  record.vstoreId = optionalText(element, "vstoreId");
  record.vstoreName = optionalText(element, "vstoreName");
  return true;
}

}  // namespace

std::string closedWithVstore(std::string body, const std::string& vstoreId) {
  return body + HandBuiltPiece::vstore(vstoreId) + "}";
}

template <typename Record>
bool HuaweiJSONGetRecordList<Record>::parseResponse(std::string& response) {
  m_records.clear();
  return HuaweiResponse::readList(m_logName, m_jobId, response, m_report, [this](const jsonxx::Object& element) {
    Record record;
    if (!readElement(element, record)) return false;
    m_records.push_back(record);
    return true;
  });
}

template class HuaweiJSONGetRecordList<_HuaweiLunGroupInfo>;
template class HuaweiJSONGetRecordList<_HuaweiLUNSnapshotInfo>;
template class HuaweiJSONGetRecordList<_HuaweiHostGroupInfo>;
template class HuaweiJSONGetRecordList<_HuaweiLUNMappingView>;

bool HuaweiJSONAssociationRequest::buildRequest(std::string& body) {
  body = closedWithVstore("{" + HandBuiltPiece::quoted("ID", m_ownerId) + ", " +
                              HandBuiltPiece::quoted("ASSOCIATEOBJID", m_objectId) + ", " +
                              HandBuiltPiece::bare("ASSOCIATEOBJTYPE", m_objectTypeText),
                          m_vstoreId);
  return true;
}

bool HuaweiJSONAssociationRequest::parseResponse(std::string& response) {
  return HuaweiResponse::readStatus(m_logName, m_jobId, response);
}

bool HuaweiJSONCreateLunGroup::buildRequest(std::string& body) {
  body = closedWithVstore("{" + HandBuiltPiece::quoted("NAME", m_lunGroup.name) + ", " +
                              HandBuiltPiece::bare("APPTYPE", m_lunGroup.appType),
                          m_lunGroup.vstoreId);
  return true;
}

bool HuaweiJSONCreateLunGroup::parseResponse(std::string& response) {
  return HuaweiResponse::readCreated("HuaweiJSONCreateLunGroup::parseResponse", m_jobId, response,
                                     [this](const jsonxx::Object& data) {
                                       HuaweiResponse::readRequiredStrings(
                                           data, {{"ID", &m_lunGroup.id}, {"NAME", &m_lunGroup.name}});
                                       m_lunGroup.appType = optionalText(data, "APPTYPE");
                                       m_lunGroup.vstoreId = optionalText(data, "vstoreId");
                                       m_lunGroup.vstoreName = optionalText(data, "vstoreName");
                                     });
}
