// Requests of LUN groups and of the associations that LUN groups and mapping views take part in.
#pragma once

#include <string>
#include <vector>

#include "HuaweiIncludes.h"
#include "RecordRequests.h"

// The body `{"K":"v", ...}` closed by the vStore piece when a vStore is meant: the piece
// `,"vstoreId":"<id>" ` stands right before the brace.
std::string closedWithVstore(std::string body, const std::string& vstoreId);

// The lists of LUN groups and mapping views: an answer without "data" is read by its status.
inline HuaweiResponse::ReadingRules groupListRules(const char* logName, HuaweiResponse::StatusReport status) {
  return HuaweiResponse::sanRules(logName, HuaweiResponse::WithoutData::Status, status);
}

// An association between an owner (the ID of the body) and an object of a given type.
class HuaweiJSONAssociationRequest : public HuaweiJSONStatusAnswer {
 public:
  bool buildRequest(std::string& body) override;

 protected:
  HuaweiJSONAssociationRequest(unsigned long long const& jobId, const char* logName, std::string const& ownerId,
                               std::string const& objectId, std::string const& objectTypeText,
                               std::string const& vstoreId)
      : HuaweiJSONStatusAnswer(jobId, logName),
        m_ownerId(ownerId),
        m_objectId(objectId),
        m_objectTypeText(objectTypeText),
        m_vstoreId(vstoreId) {}
  ~HuaweiJSONAssociationRequest() = default;

 private:
  std::string m_ownerId;
  std::string m_objectId;
  std::string m_objectTypeText;
  std::string m_vstoreId;
};

// LUN groups, each through the record's own reader, whose refusal fails the list.
class HuaweiJSONLunGroupList : public HuaweiJSONRecordList<_HuaweiLunGroupInfo> {
 protected:
  HuaweiJSONLunGroupList(unsigned long long jobId, const char* logName, HuaweiResponse::StatusReport status)
      : HuaweiJSONRecordList(jobId, groupListRules(logName, status)) {}
  ~HuaweiJSONLunGroupList() = default;

 private:
  bool readElement(const jsonxx::Object& element, _HuaweiLunGroupInfo& group) override {
    return group.parseFromJson(element);
  }
};

class HuaweiJSONGetLunGroupInfo : public HuaweiJSONLunGroupList {
 public:
  explicit HuaweiJSONGetLunGroupInfo(unsigned long long const& jobId)
      : HuaweiJSONLunGroupList(jobId, "HuaweiJSONGetLunGroupInfo::parseResponse",
                               {HuaweiResponse::CodeWidth::Unsigned64}) {}
  void getLunGroupInfo(std::vector<_HuaweiLunGroupInfo>& groups) { groups = m_records; }
};

// Reads each snapshot LUN's keys in the order the record declares them.
class HuaweiJSONGetSnapLunAssociatedWithLunGroup : public HuaweiJSONRecordList<_HuaweiLUNSnapshotInfo> {
 public:
  explicit HuaweiJSONGetSnapLunAssociatedWithLunGroup(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, rules()) {}
  void getSnapLunInfo(std::vector<_HuaweiLUNSnapshotInfo>& snapshotLuns) { snapshotLuns = m_records; }

 private:
  static HuaweiResponse::ReadingRules rules() {
    HuaweiResponse::ReadingRules rules = groupListRules("HuaweiJSONGetSnapLunAssociatedWithLunGroup::parseResponse",
                                                        {HuaweiResponse::CodeWidth::Unsigned64});
    rules.order = HuaweiKeys::KeyOrder::Declared;
    return rules;
  }
};

// Overwrites the record it was built from with the array's group.
class HuaweiJSONCreateLunGroup : public HuaweiJSONRecordObject<_HuaweiLunGroupInfo> {
 public:
  HuaweiJSONCreateLunGroup(unsigned long long const& jobId, _HuaweiLunGroupInfo const& lunGroup)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::sanRules("HuaweiJSONCreateLunGroup::parseResponse"), lunGroup) {}
  bool buildRequest(std::string& body) override;
  void getLunGroupInfo(_HuaweiLunGroupInfo& lunGroup) { lunGroup = m_record; }
};

class HuaweiJSONAssociateLunWithLunGroup : public HuaweiJSONAssociationRequest {
 public:
  HuaweiJSONAssociateLunWithLunGroup(unsigned long long const& jobId, std::string const& objectId,
                                     std::string const& lunGroupId, std::string const& objectTypeText,
                                     std::string const& vstoreId)
      : HuaweiJSONAssociationRequest(jobId, "HuaweiJSONAssociateLunWithLunGroup::parseResponse", lunGroupId,
                                     objectId, objectTypeText, vstoreId) {}
};

// Also reads the answer of a removal that carries all its arguments in the URL; that one is made
// with the job identifier alone.
class HuaweiJSONRemoveAssociation : public HuaweiJSONAssociationRequest {
 public:
  explicit HuaweiJSONRemoveAssociation(unsigned long long const& jobId)
      : HuaweiJSONRemoveAssociation(jobId, std::string(), std::string(), std::string(), std::string()) {}
  HuaweiJSONRemoveAssociation(unsigned long long const& jobId, std::string const& mappingViewId,
                              std::string const& objectId, std::string const& objectTypeText,
                              std::string const& vstoreId)
      : HuaweiJSONAssociationRequest(jobId, "HuaweiJSONRemoveAssociation::parseResponse", mappingViewId, objectId,
                                     objectTypeText, vstoreId) {}
};
