// Requests of LUN provisioning: create, rename and delete LUNs, find storage pools, and the
// membership of LUNs in LUN groups.
#pragma once

#include <string>
#include <vector>

#include "HuaweiCloneRecords.h"
#include "HuaweiLunGroupRecords.h"
#include "HuaweiLUNRecords.h"
#include "SelfDescribingRequests.h"

class HuaweiJSONCreateLUN : public HuaweiJSONCreationV2 {
 public:
  HuaweiJSONCreateLUN(unsigned long long const& jobId, _HuaweiLUNInfo const& lun);
  using HuaweiJSONBaseV2::buildRequest;
  void buildRequest(jsonxx::Object& body) override;
  void getNewLunId(std::string& id) const { id = m_newId; }

 private:
  _HuaweiLUNInfo m_lun;
};

// By id, or by exact name: the array's filter matches parts of names, so the answer is checked.
class HuaweiJSONGetStoragePool : public HuaweiJSONBaseV2 {
 public:
  HuaweiJSONGetStoragePool(unsigned long long const& jobId, std::string const& poolName, std::string const& poolId);
  using HuaweiJSONBaseV2::getResourceUrl;
  std::string getResourceUrl() override;
  using HuaweiJSONBaseV2::parseResponse;
  bool parseResponse(jsonxx::Object const& response) override;
  void getStoragePoolInfo(_HuaweiStoragePoolInfo& pool) const;

 private:
  std::string m_poolName;
  std::vector<_HuaweiStoragePoolInfo> m_pools;
};

// Renames a LUN, and does nothing else.
class HuaweiJSONModifyLun : public HuaweiJSONUnreadAnswerV2 {
 public:
  HuaweiJSONModifyLun(unsigned long long const& jobId, _HuaweiLUNInfo const& lun);
  using HuaweiJSONBaseV2::buildRequest;
  void buildRequest(jsonxx::Object& body) override;

 private:
  _HuaweiLUNInfo m_lun;
};

class HuaweiJSONGetLunAssociate : public HuaweiJSONAssociatedRecords<_HuaweiLUNInfo> {
 public:
  HuaweiJSONGetLunAssociate(unsigned long long const& jobId, HuaweiApi::ObjectTypeValue const& objectType,
                            std::string const& objectId)
      : HuaweiJSONAssociatedRecords(jobId, "lun/associate", objectType, objectId, HuaweiVstore::kNone) {}
  void getAssociatedLunInfo(std::vector<_HuaweiLUNInfo>& luns) const { luns = m_records; }
};

class HuaweiJSONGetLunGroupAssociate : public HuaweiJSONAssociatedRecords<_HuaweiLunGroupInfo> {
 public:
  HuaweiJSONGetLunGroupAssociate(unsigned long long const& jobId, HuaweiApi::ObjectTypeValue const& objectType,
                                 std::string const& objectId, std::string const& vstoreId)
      : HuaweiJSONAssociatedRecords(jobId, "lungroup/associate", objectType, objectId, vstoreId) {}
  void getAssociatedLunGroupInfo(std::vector<_HuaweiLunGroupInfo>& lunGroups) const { lunGroups = m_records; }
};

// One object's membership in one LUN group: made by a POST with a body, undone by a DELETE that
// names the three in its query.
class HuaweiJSONLunGroupMembership : public HuaweiJSONUnreadAnswerV2 {
 public:
  HuaweiJSONLunGroupMembership(unsigned long long const& jobId, REQ_TYPE_HUAWEI type, std::string const& lunGroupId,
                               HuaweiApi::ObjectTypeValue const& objectType, std::string const& objectId,
                               std::string const& vstoreId)
      : HuaweiJSONUnreadAnswerV2(jobId, "lungroup/associate", type, vstoreId, std::string()),
        m_lunGroupId(lunGroupId),
        m_objectType(objectType),
        m_memberId(objectId) {}

 protected:
  ~HuaweiJSONLunGroupMembership() = default;

  std::string m_lunGroupId;
  HuaweiApi::ObjectTypeValue m_objectType;
  std::string m_memberId;
};

// Adding an object that is already a member counts as done.
class HuaweiJSONAssociateWithLunGroup : public HuaweiJSONLunGroupMembership {
 public:
  HuaweiJSONAssociateWithLunGroup(unsigned long long const& jobId, std::string const& lunGroupId,
                                  HuaweiApi::ObjectTypeValue const& objectType, std::string const& objectId,
                                  std::string const& vstoreId);
  using HuaweiJSONBaseV2::buildRequest;
  void buildRequest(jsonxx::Object& body) override;
};

class HuaweiJSONRemoveAssociateWithLunGroup : public HuaweiJSONLunGroupMembership {
 public:
  HuaweiJSONRemoveAssociateWithLunGroup(unsigned long long const& jobId, std::string const& lunGroupId,
                                        HuaweiApi::ObjectTypeValue const& objectType, std::string const& objectId,
                                        std::string const& vstoreId)
      : HuaweiJSONLunGroupMembership(jobId, HUAWEI_REQ_DELETE, lunGroupId, objectType, objectId, vstoreId) {}
  using HuaweiJSONBaseV2::getResourceUrl;
  std::string getResourceUrl() override;
};

class HuaweiJSONDeleteLun : public HuaweiJSONUnreadAnswerV2 {
 public:
  HuaweiJSONDeleteLun(unsigned long long const& jobId, std::string const& lunId, std::string const& vstoreId)
      : HuaweiJSONUnreadAnswerV2(jobId, "lun", HUAWEI_REQ_DELETE, vstoreId, lunId) {}
};
