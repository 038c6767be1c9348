#include "HuaweiJSONHostRequests.h"

#include "HandBuiltBody.h"

using HandBuiltPiece::bare;
using HandBuiltPiece::quoted;
using HandBuiltPiece::vstore;
using HuaweiSanAnswer::textOrEmpty;

namespace {

// The lookup's own reading: the identifier may be missing from a single object, and the host's
// name lands in `name`.
_HuaweiInitiator lookedUp(const jsonxx::Object& data, bool idRequired) {
  _HuaweiInitiator initiator;
  initiator.id = idRequired ? data.get<std::string>("ID") : textOrEmpty(data, "ID");
  initiator.parentId = textOrEmpty(data, "PARENTID");
  initiator.name = textOrEmpty(data, "PARENTNAME");
  initiator.vstoreId = textOrEmpty(data, "vstoreId");
  initiator.vstoreName = textOrEmpty(data, "vstoreName");
  return initiator;
}

}  // namespace

bool HuaweiJSONGetInitiatorInfo::parseResponse(std::string& response) {
  const char* logName = "HuaweiJSONGetInitiatorInfo::parseResponse";
  jsonxx::Object answer;
  if (!HuaweiSanAnswer::open(logName, m_jobId, response, answer)) return false;
  if (answer.has<jsonxx::Array>("data")) {
    const jsonxx::Array& data = answer.get<jsonxx::Array>("data");
    for (unsigned int i = 0; i < data.size(); ++i) m_initiators.push_back(lookedUp(data.get<jsonxx::Object>(i), true));
    return true;
  }
  if (answer.has<jsonxx::Object>("data")) {
    m_initiators.push_back(lookedUp(answer.get<jsonxx::Object>("data"), false));
    return true;
  }
  return HuaweiSanAnswer::unusable(logName, m_jobId, HuaweiSanAnswer::kNoDataList);
}

bool HuaweiJSONCreateHost::buildRequest(std::string& body) {
  body = "{" + quoted("NAME", m_record.name) + ", " + quoted("OPERATIONSYSTEM", m_record.operatingSystem) + " " +
         vstore(m_record.vstoreId) + "}";
  return true;
}

bool HuaweiJSONCreateInitiator::buildRequest(std::string& body) {
  body = "{" + quoted("ID", m_record.id) + " ";
  if (!m_record.parentId.empty()) body += "," + quoted("PARENTID", m_record.parentId) + " ";
  body += vstore(m_record.vstoreId) + "}";
  return true;
}

bool HuaweiJSONUpdateInitiator::buildRequest(std::string& body) {
  body = "{" + quoted("PARENTID", m_initiator.parentId) + " " + vstore(m_initiator.vstoreId) + "}";
  return true;
}

bool HuaweiJSONCreateHostGroup::buildRequest(std::string& body) {
  body = "{" + quoted("NAME", m_record.name) + " " + vstore(m_record.vstoreId) + "}";
  return true;
}

bool HuaweiJSONAssociateHostWithHostGroup::buildRequest(std::string& body) {
  // The type goes bare, with nothing behind it.
  body = "{" + quoted("ID", m_hostGroupId) + ", " + quoted("ASSOCIATEOBJID", m_hostId) + ", " +
         bare("ASSOCIATEOBJTYPE", m_objectType) + vstore(m_vstoreId) + "}";
  return true;
}
