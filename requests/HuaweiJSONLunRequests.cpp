#include "HuaweiJSONLunRequests.h"

#include "HandBuiltBody.h"

using HandBuiltPiece::quoted;
using HandBuiltPiece::vstore;

bool HuaweiJSONGetLUNInfo::parseResponse(std::string& response) {
  const char* logName = "HuaweiJSONGetLUNInfo::parseResponse";
  jsonxx::Object answer;
  if (!HuaweiSanAnswer::open(logName, m_jobId, response, answer)) return false;
  if (answer.has<jsonxx::Object>("data") && m_lun.parseFromJson(answer.get<jsonxx::Object>("data"))) return true;
  return HuaweiSanAnswer::unusable(logName, m_jobId, HuaweiSanAnswer::kNoDataObject);
}

bool HuaweiJSONCreateLUNSnapshot::buildRequest(std::string& body) {
  // A copy names its source snapshot by ID, a snapshot its LUN by PARENTID.
  body = "{" + quoted(m_record.isCopy ? "ID" : "PARENTID", m_record.parentId) + ", " + quoted("NAME", m_record.name) +
         " " + vstore(m_record.vstoreId) + "}";
  return true;
}

bool HuaweiJSONActivateLUNSnapshot::buildRequest(std::string& body) {
  body = "{\"SNAPSHOTLIST\":[" + m_snapshotList + "]" + vstore(m_vstoreId) + "}";
  return true;
}

bool HuaweiJSONDeActivateLUNSnapshot::buildRequest(std::string& body) {
  body = "{" + quoted("ID", m_snapshotId) + " " + vstore(m_vstoreId) + "}";
  return true;
}

bool HuaweiJSONRevertLUNSnapshot::buildRequest(std::string& body) {
  body = "{" + quoted("ID", m_snapshotId) + "," + quoted("ROLLBACKSPEED", m_rollbackSpeed) + " " + vstore(m_vstoreId) +
         "}";
  return true;
}
