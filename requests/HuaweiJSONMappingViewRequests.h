// Requests of mapping views: lookups, creation, the groups attached to a view.
#pragma once

#include <string>
#include <vector>

#include "HuaweiIncludes.h"
#include "HuaweiJSONLunGroupRequests.h"

// Also lists the views that hold a LUN group. Its refusals are logged as errors.
class HuaweiJSONGetLUNMappingViewInfo : public HuaweiJSONGetRecordList<_HuaweiLUNMappingView> {
 public:
  explicit HuaweiJSONGetLUNMappingViewInfo(unsigned long long const& jobId)
      : HuaweiJSONGetRecordList(jobId, "HuaweiJSONGetLUNMappingViewInfo::parseResponse", {-1, true}) {}
  void getLUNMappingInfo(std::vector<_HuaweiLUNMappingView>& views) { views = m_records; }
};

class HuaweiJSONGetLunGroupAssociatedWithMappingView : public HuaweiJSONGetRecordList<_HuaweiLunGroupInfo> {
 public:
  explicit HuaweiJSONGetLunGroupAssociatedWithMappingView(unsigned long long const& jobId)
      : HuaweiJSONGetRecordList(jobId, "HuaweiJSONGetLunGroupAssociatedWithMappingView::parseResponse", {3, true}) {}
  void getLunGroupInfo(std::vector<_HuaweiLunGroupInfo>& groups) { groups = m_records; }
};

class HuaweiJSONGetHostGroupAssociatedWithMappingView : public HuaweiJSONGetRecordList<_HuaweiHostGroupInfo> {
 public:
  explicit HuaweiJSONGetHostGroupAssociatedWithMappingView(unsigned long long const& jobId)
      : HuaweiJSONGetRecordList(jobId, "HuaweiJSONGetHostGroupAssociatedWithMappingView::parseResponse", {3, true}) {}
  void getHostGroupInfo(std::vector<_HuaweiHostGroupInfo>& groups) { groups = m_records; }
};

class HuaweiJSONCreateMappingView : public HuaweiJSONBase {
 public:
  HuaweiJSONCreateMappingView(unsigned long long const& jobId, _HuaweiLUNMappingView const& view)
      : HuaweiJSONBase(jobId), m_view(view) {}
  bool buildRequest(std::string& body) override;
  // Takes the array's ID and NAME; the vStore stays as built.
  bool parseResponse(std::string& response) override;
  void getMappingViewInfo(_HuaweiLUNMappingView& view) { view = m_view; }

 private:
  _HuaweiLUNMappingView m_view;
};

class HuaweiJSONAssociateHostGroupWithMappingView : public HuaweiJSONAssociationRequest {
 public:
  HuaweiJSONAssociateHostGroupWithMappingView(unsigned long long const& jobId, std::string const& mappingViewId,
                                              std::string const& objectId, std::string const& objectTypeText,
                                              std::string const& vstoreId)
      : HuaweiJSONAssociationRequest(jobId, "HuaweiJSONAssociateHostGroupWithMappingView::parseResponse",
                                     mappingViewId, objectId, objectTypeText, vstoreId) {}
};

class HuaweiJSONAssociateLunGroupWithMappingView : public HuaweiJSONAssociationRequest {
 public:
  HuaweiJSONAssociateLunGroupWithMappingView(unsigned long long const& jobId, std::string const& mappingViewId,
                                             std::string const& objectId, std::string const& objectTypeText,
                                             std::string const& vstoreId)
      : HuaweiJSONAssociationRequest(jobId, "HuaweiJSONAssociateLunGroupWithMappingView::parseResponse",
                                     mappingViewId, objectId, objectTypeText, vstoreId) {}
};
