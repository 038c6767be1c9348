// Change lists between two file-system snapshots, walked page by page with the caller's cursor.
#include <utility>

#include "ConvertToString.h"
#include "CreatedIdentifier.h"
#include "FirstGenerationCall.h"
#include "HandBuiltBody.h"
#include "HuaweiJSONChangeListRequests.h"
#include "HuaweiOpTypes.h"
#include "RecordRequests.h"
#include "RequiredValueContainment.h"
#include "ResourcePath.h"
#include "ZrManageHuawei.h"

using PlainCalls::del;
using PlainCalls::get;
using PlainCalls::post;

namespace {
const int kFileSystemParentType = 40;
const char kWalkComplete[] = "100";
const char kInvalidSnapshots[] = "Invalid Parameters. Incremental Snapshot[%s], Base Snapshot[%s]";
const char kPageFailed[] = "Unable to get the snapshot change list for base snapshot[%s] and incremental snapshot[%s].";

// The caller's page while the next one is fetched: its records go, their nodes serving the next
// page's records. Where a missing required value fails only the call, they are kept aside
// instead, and put back with the session when it does.
class CallersPage {
 public:
  CallersPage(_HuaweiSnapshotChangeListInfo& info, HuaweiJSONGetChangeListResult& request)
      : m_info(info), m_sessionBefore(info.sessionId) {
    m_previous.swap(info.changes);
    if (!RequiredValueContainment::chosen()) request.reuseRecords(std::move(m_previous));
  }
  // The operation's failure after a call it made failed: with the caller's page as it was when a
  // missing required value failed it, else told as `text`.
  bool failedAfter(FirstGenerationCall& call, const char* text) {
    return RequiredValueContainment::failed() ? failedKeepingIt() : call.failure(text);
  }
  // The operation's failure, with the caller's page as it was.
  bool failedKeepingIt() {
    m_info.sessionId = m_sessionBefore;
    m_info.changes.swap(m_previous);
    return false;
  }

 private:
  _HuaweiSnapshotChangeListInfo& m_info;
  const std::string m_sessionBefore;
  std::list<_HuaweiSnapshotChangeList> m_previous;
};

// The walk ends on a page that is both empty and complete, or on a page that could not be read:
// the session goes, and the page tells which.
void endWalkIfOver(ZrManageHuawei& facade, FirstGenerationCall& call, _HuaweiSnapshotChangeListInfo& info,
                   bool fetched) {
  if (fetched && !(info.changes.empty() && info.progress == kWalkComplete)) return;
  info.sessionFailed = fetched ? 0 : 1;
  if (!facade.deleteSnapshotChangeListSession(info.sessionId)) {
    call.failure("Unable to delete the Snap Change List Session ID[%s]", info.sessionId);
  }
}

// The page after the caller's cursor.
ResourcePath pageResource(const _HuaweiSnapshotChangeListInfo& info) {
  return ResourcePath("fs_snapchangelist_result")
      .add("sessionID", info.sessionId)
      .add("parentType", ConvertToString::to_string<int>(kFileSystemParentType))
      .add("posType", info.posType)
      .add("posObj", info.posObj)
      .add("posOffset", info.posOffset)
      .add("linkPosType", info.linkPosType)
      .add("linkPos", info.linkPos);
}
}  // namespace

std::string ZrManageHuawei::createSnapshotChangeListSession(std::string const& parentId,
                                                            std::string const& baseSnapshotId,
                                                            std::string const& incrementalSnapshotId,
                                                            int const& parentType) {
  (void)parentType;  // the request always names a file system
  std::string sessionId;
  const std::string body = HandBuiltBody()
                               .add("parentID", parentId)
                               .add("baseSnapshotId", baseSnapshotId)
                               .add("incrementalSnapshotId", incrementalSnapshotId)
                               .add("parentType", ConvertToString::to_string<int>(kFileSystemParentType))
                               .str();
  firstGeneration("ZrManageHuawei::createSnapshotChangeListSession", LogKind::Event)
      .sends(RecordRequest<CreatedSessionId>(
                 sessionId, &CreatedSessionId::id,
                 HuaweiResponse::plainRules("HuaweiJSONGetChangeListSession::parseResponse"), body)
                 .requiring({"HuaweiJSONGetChangeListSession::buildRequest", -1,
                             {&baseSnapshotId, &incrementalSnapshotId}}),
             post("fs_snapchangelist_session", HuaweiOpType::CREATE_SNAPSHOT_CHANGE_LIST_SESSION),
             "Unable to create change list session information")
      .run([&](FirstGenerationCall& call) { call.line(5, "Successfully created a Session with ID[%s]", sessionId); });
  return sessionId;
}

bool ZrManageHuawei::getSnapshotChangeList(std::string const& parentId, std::string const& baseSnapshotId,
                                           std::string const& incrementalSnapshotId,
                                           _HuaweiSnapshotChangeListInfo& info) {
  HuaweiJSONGetChangeListResult request(m_jobId);
  CallersPage callers(info, request);
  // Held to the end: the session's creation and the page are one operation. No guard here: only
  // the session operations that this one calls test the session.
  FirstGenerationCall call = firstGeneration("ZrManageHuawei::getSnapshotChangeList", LogKind::Event);
  call.unguarded().refusing(baseSnapshotId.empty() || incrementalSnapshotId.empty(),
                            formatted(kInvalidSnapshots, incrementalSnapshotId, baseSnapshotId));
  if (!call.checked()) return false;
  if (info.sessionId.empty()) {
    info.sessionId =
        createSnapshotChangeListSession(parentId, baseSnapshotId, incrementalSnapshotId, kFileSystemParentType);
    if (info.sessionId.empty()) return callers.failedAfter(call, "Unable to get the Snap Change List Session ID.");
  }
  const bool fetched =
      call.sends(request, get(pageResource(info), HuaweiOpType::GET_SNAPSHOT_CHANGE_LIST),
                 formatted(kPageFailed, baseSnapshotId, incrementalSnapshotId))
          .run([&](FirstGenerationCall&) { info = std::move(request).getChangeListInfo(info.sessionId); });
  if (RequiredValueContainment::failed()) return callers.failedKeepingIt();
  endWalkIfOver(*this, call, info, fetched);
  return fetched;
}

bool ZrManageHuawei::deleteSnapshotChangeListSession(std::string const& sessionId) {
  return firstGeneration("ZrManageHuawei::deleteSnapshotChangeListSession", LogKind::Event)
      .sends(DeletionRequest(HuaweiResponse::ParserLog{"HuaweiJSONDeleteChangeListSession::parseResponse"}),
             del(ResourcePath("fs_snapchangelist_session").segment(sessionId, "sessionId"),
                 HuaweiOpType::DELETE_SNAPSHOT_CHANGE_LIST_SESSION),
             "Unable to delete change list session information")
      .runTelling("Successfully deleted the Session ID[%s]", sessionId);
}
