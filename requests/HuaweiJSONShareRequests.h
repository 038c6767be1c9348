// Requests of NAS shares: the share lookup, CIFS and NFS shares, and their permissions. They log
// under the short names "buildRequest" and "parseResponse", every line at level 3. A share's
// creation is a generic request; the two grants read their answer's error object their own way.
#pragma once

#include <list>
#include <string>

#include "HuaweiJSONBase.h"
#include "RecordRequests.h"

// Where the share requests write: "parseResponse", every line at level 3.
extern const HuaweiResponse::ParserLog kShareParserLog;

// The share requests that only name what they list or delete are generic ones, under their own names.
using HuaweiJSONGetShareInfo = RecordListRequest<_HuaweiShareInfo, std::list>;
using HuaweiJSONGetNFSSharePermissionInfo = RecordListRequest<_HuaweiNFSSharePermissionInfo, std::list>;
using HuaweiJSONDeleteCIFSShare = DeletionRequest;
using HuaweiJSONDeleteNFSShare = DeletionRequest;
using HuaweiJSONDeleteNFSSharePermission = DeletionRequest;

// Every CIFS permission of the array (or vStore), into the caller's list once the whole answer is
// read. Behind the first element that names a vStore, every later one is given that element's
// vStore, whatever it says itself.
class HuaweiJSONGetCIFSSharePermissionInfo : public HuaweiJSONRecordList<_HuaweiCIFSSharePermissionInfo, std::list> {
 public:
  explicit HuaweiJSONGetCIFSSharePermissionInfo(std::list<_HuaweiCIFSSharePermissionInfo>& permissions);
  bool parseResponse(std::string& response) override;
  void forJob(unsigned long long jobId) { m_jobId = jobId; }

 private:
  bool readElement(const jsonxx::Object& element, _HuaweiCIFSSharePermissionInfo& record) override;

  std::list<_HuaweiCIFSSharePermissionInfo>* m_destination;
  bool m_vstoreSeen = false;
  std::string m_vstoreId;
  std::string m_vstoreName;
};

class HuaweiJSONAddCIFSSharePermissions : public HuaweiJSONBase {
 public:
  HuaweiJSONAddCIFSSharePermissions(unsigned long long const& jobId, std::string const& name,
                                    std::string const& parentId, std::string const& domainType,
                                    std::string const& permission, std::string const& vstoreId);
  bool buildRequest(std::string& body) override;
  bool parseResponse(std::string& response) override;
  const std::string& getPermissionId() const { return m_permissionId; }

 private:
  std::string m_permissionId;
  std::string m_name;
  std::string m_parentId;
  std::string m_domainType;
  std::string m_permission;
  std::string m_vstoreId;
};

// The vStore is kept but never sent, and the answer's identifier is not read: callers list the
// permissions to learn it.
class HuaweiJSONAddNFSSharePermissions : public HuaweiJSONBase {
 public:
  HuaweiJSONAddNFSSharePermissions(unsigned long long const& jobId, std::string const& name,
                                   std::string const& parentId, std::string const& accessVal,
                                   std::string const& sync, std::string const& allSquash,
                                   std::string const& rootSquash, std::string const& vstoreId);
  bool buildRequest(std::string& body) override;
  bool parseResponse(std::string& response) override;

 private:
  std::string m_permissionId;
  std::string m_name;
  std::string m_parentId;
  std::string m_accessVal;
  std::string m_sync;
  std::string m_allSquash;
  std::string m_rootSquash;
  std::string m_vstoreId;
};
