#include "HuaweiJSONShareRequests.h"

#include "ArrayNumbers.h"
#include "HandBuiltBody.h"
#include "HuaweiVstore.h"
#include "ResponseReading.h"
#include "TkDebug.h"

const HuaweiResponse::ParserLog kShareParserLog{"parseResponse", 3, 3};

namespace {

const char kBuildLog[] = "buildRequest";
const int kRequestLogLevel = 3;

// The error object of a grant's answer: a non-zero code is a refusal. The description goes into
// the slot that the text calls the code, as operators have always read it.
bool grantAccepted(const jsonxx::Object& answer, unsigned long long jobId) {
  const jsonxx::Object& error = answer.get<jsonxx::Object>("error");
  const std::string& description = error.get<std::string>("description");
  const unsigned long long code = HuaweiNumbers::toUnsigned64(error.get<long double>("code"));
  if (code == 0) return true;
  TkDebug(nullptr).DebugLvl(kShareParserLog.name, kRequestLogLevel, static_cast<long long>(jobId),
                            "[ERROR] Code:[%s] Message[%llu]", description.c_str(), code);
  return false;
}

}  // namespace

HuaweiJSONGetCIFSSharePermissionInfo::HuaweiJSONGetCIFSSharePermissionInfo(
    std::list<_HuaweiCIFSSharePermissionInfo>& permissions)
    : HuaweiJSONRecordList(0, {kShareParserLog, HuaweiResponse::WithoutData::Fatal}), m_destination(&permissions) {}

bool HuaweiJSONGetCIFSSharePermissionInfo::parseResponse(std::string& response) {
  if (!HuaweiJSONRecordList::parseResponse(response)) return false;
  *m_destination = m_records;
  return true;
}

bool HuaweiJSONGetCIFSSharePermissionInfo::readElement(const jsonxx::Object& element,
                                                       _HuaweiCIFSSharePermissionInfo& record) {
  HuaweiKeys::readKeys(element, record);
  if (!m_vstoreSeen) {
    HuaweiResponse::readOptionalString(element, "vstoreId", m_vstoreId);
    HuaweiResponse::readOptionalString(element, "vstoreName", m_vstoreName);
    m_vstoreSeen = element.has<std::string>("vstoreId") || element.has<std::string>("vstoreName");
  }
  record.vstoreId = m_vstoreId;
  record.vstoreName = m_vstoreName;
  return true;
}

HuaweiJSONAddCIFSSharePermissions::HuaweiJSONAddCIFSSharePermissions(unsigned long long const& jobId,
                                                                     std::string const& name,
                                                                     std::string const& parentId,
                                                                     std::string const& domainType,
                                                                     std::string const& permission,
                                                                     std::string const& vstoreId)
    : HuaweiJSONBase(jobId),
      m_name(name),
      m_parentId(parentId),
      m_domainType(domainType),
      m_permission(permission),
      m_vstoreId(vstoreId) {}

bool HuaweiJSONAddCIFSSharePermissions::buildRequest(std::string& body) {
  body.clear();
  const RequiredFields required(kBuildLog, kRequestLogLevel, {&m_parentId, &m_name, &m_permission});
  if (!required.met(m_jobId)) return false;
  // The domain separator of DOMAIN\user goes out escaped, as every backslash of a body value does.
  HandBuiltBody request;
  request.add("NAME", m_name).add("PARENTID", m_parentId).add("PERMISSION", m_permission).add("DOMAINTYPE", m_domainType);
  if (!HuaweiVstore::isNone(m_vstoreId)) request.addPiece("vstoreId", m_vstoreId);
  body = request.str();
  return true;
}

bool HuaweiJSONAddCIFSSharePermissions::parseResponse(std::string& response) {
  jsonxx::Object answer;
  if (!HuaweiResponse::parseObject(kShareParserLog, m_jobId, response, answer)) return false;
  const jsonxx::Object& data = answer.get<jsonxx::Object>("data");
  m_permissionId.clear();
  HuaweiResponse::readOptionalString(data, "ID", m_permissionId);
  // A refused grant still answers with "data": the error object tells it apart.
  return !m_permissionId.empty() || grantAccepted(answer, m_jobId);
}

HuaweiJSONAddNFSSharePermissions::HuaweiJSONAddNFSSharePermissions(
    unsigned long long const& jobId, std::string const& name, std::string const& parentId,
    std::string const& accessVal, std::string const& sync, std::string const& allSquash,
    std::string const& rootSquash, std::string const& vstoreId)
    : HuaweiJSONBase(jobId),
      m_name(name),
      m_parentId(parentId),
      m_accessVal(accessVal),
      m_sync(sync),
      m_allSquash(allSquash),
      m_rootSquash(rootSquash),
      m_vstoreId(vstoreId) {}

bool HuaweiJSONAddNFSSharePermissions::buildRequest(std::string& body) {
  body.clear();
  const RequiredFields required(kBuildLog, kRequestLogLevel,
                                {&m_parentId, &m_name, &m_accessVal, &m_sync, &m_allSquash, &m_rootSquash});
  if (!required.met(m_jobId)) return false;
  body = HandBuiltBody()
             .add("NAME", m_name)
             .add("PARENTID", m_parentId)
             .add("ACCESSVAL", m_accessVal)
             .add("SYNC", m_sync)
             .add("ALLSQUASH", m_allSquash)
             .add("ROOTSQUASH", m_rootSquash)
             .str();
  return true;
}

bool HuaweiJSONAddNFSSharePermissions::parseResponse(std::string& response) {
  jsonxx::Object answer;
  return HuaweiResponse::parseObject(kShareParserLog, m_jobId, response, answer) && grantAccepted(answer, m_jobId);
}
