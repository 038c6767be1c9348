#include "HuaweiJSONMappingViewRequests.h"

#include "HandBuiltBody.h"
#include "ResponseReading.h"
#include "jsonxx.h"

bool HuaweiJSONCreateMappingView::buildRequest(std::string& body) {
  body = closedWithVstore("{" + HandBuiltPiece::quoted("NAME", m_view.name) + " ", m_view.vstoreId);
  return true;
}

bool HuaweiJSONCreateMappingView::parseResponse(std::string& response) {
  return HuaweiResponse::readCreated("HuaweiJSONCreateMappingView::parseResponse", m_jobId, response,
                                     [this](const jsonxx::Object& data) {
                                       HuaweiResponse::readRequiredStrings(
                                           data, {{"ID", &m_view.id}, {"NAME", &m_view.name}});
                                       m_view.vstoreName.clear();
                                     });
}
