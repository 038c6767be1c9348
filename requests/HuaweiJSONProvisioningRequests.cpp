#include "HuaweiJSONProvisioningRequests.h"

#include "HuaweiArrayCodes.h"
#include "ResourcePath.h"

HuaweiJSONCreateLUN::HuaweiJSONCreateLUN(unsigned long long const& jobId, _HuaweiLUNInfo const& lun)
    : HuaweiJSONCreationV2(jobId, "lun"), m_lun(lun) {}

// The record's vStore is not sent: a LUN is created where the session is.
void HuaweiJSONCreateLUN::buildRequest(jsonxx::Object& body) {
  body.import("NAME", m_lun.name);
  body.import("CAPACITY", m_lun.capacity);
  body.import("ALLOCTYPE", m_lun.allocType.getValue());
  body.import("PARENTID", m_lun.parentId);
  body.import("OWNINGCONTROLLER", m_lun.owningController);
}

HuaweiJSONGetStoragePool::HuaweiJSONGetStoragePool(unsigned long long const& jobId, std::string const& poolName,
                                                   std::string const& poolId)
    : HuaweiJSONBaseV2(jobId, "storagepool", HUAWEI_REQ_GET, HuaweiVstore::kNone, poolId), m_poolName(poolName) {}

std::string HuaweiJSONGetStoragePool::getResourceUrl() {
  if (!m_objectId.empty() || m_poolName.empty()) return getResourceUrl(std::string());
  return getResourceUrl(QueryPieces().add("filter", "NAME::" + m_poolName).str());
}

// By name, the first exact match is kept and the rest only looked at.
bool HuaweiJSONGetStoragePool::parseResponse(jsonxx::Object const& response) {
  HuaweiSelfDescribing::logParsing(m_jobId);
  const bool byName = !m_poolName.empty();
  jsonxx::Array data;
  if (!parseResponseForDataAsArray(data, response)) return false;
  for (unsigned int index = 0; index < data.size(); ++index) {
    const jsonxx::Object& element = data.get<jsonxx::Object>(index);
    if ((byName && !m_pools.empty()) || (byName && element.get<std::string>("NAME") != m_poolName)) continue;
    m_pools.emplace_back();
    HuaweiKeys::readKeys(element, m_pools.back());
  }
  return (byName || !m_objectId.empty()) ? m_pools.size() == 1 : true;
}

void HuaweiJSONGetStoragePool::getStoragePoolInfo(_HuaweiStoragePoolInfo& pool) const {
  if (!m_pools.empty()) pool = m_pools.front();
}

HuaweiJSONModifyLun::HuaweiJSONModifyLun(unsigned long long const& jobId, _HuaweiLUNInfo const& lun)
    : HuaweiJSONUnreadAnswerV2(jobId, "lun", HUAWEI_REQ_PUT, HuaweiVstore::kNone, lun.id), m_lun(lun) {}

void HuaweiJSONModifyLun::buildRequest(jsonxx::Object& body) {
  if (!m_lun.name.empty()) body.import("NAME", m_lun.name);
}

HuaweiJSONAssociateWithLunGroup::HuaweiJSONAssociateWithLunGroup(unsigned long long const& jobId,
                                                                 std::string const& lunGroupId,
                                                                 HuaweiApi::ObjectTypeValue const& objectType,
                                                                 std::string const& objectId,
                                                                 std::string const& vstoreId)
    : HuaweiJSONLunGroupMembership(jobId, HUAWEI_REQ_POST, lunGroupId, objectType, objectId, vstoreId) {
  m_ignorableErrorCodes.push_back(HuaweiArrayCode::ALREADY_IN_LUN_GROUP);
}

void HuaweiJSONAssociateWithLunGroup::buildRequest(jsonxx::Object& body) {
  body.import("ID", m_lunGroupId);
  body.import("ASSOCIATEOBJTYPE", m_objectType.getValue());
  body.import("ASSOCIATEOBJID", m_memberId);
}

std::string HuaweiJSONRemoveAssociateWithLunGroup::getResourceUrl() {
  return getResourceUrl(QueryPieces()
                            .add("ID", m_lunGroupId)
                            .add("ASSOCIATEOBJID", m_memberId)
                            .add("ASSOCIATEOBJTYPE", m_objectType.getValue())
                            .str());
}
