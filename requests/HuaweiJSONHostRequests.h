// Requests of initiators, hosts and host groups.
#pragma once

#include <string>
#include <vector>

#include "RecordRequests.h"

// Reads the list and the single-object answers alike. Note that it stores PARENTNAME, the host's
// name, in `name`: callers of this lookup see the host's name there, never the initiator's.
class HuaweiJSONGetInitiatorInfo : public HuaweiJSONBase {
 public:
  explicit HuaweiJSONGetInitiatorInfo(unsigned long long const& jobId) : HuaweiJSONBase(jobId) {}
  bool parseResponse(std::string& response) override;
  void getInitiatorInfo(std::vector<_HuaweiInitiator>& initiators) { initiators = m_initiators; }

 private:
  std::vector<_HuaweiInitiator> m_initiators;
};

class HuaweiJSONGetHostInfo : public HuaweiJSONRecordList<_HuaweiLUNHostInfo> {
 public:
  explicit HuaweiJSONGetHostInfo(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, HuaweiResponse::sanRules("HuaweiJSONGetHostInfo::parseResponse")) {}
  void getHostInfo(std::vector<_HuaweiLUNHostInfo>& hosts) { hosts = m_records; }
};

class HuaweiJSONCreateHost : public HuaweiJSONRecordObject<_HuaweiLUNHostInfo> {
 public:
  HuaweiJSONCreateHost(unsigned long long const& jobId, _HuaweiLUNHostInfo const& host)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::sanRules("HuaweiJSONCreateHost::parseResponse"), host) {}
  bool buildRequest(std::string& body) override;
  void getHostInfo(_HuaweiLUNHostInfo& host) { host = m_record; }
};

class HuaweiJSONCreateInitiator : public HuaweiJSONRecordObject<_HuaweiInitiator> {
 public:
  HuaweiJSONCreateInitiator(unsigned long long const& jobId, _HuaweiInitiator const& initiator)
      : HuaweiJSONRecordObject(jobId, HuaweiResponse::sanRules("HuaweiJSONCreateInitiator::parseResponse"),
                               initiator) {}
  bool buildRequest(std::string& body) override;
  void getInitiatorInfo(_HuaweiInitiator& initiator) { initiator = m_record; }
};

// Binds the initiator named in the URL to the host in parentId. Its refusals are logged at level -1.
class HuaweiJSONUpdateInitiator : public HuaweiJSONStatusAnswer {
 public:
  HuaweiJSONUpdateInitiator(unsigned long long const& jobId, _HuaweiInitiator const& initiator)
      : HuaweiJSONStatusAnswer(jobId, "HuaweiJSONUpdateInitiator::parseResponse",
                               {HuaweiResponse::CodeWidth::Signed32, -1}),
        m_initiator(initiator) {}
  bool buildRequest(std::string& body) override;

 private:
  _HuaweiInitiator m_initiator;
};

class HuaweiJSONGetHostGroupInfo : public HuaweiJSONRecordList<_HuaweiHostGroupInfo> {
 public:
  explicit HuaweiJSONGetHostGroupInfo(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, HuaweiResponse::sanRules("HuaweiJSONGetHostGroupInfo::parseResponse")) {}
  void getHostGroupInfo(std::vector<_HuaweiHostGroupInfo>& groups) { groups = m_records; }
};

// Reads the new group's ID and NAME; the vStore stays as sent.
class HuaweiJSONCreateHostGroup : public HuaweiJSONRecordObject<_HuaweiHostGroupInfo> {
 public:
  HuaweiJSONCreateHostGroup(unsigned long long const& jobId, _HuaweiHostGroupInfo const& group)
      : HuaweiJSONRecordObject(jobId, identityRules(), group) {}
  bool buildRequest(std::string& body) override;
  void getHostGroupInfo(_HuaweiHostGroupInfo& group) { group = m_record; }

 private:
  static HuaweiResponse::ReadingRules identityRules() {
    HuaweiResponse::ReadingRules rules = HuaweiResponse::sanRules("HuaweiJSONCreateHostGroup::parseResponse");
    rules.keys = HuaweiKeys::Keys::RequiredOnly;
    return rules;
  }
};

// Ties a host to a group. Note the order: the host first, the group second.
class HuaweiJSONAssociateHostWithHostGroup : public HuaweiJSONStatusAnswer {
 public:
  HuaweiJSONAssociateHostWithHostGroup(unsigned long long const& jobId, std::string const& hostId,
                                       std::string const& hostGroupId, std::string const& objectType,
                                       std::string const& vstoreId)
      : HuaweiJSONStatusAnswer(jobId, "HuaweiJSONAssociateHostWithHostGroup::parseResponse"),
        m_hostId(hostId),
        m_hostGroupId(hostGroupId),
        m_objectType(objectType),
        m_vstoreId(vstoreId) {}
  bool buildRequest(std::string& body) override;

 private:
  std::string m_hostId;
  std::string m_hostGroupId;
  std::string m_objectType;
  std::string m_vstoreId;
};

class HuaweiJSONGetHostAssociatedWithHostGroup : public HuaweiJSONRecordList<_HuaweiLUNHostInfo> {
 public:
  explicit HuaweiJSONGetHostAssociatedWithHostGroup(unsigned long long const& jobId)
      : HuaweiJSONRecordList(jobId, HuaweiResponse::sanRules("HuaweiJSONGetHostAssociatedWithHostGroup::parseResponse",
                                                             HuaweiResponse::WithoutData::Status)) {}
  void getHostInfo(std::vector<_HuaweiLUNHostInfo>& hosts) { hosts = m_records; }
};
