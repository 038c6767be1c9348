// Change lists between two file-system snapshots, walked page by page with the caller's cursor.
#include <utility>

#include "ConvertToString.h"
#include "FirstGenerationCall.h"
#include "HuaweiJSONChangeListRequests.h"
#include "HuaweiOpTypes.h"
#include "OperationLog.h"
#include "RequiredValueContainment.h"
#include "ResourcePath.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

namespace {
const int kFileSystemParentType = 40;
const char kWalkComplete[] = "100";
}  // namespace

std::string ZrManageHuawei::createSnapshotChangeListSession(std::string const& parentId,
                                                            std::string const& baseSnapshotId,
                                                            std::string const& incrementalSnapshotId,
                                                            int const& parentType) {
  (void)parentType;  // the request always names a file system
  HuaweiJSONGetChangeListSession request(m_jobId, baseSnapshotId, incrementalSnapshotId, parentId);
  OperationLog log = OperationLog::event("ZrManageHuawei::createSnapshotChangeListSession", m_jobId);
  std::string sessionId;
  firstGeneration(log)
      .sends(request, {HUAWEI_REQ_POST, "fs_snapchangelist_session", HuaweiOpType::CREATE_SNAPSHOT_CHANGE_LIST_SESSION},
             FirstGenerationTexts("Unable to create change list session information"))
      .run([&] {
        sessionId = request.getSessionId();
        log.line(5, "Successfully created a Session with ID[%s]", sessionId.c_str());
      });
  return sessionId;
}

bool ZrManageHuawei::getSnapshotChangeList(std::string const& parentId, std::string const& baseSnapshotId,
                                           std::string const& incrementalSnapshotId,
                                           _HuaweiSnapshotChangeListInfo& info) {
  HuaweiJSONGetChangeListResult request(m_jobId);
  OperationLog log = OperationLog::event("ZrManageHuawei::getSnapshotChangeList", m_jobId);
  // The session's creation and the page are one operation.
  RequiredValueContainment::OperationScope operation;
  // The caller's records go; their nodes serve this page's records. Where a missing required value
  // fails only the call, they are kept aside instead, and put back when it does.
  std::list<_HuaweiSnapshotChangeList> previous;
  previous.swap(info.changes);
  if (!RequiredValueContainment::chosen()) request.reuseRecords(std::move(previous));
  const std::string sessionBefore = info.sessionId;
  const auto failedKeepingThePage = [&] {
    info.sessionId = sessionBefore;
    info.changes.swap(previous);
    return false;
  };
  if (baseSnapshotId.empty() || incrementalSnapshotId.empty()) {
    log.failure("Invalid Parameters. Incremental Snapshot[%s], Base Snapshot[%s]", incrementalSnapshotId.c_str(),
                baseSnapshotId.c_str());
    return false;
  }
  if (info.sessionId.empty()) {
    info.sessionId =
        createSnapshotChangeListSession(parentId, baseSnapshotId, incrementalSnapshotId, kFileSystemParentType);
    if (info.sessionId.empty()) {
      if (RequiredValueContainment::failed()) return failedKeepingThePage();
      log.failure("Unable to get the Snap Change List Session ID.");
      return false;
    }
  }

  const ResourcePath resource = ResourcePath("fs_snapchangelist_result")
                                    .add("sessionID", info.sessionId)
                                    .add("parentType", ConvertToString::to_string<int>(kFileSystemParentType))
                                    .add("posType", info.posType)
                                    .add("posObj", info.posObj)
                                    .add("posOffset", info.posOffset)
                                    .add("linkPosType", info.linkPosType)
                                    .add("linkPos", info.linkPos);
  const std::string failure =
      YbString::Format("Unable to get the snapshot change list for base snapshot[%s] and incremental snapshot[%s].",
                       baseSnapshotId.c_str(), incrementalSnapshotId.c_str());
  bool sessionOver = true;
  // No guard here: only the session operations that this one calls test the session.
  const bool fetched = firstGeneration(log)
                           .unguarded()
                           .sends(request, {HUAWEI_REQ_GET, resource, HuaweiOpType::GET_SNAPSHOT_CHANGE_LIST},
                                  FirstGenerationTexts(failure))
                           .run([&] {
                             info = std::move(request).getChangeListInfo(info.sessionId);
                             // The walk ends on a page that is both empty and complete.
                             sessionOver = info.changes.empty() && info.progress == kWalkComplete;
                           });
  if (RequiredValueContainment::failed()) return failedKeepingThePage();
  if (sessionOver) {
    info.sessionFailed = fetched ? 0 : 1;
    if (!deleteSnapshotChangeListSession(info.sessionId)) {
      log.failure("Unable to delete the Snap Change List Session ID[%s]", info.sessionId.c_str());
    }
  }
  return fetched;
}

bool ZrManageHuawei::deleteSnapshotChangeListSession(std::string const& sessionId) {
  HuaweiJSONDeleteChangeListSession request(m_jobId);
  OperationLog log = OperationLog::event("ZrManageHuawei::deleteSnapshotChangeListSession", m_jobId);
  return firstGeneration(log)
      .sends(request,
             {HUAWEI_REQ_DELETE, ResourcePath("fs_snapchangelist_session").segment(sessionId, "sessionId"),
              HuaweiOpType::DELETE_SNAPSHOT_CHANGE_LIST_SESSION},
             FirstGenerationTexts("Unable to delete change list session information"))
      .runTelling("Successfully deleted the Session ID[%s]", sessionId);
}
