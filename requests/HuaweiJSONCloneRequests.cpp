#include "HuaweiJSONCloneRequests.h"


bool HuaweiJSONGetCloneInfo::parseResponse(jsonxx::Object const& response) {
  HuaweiSelfDescribing::logParsing(m_jobId);
  jsonxx::Array data;
  if (!parseResponseForDataAsArray(data, response) || !HuaweiResponse::appendRecords(data, m_clones)) {
    return false;
  }
  return !m_objectId.empty() || m_clones.size() == 1;
}

void HuaweiJSONGetCloneInfo::getCloneInfo(_HuaweiCloneInfo& clone) const {
  if (!m_clones.empty()) clone = m_clones.front();
}

bool HuaweiJSONGetCloneSecondaryLunInfo::parseResponse(jsonxx::Object const& response) {
  HuaweiSelfDescribing::logParsing(m_jobId);
  jsonxx::Array data;
  return parseResponseForDataAsArray(data, response) && HuaweiResponse::appendRecords(data, m_luns);
}

void HuaweiJSONCreateCloneInfo::buildRequest(jsonxx::Object& body) {
  body.import("NAME", m_clone.name);
  body.import("PRILUNID", m_clone.priLunId);
}

void HuaweiJSONAddCloneSecondaryLun::buildRequest(jsonxx::Object& body) {
  body.import("ID", m_secondaryLun.id);
  body.import("PARENTID", m_secondaryLun.parentId);
  body.import("SPEED", m_secondaryLun.speed.getValue());
  body.import("RESUMEPOLICY", m_secondaryLun.resumePolicy.getValue());
  body.import("FIRSTSYNC", m_firstSync.getValue());
}
