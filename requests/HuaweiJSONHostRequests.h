// Requests of initiators, hosts and host groups.
#pragma once

#include <string>
#include <vector>

#include "SanDataRequests.h"
#include "SanRecordReaders.h"

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

class HuaweiJSONGetHostInfo : public HuaweiJSONSanDataList<_HuaweiLUNHostInfo> {
 public:
  explicit HuaweiJSONGetHostInfo(unsigned long long const& jobId)
      : HuaweiJSONSanDataList(jobId, "HuaweiJSONGetHostInfo::parseResponse", HuaweiSanRecords::read,
                              MissingList::Unreadable) {}
  void getHostInfo(std::vector<_HuaweiLUNHostInfo>& hosts) { hosts = m_records; }
};

class HuaweiJSONCreateHost : public HuaweiJSONSanDataObject<_HuaweiLUNHostInfo> {
 public:
  HuaweiJSONCreateHost(unsigned long long const& jobId, _HuaweiLUNHostInfo const& host)
      : HuaweiJSONSanDataObject(jobId, "HuaweiJSONCreateHost::parseResponse", HuaweiSanRecords::read, host) {}
  bool buildRequest(std::string& body) override;
  void getHostInfo(_HuaweiLUNHostInfo& host) { host = m_record; }
};

class HuaweiJSONCreateInitiator : public HuaweiJSONSanDataObject<_HuaweiInitiator> {
 public:
  HuaweiJSONCreateInitiator(unsigned long long const& jobId, _HuaweiInitiator const& initiator)
      : HuaweiJSONSanDataObject(jobId, "HuaweiJSONCreateInitiator::parseResponse", HuaweiSanRecords::read,
                                initiator) {}
  bool buildRequest(std::string& body) override;
  void getInitiatorInfo(_HuaweiInitiator& initiator) { initiator = m_record; }
};

// Binds the initiator named in the URL to the host in parentId. Its refusals are logged at level -1.
class HuaweiJSONUpdateInitiator : public HuaweiJSONSanStatus {
 public:
  HuaweiJSONUpdateInitiator(unsigned long long const& jobId, _HuaweiInitiator const& initiator)
      : HuaweiJSONSanStatus(jobId, "HuaweiJSONUpdateInitiator::parseResponse", HuaweiSanAnswer::CodeWidth::Signed32,
                            -1),
        m_initiator(initiator) {}
  bool buildRequest(std::string& body) override;

 private:
  _HuaweiInitiator m_initiator;
};

class HuaweiJSONGetHostGroupInfo : public HuaweiJSONSanDataList<_HuaweiHostGroupInfo> {
 public:
  explicit HuaweiJSONGetHostGroupInfo(unsigned long long const& jobId)
      : HuaweiJSONSanDataList(jobId, "HuaweiJSONGetHostGroupInfo::parseResponse", HuaweiSanRecords::read,
                              MissingList::Unreadable) {}
  void getHostGroupInfo(std::vector<_HuaweiHostGroupInfo>& groups) { groups = m_records; }
};

class HuaweiJSONCreateHostGroup : public HuaweiJSONSanDataObject<_HuaweiHostGroupInfo> {
 public:
  HuaweiJSONCreateHostGroup(unsigned long long const& jobId, _HuaweiHostGroupInfo const& group)
      : HuaweiJSONSanDataObject(jobId, "HuaweiJSONCreateHostGroup::parseResponse", HuaweiSanRecords::readIdentity,
                                group) {}
  bool buildRequest(std::string& body) override;
  void getHostGroupInfo(_HuaweiHostGroupInfo& group) { group = m_record; }
};

// Ties a host to a group. Note the order: the host first, the group second.
class HuaweiJSONAssociateHostWithHostGroup : public HuaweiJSONSanStatus {
 public:
  HuaweiJSONAssociateHostWithHostGroup(unsigned long long const& jobId, std::string const& hostId,
                                       std::string const& hostGroupId, std::string const& objectType,
                                       std::string const& vstoreId)
      : HuaweiJSONSanStatus(jobId, "HuaweiJSONAssociateHostWithHostGroup::parseResponse"),
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

class HuaweiJSONGetHostAssociatedWithHostGroup : public HuaweiJSONSanDataList<_HuaweiLUNHostInfo> {
 public:
  explicit HuaweiJSONGetHostAssociatedWithHostGroup(unsigned long long const& jobId)
      : HuaweiJSONSanDataList(jobId, "HuaweiJSONGetHostAssociatedWithHostGroup::parseResponse",
                              HuaweiSanRecords::read, MissingList::EmptyOnCodeZero) {}
  void getHostInfo(std::vector<_HuaweiLUNHostInfo>& hosts) { hosts = m_records; }
};
