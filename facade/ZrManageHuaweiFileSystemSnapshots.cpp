// File-system snapshots: take, inspect, delete.
#include "ConvertToString.h"
#include "CreatedIdentifier.h"
#include "FirstGenerationCall.h"
#include "HandBuiltBody.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiOpTypes.h"
#include "HuaweiRestAPI.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "RecordRequests.h"
#include "ResourcePath.h"
#include "ZrManageHuawei.h"

using PlainCalls::del;
using PlainCalls::get;
using PlainCalls::post;

namespace {
const char kIncrementalBackupSnapshotType[] = "8";
const int kFileSystemParentType = 40;
const char kSnapDiffRefused[] =
    "File System with Id[%llu] does not support SnapDiff functionality. Trying again by turning off ENABLESNAPDIFF "
    "option.";

// An incremental-backup snapshot is deleted with a flag of its own.
ResourcePath deletionResource(const std::string& snapshotId, const std::string& snapType, const std::string& vstoreId) {
  ResourcePath resource = ResourcePath("fssnapshot").segment(snapshotId, "snapshotId");
  if (snapType == kIncrementalBackupSnapshotType) resource.add("DELINCREMENTALBACKUPSNAP", "true");
  resource.vstore(vstoreId);
  return resource;
}
}  // namespace

bool ZrManageHuawei::createFileSystemSnapshot(unsigned long long const& fileSystemId, std::string& snapshot,
                                              bool enableSnapDiff, std::string vstoreId) {
  // The caller's string holds the name on the way out and the new snapshot's identifier once it is made.
  const auto body = [&](bool snapDiff) {
    HandBuiltBody request;
    request.add("NAME", snapshot)
        .add("PARENTID", ConvertToString::to_string(fileSystemId))
        .add("PARENTTYPE", ConvertToString::to_string<int>(kFileSystemParentType));
    if (!HuaweiVstore::isNone(vstoreId)) request.add("vstoreId", vstoreId);
    return request.add("ENABLESNAPDIFF", snapDiff ? "true" : "false").str();
  };
  auto request = RecordRequest<CreatedObjectId>(snapshot, &CreatedObjectId::id,
                                                HuaweiResponse::plainRules("HuaweiJSONCreateSnapshot::parseResponse"),
                                                body(enableSnapDiff))
                     .requiring({"HuaweiJSONCreateSnapshot::buildRequest", -1, {&snapshot}});
  request.forJob(m_jobId);
  // A file system that cannot take the SnapDiff option is asked again without it, for as long as
  // the array refuses: the retry is deliberately unbounded. Only each attempt's own answer counts,
  // so that a connection lost after a refusal does not become an endless loop of sends.
  bool refusedSnapDiff = false;
  FirstGenerationCall call = firstGeneration("ZrManageHuawei::createFileSystemSnapshot", LogKind::Event);
  call.sends(request, post("fssnapshot", HuaweiOpType::CREATE_FILE_SYSTEM_SNAPSHOT),
             "Unable to create snapshot.")
      .reacting(CodeReactions{on(HuaweiArrayCode::SNAPDIFF_NOT_SUPPORTED)
                                  .setting(refusedSnapDiff)
                                  .fails(formatted(kSnapDiffRefused, fileSystemId), 0)}
                    .countingOnlyThisAnswer());
  while (!call.runTelling("Successfully created snapshot[%s]", snapshot)) {
    if (!refusedSnapDiff) return false;
    refusedSnapDiff = false;
    request.nextBody(body(false));
  }
  return true;
}

bool ZrManageHuawei::getFileSystemSnapshotInfo(std::string const& snapshotId, _HuaweiSnapshotInfo& info,
                                               std::string vstoreId) {
  // An absent snapshot, as the transport's last classified answer tells, marks the record.
  bool absent = false;
  const bool found =
      firstGeneration("ZrManageHuawei::getFileSystemSnapshotInfo", LogKind::Event)
          .sends(RecordRequest(info, HuaweiResponse::plainRules("HuaweiJSONGetSnapshotInfo::parseResponse")),
                 get(ResourcePath("fssnapshot").segment(snapshotId, "snapshotId").vstore(vstoreId),
                     HuaweiOpType::GET_FILE_SYSTEM_SNAPSHOT_INFO),
                 "Unable to get the snapshot information.")
          .reacting({on(HuaweiArrayCode::FS_SNAPSHOT_DOES_NOT_EXIST).setting(absent)})
          .runTelling("Successfully got the snapshot information for [%s].", info.id);
  if (absent) {
    info.id = snapshotId;
    info.notExist = true;
  }
  return found;
}

bool ZrManageHuawei::isSnapshotPresent(std::string const& snapshotId, std::string vstoreId) {
  OperationLog log = OperationLog::event("ZrManageHuawei::isSnapshotPresent", m_jobId);
  _HuaweiSnapshotInfo info;
  // Any failure, a lost connection too, reads as not present.
  const bool present = getFileSystemSnapshotInfo(snapshotId, info, vstoreId);
  unsigned long long code = 0;
  std::string text;
  if (!present) m_restApi->getErrorInfo(code, text);
  if (!present && code == HuaweiArrayCode::FS_SNAPSHOT_DOES_NOT_EXIST) {
    log.line(0, "Snapshot [%s] does not exist on the array. It must have been externally deleted.",
             snapshotId.c_str());
  }
  return present;
}

bool ZrManageHuawei::deleteFileSystemSnapshot(std::string const& snapshotId, std::string vstoreId) {
  FirstGenerationCall call = firstGeneration("ZrManageHuawei::deleteFileSystemSnapshot", LogKind::Event);
  if (!call.required(snapshotId, "Snapshot ID").checked()) return false;
  // The lookup never stops the deletion: a snapshot whose type could not be learned keeps the
  // record's default type and is deleted as an incremental-backup snapshot.
  _HuaweiSnapshotInfo info;
  if (!getFileSystemSnapshotInfo(snapshotId, info, vstoreId)) {
    call.failure("Unable to get the snapshot information for [%s]", snapshotId);
  }
  return call
      .sends(DeletionRequest(HuaweiResponse::ParserLog{"HuaweiJSONDeleteSnapshot::parseResponse"}),
             del(deletionResource(snapshotId, info.snapType, vstoreId), HuaweiOpType::DELETE_FILE_SYSTEM_SNAPSHOT),
             "Unable to delete the snapshot")
      .runTelling("Successfully deleted the Snapshot ID[%s]", snapshotId);
}
