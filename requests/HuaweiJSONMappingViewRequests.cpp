#include "HuaweiJSONMappingViewRequests.h"

#include "HandBuiltBody.h"

HuaweiJSONCreateMappingView::HuaweiJSONCreateMappingView(unsigned long long const& jobId,
                                                         _HuaweiLUNMappingView const& view)
    : HuaweiJSONRecordObject(jobId, HuaweiResponse::sanRules("HuaweiJSONCreateMappingView::parseResponse"), view) {}

bool HuaweiJSONCreateMappingView::buildRequest(std::string& body) {
  body = "{" + HandBuiltPiece::quoted("NAME", m_record.name) + " " + HandBuiltPiece::vstore(m_record.vstoreId) + "}";
  return true;
}

bool HuaweiJSONCreateMappingView::readData(const jsonxx::Object& data) {
  HuaweiKeys::readKeys(data, m_record, HuaweiKeys::Keys::RequiredOnly);
  m_record.vstoreName.clear();
  return true;
}
