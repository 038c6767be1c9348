#include "HuaweiJSONFileSystemSnapshotRequests.h"

#include "ConvertToString.h"
#include "HandBuiltBody.h"
#include "HuaweiVstore.h"
#include "TkDebug.h"

namespace {
const int kFileSystemParentType = 40;
}

HuaweiJSONCreateFileSystemSnapshot::HuaweiJSONCreateFileSystemSnapshot(unsigned long long const& jobId,
                                                                       unsigned long long const& fileSystemId,
                                                                       std::string& snapshot, bool enableSnapDiff,
                                                                       std::string vstoreId)
    : HuaweiJSONBase(jobId),
      m_fileSystemId(fileSystemId),
      m_snapshot(snapshot),
      m_enableSnapDiff(enableSnapDiff),
      m_vstoreId(std::move(vstoreId)) {}

bool HuaweiJSONCreateFileSystemSnapshot::buildRequest(std::string& body) {
  body.clear();
  if (m_snapshot.empty()) {
    TkDebug(nullptr).DebugLvl("HuaweiJSONCreateSnapshot::buildRequest", -1, m_jobId,
                              "Unable to build the request. Invalid parameters!!");
    return false;
  }
  HandBuiltBody request;
  request.add("NAME", m_snapshot)
      .add("PARENTID", ConvertToString::to_string(m_fileSystemId))
      .add("PARENTTYPE", ConvertToString::to_string<int>(kFileSystemParentType));
  if (!HuaweiVstore::isNone(m_vstoreId)) request.add("vstoreId", m_vstoreId);
  request.add("ENABLESNAPDIFF", m_enableSnapDiff ? "true" : "false");
  body = request.str();
  return true;
}

bool HuaweiJSONCreateFileSystemSnapshot::parseResponse(std::string& response) {
  jsonxx::Object answer;
  if (!HuaweiResponse::parseObject("HuaweiJSONCreateSnapshot::parseResponse", m_jobId, response, answer)) return false;
  m_snapshot = answer.get<jsonxx::Object>("data").get<std::string>("ID");
  return true;
}
