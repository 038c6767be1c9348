// Requests of clones (the array's split mirrors) and their secondary LUNs. None carries a vStore.
#pragma once

#include <list>
#include <string>
#include <utility>

#include "HuaweiCloneRecords.h"
#include "SelfDescribingRequests.h"

class HuaweiJSONGetCloneInfo : public HuaweiJSONBaseV2 {
 public:
  HuaweiJSONGetCloneInfo(unsigned long long const& jobId, std::string const& cloneId)
      : HuaweiJSONBaseV2(jobId, "splitmirror", HUAWEI_REQ_GET, HuaweiVstore::kNone, cloneId) {}
  using HuaweiJSONBaseV2::parseResponse;
  bool parseResponse(jsonxx::Object const& response) override;
  // The first clone of the answer; the record stays as it was when there is none.
  void getCloneInfo(_HuaweiCloneInfo& clone) const;

 private:
  std::list<_HuaweiCloneInfo> m_clones;
};

class HuaweiJSONGetCloneSecondaryLunInfo : public HuaweiJSONBaseV2 {
 public:
  HuaweiJSONGetCloneSecondaryLunInfo(unsigned long long const& jobId, std::string const& parentId)
      : HuaweiJSONBaseV2(jobId, "SPLITMIRRORTARGETLUN/targetLUN", HUAWEI_REQ_GET, HuaweiVstore::kNone,
                         std::string()),
        m_parentId(parentId) {}
  using HuaweiJSONBaseV2::getResourceUrl;
  std::string getResourceUrl() override { return getResourceUrl(QueryPieces().add("PARENTID", m_parentId).str()); }
  using HuaweiJSONBaseV2::parseResponse;
  bool parseResponse(jsonxx::Object const& response) override;
  void getCloneSecLunsInfo(std::list<_HuaweiCloneSecondaryLUN>& secondaryLuns) const { secondaryLuns = m_luns; }

 private:
  std::string m_parentId;
  std::list<_HuaweiCloneSecondaryLUN> m_luns;
};

// The clone's name and primary LUN; the record's id is not sent.
class HuaweiJSONCreateCloneInfo : public HuaweiJSONCreationV2 {
 public:
  HuaweiJSONCreateCloneInfo(unsigned long long const& jobId, _HuaweiCloneInfo const& clone)
      : HuaweiJSONCreationV2(jobId, "splitmirror"), m_clone(clone) {}
  using HuaweiJSONBaseV2::buildRequest;
  void buildRequest(jsonxx::Object& body) override;
  void getNewCloneId(std::string& id) const { id = m_newId; }

 private:
  _HuaweiCloneInfo m_clone;
};

class HuaweiJSONAddCloneSecondaryLun : public HuaweiJSONUnreadAnswerV2 {
 public:
  HuaweiJSONAddCloneSecondaryLun(unsigned long long const& jobId, _HuaweiCloneSecondaryLUN const& secondaryLun,
                                 HuaweiApi::FirstSyncValue const& firstSync)
      : HuaweiJSONUnreadAnswerV2(jobId, "SPLITMIRRORTARGETLUN/addTargetLUN", HUAWEI_REQ_PUT, HuaweiVstore::kNone,
                                 std::string()),
        m_secondaryLun(secondaryLun),
        m_firstSync(firstSync) {}
  using HuaweiJSONBaseV2::buildRequest;
  void buildRequest(jsonxx::Object& body) override;

 private:
  _HuaweiCloneSecondaryLUN m_secondaryLun;
  HuaweiApi::FirstSyncValue m_firstSync;
};

// Split, sync and remove name the pair in the body alike and differ in their resource alone.
class HuaweiJSONCloneSecondaryLunAction : public HuaweiJSONUnreadAnswerV2 {
 public:
  HuaweiJSONCloneSecondaryLunAction(unsigned long long const& jobId, std::string const& resource,
                                    std::string secondaryLunId, std::string const& cloneId)
      : HuaweiJSONUnreadAnswerV2(jobId, resource, HUAWEI_REQ_PUT, HuaweiVstore::kNone, std::string()),
        m_secondaryLunId(std::move(secondaryLunId)),
        m_cloneId(cloneId) {}
  using HuaweiJSONBaseV2::buildRequest;
  void buildRequest(jsonxx::Object& body) override {
    body.import("ID", m_secondaryLunId);
    body.import("PARENTID", m_cloneId);
  }

 protected:
  ~HuaweiJSONCloneSecondaryLunAction() = default;

 private:
  std::string m_secondaryLunId;
  std::string m_cloneId;
};

class HuaweiJSONSplitCloneSecondaryLun : public HuaweiJSONCloneSecondaryLunAction {
 public:
  HuaweiJSONSplitCloneSecondaryLun(unsigned long long const& jobId, std::string secondaryLunId,
                                   std::string const& cloneId)
      : HuaweiJSONCloneSecondaryLunAction(jobId, "SPLITMIRRORTARGETLUN/split", std::move(secondaryLunId), cloneId) {}
};

// The array's path ends in "syn".
class HuaweiJSONSyncCloneSecondaryLun : public HuaweiJSONCloneSecondaryLunAction {
 public:
  HuaweiJSONSyncCloneSecondaryLun(unsigned long long const& jobId, std::string secondaryLunId,
                                  std::string const& cloneId)
      : HuaweiJSONCloneSecondaryLunAction(jobId, "SPLITMIRRORTARGETLUN/syn", std::move(secondaryLunId), cloneId) {}
};

// A removal that the array takes as a PUT with a body.
class HuaweiJSONRemoveCloneSecondaryLun : public HuaweiJSONCloneSecondaryLunAction {
 public:
  HuaweiJSONRemoveCloneSecondaryLun(unsigned long long const& jobId, std::string secondaryLunId,
                                    std::string const& cloneId)
      : HuaweiJSONCloneSecondaryLunAction(jobId, "SPLITMIRRORTARGETLUN/remove", std::move(secondaryLunId), cloneId) {}
};

class HuaweiJSONDeleteClone : public HuaweiJSONUnreadAnswerV2 {
 public:
  HuaweiJSONDeleteClone(unsigned long long const& jobId, std::string const& cloneId)
      : HuaweiJSONUnreadAnswerV2(jobId, "splitmirror", HUAWEI_REQ_DELETE, HuaweiVstore::kNone, cloneId) {}
};
