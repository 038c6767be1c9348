// Requests of mapping views: lookups, creation, the groups attached to a view.
#pragma once

#include <string>
#include <vector>

#include "HuaweiIncludes.h"
#include "HuaweiJSONLunGroupRequests.h"

// Also lists the views that hold a LUN group. Its refusals are logged as errors.
class HuaweiJSONGetLUNMappingViewInfo : public HuaweiJSONRecordList<_HuaweiLUNMappingView> {
 public:
  explicit HuaweiJSONGetLUNMappingViewInfo(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, groupListRules("HuaweiJSONGetLUNMappingViewInfo::parseResponse",
                                                   {HuaweiResponse::CodeWidth::Signed32, -1})) {}
  void getLUNMappingInfo(std::vector<_HuaweiLUNMappingView>& views) { views = m_records; }
};

class HuaweiJSONGetLunGroupAssociatedWithMappingView : public HuaweiJSONLunGroupList {
 public:
  explicit HuaweiJSONGetLunGroupAssociatedWithMappingView(unsigned long long const& jobId)
      : HuaweiJSONLunGroupList(jobId, "HuaweiJSONGetLunGroupAssociatedWithMappingView::parseResponse",
                               {HuaweiResponse::CodeWidth::Signed32}) {}
  void getLunGroupInfo(std::vector<_HuaweiLunGroupInfo>& groups) { groups = m_records; }
};

class HuaweiJSONGetHostGroupAssociatedWithMappingView : public HuaweiJSONRecordList<_HuaweiHostGroupInfo> {
 public:
  explicit HuaweiJSONGetHostGroupAssociatedWithMappingView(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, groupListRules("HuaweiJSONGetHostGroupAssociatedWithMappingView::parseResponse",
                                                   HuaweiResponse::StatusReport())) {}
  void getHostGroupInfo(std::vector<_HuaweiHostGroupInfo>& groups) { groups = m_records; }
};

// Takes the array's ID and NAME; the vStore identifier stays as built, its name empty.
class HuaweiJSONCreateMappingView : public HuaweiJSONRecordObject<_HuaweiLUNMappingView> {
 public:
  HuaweiJSONCreateMappingView(unsigned long long const& jobId, _HuaweiLUNMappingView const& view);
  bool buildRequest(std::string& body) override;
  void getMappingViewInfo(_HuaweiLUNMappingView& view) { view = m_record; }

 private:
  bool readData(const jsonxx::Object& data) override;
  bool readPlainData(jsonxx::PlainReader&, HuaweiKeys::PlainKeys<_HuaweiLUNMappingView>&) override { return false; }
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
