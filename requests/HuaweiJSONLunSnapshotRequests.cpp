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
