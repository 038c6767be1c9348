#include "HuaweiJSONLunGroupRequests.h"

#include "HandBuiltBody.h"

std::string closedWithVstore(std::string body, const std::string& vstoreId) {
  return body + HandBuiltPiece::vstore(vstoreId) + "}";
}

bool HuaweiJSONAssociationRequest::buildRequest(std::string& body) {
  body = closedWithVstore("{" + HandBuiltPiece::quoted("ID", m_ownerId) + ", " +
                              HandBuiltPiece::quoted("ASSOCIATEOBJID", m_objectId) + ", " +
                              HandBuiltPiece::bare("ASSOCIATEOBJTYPE", m_objectTypeText),
                          m_vstoreId);
  return true;
}

bool HuaweiJSONCreateLunGroup::buildRequest(std::string& body) {
  body = closedWithVstore("{" + HandBuiltPiece::quoted("NAME", m_record.name) + ", " +
                              HandBuiltPiece::bare("APPTYPE", m_record.appType),
                          m_record.vstoreId);
  return true;
}
