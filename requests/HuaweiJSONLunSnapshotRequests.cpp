#include "HuaweiJSONLunSnapshotRequests.h"

#include "HandBuiltBody.h"

using HandBuiltPiece::quoted;
using HandBuiltPiece::vstore;

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
