// Requests of mapping views that read more than a key table: the creation of a view and the LUN
// groups attached to one.
#pragma once

#include <string>
#include <vector>

#include "HuaweiIncludes.h"
#include "HuaweiJSONLunGroupRequests.h"

class HuaweiJSONGetLunGroupAssociatedWithMappingView : public HuaweiJSONLunGroupList {
 public:
  explicit HuaweiJSONGetLunGroupAssociatedWithMappingView(unsigned long long const& jobId)
      : HuaweiJSONLunGroupList(jobId, "HuaweiJSONGetLunGroupAssociatedWithMappingView::parseResponse",
                               {HuaweiResponse::CodeWidth::Signed32}) {}
  void getLunGroupInfo(std::vector<_HuaweiLunGroupInfo>& groups) { groups = m_records; }
};

// Takes the array's ID and NAME; the vStore identifier stays as built, its name empty.
class HuaweiJSONCreateMappingView : public HuaweiJSONRecordObject<_HuaweiLUNMappingView> {
 public:
  HuaweiJSONCreateMappingView(unsigned long long const& jobId, _HuaweiLUNMappingView const& view);
  bool buildRequest(std::string& body) override;
  void getMappingViewInfo(_HuaweiLUNMappingView& view) { view = m_record; }

 private:
  bool readData(const jsonxx::Object& data) override;
};
