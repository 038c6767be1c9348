#include "HuaweiJSONCloneRequests.h"

#include <cstdlib>

bool HuaweiJSONGetCloneInfo::parseResponse(jsonxx::Object const& response) {
  HuaweiSelfDescribing::logParsing(m_jobId);
  const bool read = HuaweiSelfDescribing::readDataElements(*this, response, [this](jsonxx::Object const& element) {
    _HuaweiCloneInfo clone;
    clone.name = element.get<std::string>("NAME");
    clone.id = element.get<std::string>("ID");
    clone.priLunId = element.get<std::string>("PRILUNID");
    m_clones.push_back(clone);
    return true;
  });
  if (!read) return false;
  return !m_objectId.empty() || m_clones.size() == 1;
}

void HuaweiJSONGetCloneInfo::getCloneInfo(_HuaweiCloneInfo& clone) const {
  if (!m_clones.empty()) clone = m_clones.front();
}

bool HuaweiJSONGetCloneSecondaryLunInfo::parseResponse(jsonxx::Object const& response) {
  HuaweiSelfDescribing::logParsing(m_jobId);
  return HuaweiSelfDescribing::readDataElements(*this, response, [this](jsonxx::Object const& element) {
    _HuaweiCloneSecondaryLUN lun;
    lun.name = element.get<std::string>("NAME");
    lun.id = element.get<std::string>("ID");
    lun.parentId = element.get<std::string>("PARENTID");
    lun.speed = HuaweiApi::CopySpeedValue(element.get<std::string>("SPEED"));
    lun.resumePolicy = HuaweiApi::ResumePolicyValue(element.get<std::string>("RESUMEPOLICY"));
    lun.runningStatus = HuaweiApi::CloneSecondaryLunRunningStatus(element.get<std::string>("RUNNINGSTATUS"));
    lun.process = std::atoi(element.get<std::string>("PROCESS").c_str());
    m_luns.push_back(lun);
    return true;
  });
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
