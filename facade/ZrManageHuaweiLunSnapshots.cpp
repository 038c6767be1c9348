// LUNs and LUN snapshots: lookups, and a snapshot's life from creation to deletion.
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONLunRequests.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "RequestPlacement.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

namespace {

const char* orEmpty(const std::string& text) { return text.empty() ? "[EMPTY]" : text.c_str(); }

// A refusal whose one known code means an absent object, told in the operation's words; any other
// code is logged at level 3 with the array's code and message behind the operation's failure.
struct AbsentOrDetailed {
  unsigned long long absentCode;
  std::string absentText;
  std::string failureText;
};

SecondGenerationRefusal refusal(SecondGenerationCall& call, OperationLog& log, AbsentOrDetailed words) {
  return [&call, &log, words](unsigned long long code, const std::string& message) {
    if (code == words.absentCode) return call.error(words.absentText);
    log.line(3, "%s [ERRORCODE: [%llu]] [MESSAGE: [%s]]", words.failureText.c_str(), code, message.c_str());
    return call.error(words.failureText);
  };
}

}  // namespace

CXoError ZrManageHuawei::getLUNInfo(_HuaweiLUNInfo& lunInfo, std::string const& lunId, std::string vstoreId) {
  HuaweiJSONGetLUNInfo request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getLUNInfo", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::getLUNInfo(HuaweiLUNInfo_t&, const string&, std::string)");
  if (CXoError failed = call.open("getLUNINfo", GuardStyle::Bare, {{&lunId, "The entered LUN ID is empty"}});
      failed.IsError()) {
    return failed;
  }
  const auto texts = SecondGenerationTexts::lookup("").refusedBy(refusal(
      call, log,
      {HuaweiArrayCode::LUN_DOES_NOT_EXIST, YbString::Format("[ERROR] LUN with ID [%s] does not exist", lunId.c_str()),
       YbString::Format("[ERROR] Unable to find the LUN with ID [%s]", lunId.c_str())}));
  const PlainCall get{HUAWEI_REQ_GET, ResourcePath("lun").segment(lunId, "lunId").vstore(vstoreId), HuaweiOpType::GET_LUN_INFO};
  if (CXoError failed = call.exchange(request, get, texts); failed.IsError()) return failed;
  request.getLUNInfo(lunInfo);
  log.line(0, "Successfully got the LUN information with ID [%s]", lunId.c_str());
  log.line(3, "LUN ID [%s]", lunInfo.id.c_str());
  log.line(3, "LUN Name [%s]", lunInfo.name.c_str());
  log.line(3, "Parent ID [%s]", lunInfo.parentId.c_str());
  log.line(3, "Running Status [%s]", lunInfo.runningStatus.getValue().c_str());
  log.line(3, "VStore ID [%s]", orEmpty(lunInfo.vstoreId));
  log.line(3, "VStore Name [%s]", orEmpty(lunInfo.vstoreName));
  return CXoError::Success();
}

CXoError ZrManageHuawei::getLUNSnapshotInfo(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotId,
                                            bool& notExist, std::string vstoreId) {
  HuaweiJSONGetLUNSnapshotInfo request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getLUNSnapshotInfo", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::getLUNSnapshotInfo(HuaweiLUNSnapshotInfo_t&, const string&, bool&, std::string)");
  if (CXoError failed =
          call.open("getLUNSnapshotInfo", GuardStyle::Bare, {{&snapshotId, "The entered snapshot ID is empty"}});
      failed.IsError()) {
    return failed;
  }
  const SecondGenerationRefusal detailed = refusal(
      call, log,
      {HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST, YbString::Format("[ERROR] Snapshot LUN with ID [%s] does not exist", snapshotId.c_str()),
       YbString::Format("[ERROR] Unable to find the snapshot LUN with ID [%s]", snapshotId.c_str())});
  // The absent snapshot is an error and a flag at once.
  const auto texts = SecondGenerationTexts::lookup("").refusedBy([&](unsigned long long code, const std::string& text) {
    if (code == HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST) notExist = true;
    return detailed(code, text);
  });
  const PlainCall get{HUAWEI_REQ_GET, ResourcePath("snapshot").segment(snapshotId, "snapshotId").vstore(vstoreId),
                      HuaweiOpType::GET_LUN_SNAPSHOT_INFO};
  if (CXoError failed = call.exchange(request, get, texts); failed.IsError()) return failed;
  request.getLUNSnapshotInfo(snapshotInfo);
  log.line(0, "Successfully got the snapshot LUN information with ID [%s]", snapshotId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::getLUNSnapshotInfoByName(_HuaweiLUNSnapshotInfo& snapshotInfo,
                                                  std::string const& snapshotName, bool& /*notExist*/,
                                                  std::string vstoreId) {
  HuaweiJSONGetLUNSnapshotInfoByName request(m_jobId);
  std::vector<_HuaweiLUNSnapshotInfo> snapshots;
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::getLUNSnapshotInfoByName", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::getLUNSnapshotInfoByName(HuaweiLUNSnapshotInfo_t&, const string&, bool&, std::string)");
  // The empty name speaks of an ID.
  if (CXoError failed =
          call.open("getLUNSnapshotInfoByName", GuardStyle::Bare, {{&snapshotName, "The entered snapshot ID is empty"}});
      failed.IsError()) {
    return failed;
  }
  const std::string notFound = YbString::Format("[ERROR] Unable to find the snapshot LUN with name [%s]", snapshotName.c_str());
  const PlainCall get{HUAWEI_REQ_GET, ResourcePath("snapshot").add("filter", "NAME:" + snapshotName).vstore(vstoreId),
                      HuaweiOpType::GET_LUN_SNAPSHOT_INFO_BY_NAME};
  if (CXoError failed = call.exchange(request, get, SecondGenerationTexts::lookup(notFound)); failed.IsError()) {
    return failed;
  }
  request.getLUNSnapshotInfoByName(snapshots);
  // The array's filter matches parts of names; only the same name counts.
  for (const auto& snapshot : snapshots) {
    if (snapshot.name != snapshotName) continue;
    snapshotInfo = snapshot;
    log.line(0, "Found the snapshot LUN with name [%s]", snapshotName.c_str());
    return CXoError::Success();
  }
  return call.error(notFound);
}

CXoError ZrManageHuawei::createLUNSnapshot(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& lunId,
                                           std::string const& snapshotName, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::createLUNSnapshot", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::createLUNSnapshot(HuaweiLUNSnapshotInfo_t&, const string&, const string&, std::string)");
  if (CXoError failed = call.guard("createLUNSnapshot"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&lunId, &snapshotName}); failed.IsError()) return failed;
  _HuaweiLUNSnapshotInfo wanted;
  wanted.parentId = lunId;
  wanted.name = snapshotName;
  wanted.vstoreId = vstoreId;
  HuaweiJSONCreateLUNSnapshot request(m_jobId, wanted);
  const auto texts = SecondGenerationTexts::change("").refusedBy(refusal(
      call, log,
      {HuaweiArrayCode::LUN_DOES_NOT_EXIST, YbString::Format("[ERROR] LUN with ID [%s] does not exist", lunId.c_str()),
       YbString::Format("[ERROR] Unable to create snapshot [%s] for LUN with ID [%s]", snapshotName.c_str(), lunId.c_str())}));
  if (CXoError failed = call.exchange(request, {HUAWEI_REQ_POST, "snapshot", HuaweiOpType::CREATE_LUN_SNAPSHOT}, texts);
      failed.IsError()) {
    return failed;
  }
  request.getLUNSnapshotInfo(snapshotInfo);
  log.line(0, "Successfully created snapshot for LUN with ParentID [%s] Name [%s]", lunId.c_str(),
           snapshotName.c_str());
  log.line(3, "LUN ID [%s]", snapshotInfo.id.c_str());
  log.line(3, "LUN Name [%s]", snapshotInfo.name.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::createLUNSnapshotCopy(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotId,
                                               std::string const& copyName, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::createLUNSnapshotCopy", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::createLUNSnapshotCopy(HuaweiLUNSnapshotInfo_t&, const string&, const string&, std::string)");
  if (CXoError failed = call.guard("createLUNSnapshotCopy"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&snapshotId, &copyName}); failed.IsError()) return failed;
  _HuaweiLUNSnapshotInfo wanted;
  wanted.parentId = snapshotId;
  wanted.name = copyName;
  wanted.vstoreId = vstoreId;
  wanted.isCopy = true;
  HuaweiJSONCreateLUNSnapshot request(m_jobId, wanted);
  const std::string failure = YbString::Format("[ERROR] Unable to create snapshot copy for snapshot with ID [%s]", snapshotId.c_str());
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long, const std::string&) {
    log.line(3, "%s", failure.c_str());
    return call.error(failure);
  });
  const PlainCall post{HUAWEI_REQ_POST, "snapshot/createcopy", HuaweiOpType::CREATE_LUN_SNAPSHOT_COPY};
  if (CXoError failed = call.exchange(request, post, texts); failed.IsError()) return failed;
  request.getLUNSnapshotInfo(snapshotInfo);
  log.line(0, "Successfully created snapshot copy for snapshot with ID [%s]", snapshotId.c_str());
  log.line(3, "Snapshot ID [%s]", snapshotInfo.id.c_str());
  log.line(3, "LUN Name [%s]", snapshotInfo.name.c_str());
  log.line(3, "ParentID [%s]", snapshotInfo.parentId.c_str());
  log.line(3, "Parent Name [%s]", snapshotInfo.parentName.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::activateLUNSnapshot(std::vector<std::string> const& snapshotIds, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::activateLUNSnapshot", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::activateLUNSnapshot(const std::vector<std::__cxx11::basic_string<char> >&, std::string)");
  if (CXoError failed = call.guard("activateLUNSnapshot"); failed.IsError()) return failed;
  if (snapshotIds.empty()) return call.error("[ERROR] Invalid input parameters");
  // Bare identifiers joined by commas; one that is no number goes quoted, so it cannot add members.
  std::string list;
  for (const auto& id : snapshotIds) list += (id.empty() ? id : RequestPlacement::jsonNumberOrString(id)) + ",";
  list.pop_back();
  HuaweiJSONActivateLUNSnapshot request(m_jobId, list, vstoreId);
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long code, const std::string& message) {
    log.line(3, "[ERROR] Unable to activate the LUN snapshot(s) with ID(s) [%s]", list.c_str());
    if (code == HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST) {
      return call.error("[ERROR] The snapshot LUN does not exist.Enter a valid snapshot ID.");
    }
    if (code == HuaweiArrayCode::SNAPSHOT_NOT_INACTIVE) {
      return call.error(
          "[ERROR] The snapshot is not in the inactive state. Confirm the snapshot is in the inactive state and retry.");
    }
    return call.error("[ERROR] %s", message.c_str());
  });
  const PlainCall post{HUAWEI_REQ_POST, "snapshot/activate", HuaweiOpType::ACTIVATE_LUN_SNAPSHOT};
  if (CXoError failed = call.exchange(request, post, texts); failed.IsError()) return failed;
  log.line(0, "Successfully activated the LUN snapshot(s) with ID(s) [%s]", list.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::deActivateLUNSnapshot(std::string const& snapshotId, bool& notExist, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::deActivateLUNSnapshot", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::deActivateLUNSnapshot(const string&, bool&, std::string)");
  if (CXoError failed = call.guard("deActivateLUNSnapshot"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&snapshotId}); failed.IsError()) return failed;
  HuaweiJSONDeActivateLUNSnapshot request(m_jobId, snapshotId, vstoreId);
  // Stopping a snapshot that is gone counts as done.
  bool gone = false;
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long code, const std::string& message) {
    if (code != HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST) return call.error("[ERROR] %s", message.c_str());
    log.line(0, "The LUN snapshot with ID [%s] does not exist", snapshotId.c_str());
    notExist = gone = true;
    return CXoError::Success();
  });
  const PlainCall put{HUAWEI_REQ_PUT, "snapshot/stop", HuaweiOpType::DEACTIVATE_LUN_SNAPSHOT};
  const CXoError result = call.exchange(request, put, texts);
  if (result.IsError() || gone) return result;
  log.line(0, "Successfully de-activated the LUN snapshot with ID [%s]", snapshotId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::deleteLUNSnapshot(std::string const& snapshotId, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::deleteLUNSnapshot", m_jobId);
  SecondGenerationCall call = secondGeneration(log, "CXoError ZrManageHuawei::deleteLUNSnapshot(const string&, std::string)");
  if (CXoError failed =
          call.open("deleteLUNSnapshot", GuardStyle::ErrorPrefix, {{&snapshotId, "[ERROR] The LUN snapshot ID is empty"}});
      failed.IsError()) {
    return failed;
  }
  HuaweiJSONDeleteLUNSnapshot request(m_jobId, snapshotId);
  // A snapshot deleted from outside counts as deleted.
  bool gone = false;
  const auto texts = SecondGenerationTexts::change("").refusedBy([&](unsigned long long code, const std::string& message) {
    log.line(3, "[ERROR] Unable to delete the LUN snapshot with ID [%s]", snapshotId.c_str());
    if (code != HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST) return call.error("[ERROR] %s", message.c_str());
    log.line(0, "The snapshot LUN with ID [%s] does not exist. The snapshot may have been externally deleted.",
             snapshotId.c_str());
    gone = true;
    return CXoError::Success();
  });
  const PlainCall del{HUAWEI_REQ_DELETE, ResourcePath("snapshot").segment(snapshotId, "snapshotId").vstore(vstoreId),
                      HuaweiOpType::DELETE_LUN_SNAPSHOT};
  const CXoError result = call.exchange(request, del, texts);
  if (result.IsError() || gone) return result;
  log.line(0, "Successfully deleted the LUN snapshot with ID [%s]", snapshotId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::revertLUNSnapshot(std::string const& snapshotId, std::string const& rollbackSpeed,
                                           std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "ZrManageHuawei::revertLUNSnapshot", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::revertLUNSnapshot(const string&, const string&, std::string)");
  if (CXoError failed = call.guard("revertLUNSnapshot"); failed.IsError()) return failed;
  if (CXoError failed = call.arguments({&snapshotId}); failed.IsError()) return failed;
  HuaweiJSONRevertLUNSnapshot request(m_jobId, snapshotId, rollbackSpeed, vstoreId);
  // The array's words are not read here: the refusal says "[ERROR] " and no more, and the detail
  // stands in the transport's log.
  const PlainCall put{HUAWEI_REQ_PUT, "snapshot/rollback", HuaweiOpType::REVERT_LUN_SNAPSHOT};
  if (CXoError failed = call.exchange(request, put, SecondGenerationTexts::change("[ERROR] ")); failed.IsError()) {
    return failed;
  }
  log.line(0, "Successfully reverted the LUN snapshot with ID [%s]", snapshotId.c_str());
  return CXoError::Success();
}
