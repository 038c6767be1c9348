// LUNs and LUN snapshots: lookups, and a snapshot's life from creation to deletion.
#include "AssociationResource.h"
#include "FormatArguments.h"
#include "HandBuiltBody.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "RecordRequests.h"
#include "RequestPlacement.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

using HandBuiltPiece::quoted;
using HandBuiltPiece::vstore;
using HuaweiResponse::sanRules;
using PlainCalls::del;
using PlainCalls::get;
using PlainCalls::post;
using PlainCalls::put;

namespace {

const char* orEmpty(const std::string& text) { return text.empty() ? "[EMPTY]" : text.c_str(); }

// The one known code that means an absent object, and every other told at level 3 with the
// array's code and message behind the operation's failure.
CodeReactions absentOrDetailed(const CodeReaction& absent, const std::string& failure) {
  return {absent, otherwise().detailedLine(3, failure).fails(failure)};
}

// Bare identifiers joined by commas; one that is no number goes quoted, so it cannot add members.
std::string joinedIds(const std::vector<std::string>& ids) {
  std::string list;
  for (const auto& id : ids) list += (id.empty() ? id : RequestPlacement::jsonNumberOrString(id)) + ",";
  if (!list.empty()) list.pop_back();
  return list;
}

// A snapshot of the LUN in parentId, or, for a copy, of the snapshot in parentId. The answer's lines
// carry job 0.
RecordRequest<_HuaweiLUNSnapshotInfo> snapshotCreation(_HuaweiLUNSnapshotInfo& created, const std::string& parentId,
                                                       const std::string& name, const std::string& vstoreId,
                                                       bool isCopy) {
  _HuaweiLUNSnapshotInfo wanted;
  wanted.parentId = parentId;
  wanted.name = name;
  wanted.vstoreId = vstoreId;
  wanted.isCopy = isCopy;
  // A copy names its source snapshot by ID, a snapshot its LUN by PARENTID.
  return RecordRequest(created, sanRules("HuaweiJSONCreateLUNSnapshot::parseResponse"),
                       "{" + quoted(isCopy ? "ID" : "PARENTID", parentId) + ", " + quoted("NAME", name) + " " +
                           vstore(vstoreId) + "}",
                       wanted)
      .withoutJob();
}

}  // namespace

CXoError ZrManageHuawei::getLUNInfo(_HuaweiLUNInfo& lunInfo, std::string const& lunId, std::string vstoreId) {
  return qualifiedSecondGeneration("CXoError ZrManageHuawei::getLUNInfo(HuaweiLUNInfo_t&, const string&, std::string)")
      .guard("getLUNINfo")
      .required(lunId, "The entered LUN ID is empty")
      .sends(RecordRequest(lunInfo, sanRules("HuaweiJSONGetLUNInfo::parseResponse"))
                 .readBy(&_HuaweiLUNInfo::parseFromJson),
             get(ResourcePath("lun").segment(lunId, "lunId").vstore(vstoreId), HuaweiOpType::GET_LUN_INFO),
             SecondGenerationTexts::lookup(""))
      .reacting(absentOrDetailed(
          on(HuaweiArrayCode::LUN_DOES_NOT_EXIST).fails(formatted("[ERROR] LUN with ID [%s] does not exist", lunId)),
          formatted("[ERROR] Unable to find the LUN with ID [%s]", lunId)))
      .run([&](SecondGenerationCall& call) {
        call.line(0, "Successfully got the LUN information with ID [%s]", lunId);
        call.line(3, "LUN ID [%s]", lunInfo.id);
        call.line(3, "LUN Name [%s]", lunInfo.name);
        call.line(3, "Parent ID [%s]", lunInfo.parentId);
        call.line(3, "Running Status [%s]", lunInfo.runningStatus.getValue());
        call.line(3, "VStore ID [%s]", orEmpty(lunInfo.vstoreId));
        call.line(3, "VStore Name [%s]", orEmpty(lunInfo.vstoreName));
      });
}

CXoError ZrManageHuawei::getLUNSnapshotInfo(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotId,
                                            bool& notExist, std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::getLUNSnapshotInfo(HuaweiLUNSnapshotInfo_t&, const string&, bool&, std::string)")
      .required(snapshotId, "The entered snapshot ID is empty")
      .sends(RecordRequest(snapshotInfo, sanRules("HuaweiJSONGetLUNSnapshotInfo::parseResponse")),
             get(ResourcePath("snapshot").segment(snapshotId, "snapshotId").vstore(vstoreId),
                 HuaweiOpType::GET_LUN_SNAPSHOT_INFO),
             SecondGenerationTexts::lookup(""))
      // The absent snapshot is an error and a flag at once.
      .reacting(absentOrDetailed(on(HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST)
                                     .setting(notExist)
                                     .fails(formatted("[ERROR] Snapshot LUN with ID [%s] does not exist", snapshotId)),
                                 formatted("[ERROR] Unable to find the snapshot LUN with ID [%s]", snapshotId)))
      .runTelling("Successfully got the snapshot LUN information with ID [%s]", snapshotId);
}

CXoError ZrManageHuawei::getLUNSnapshotInfoByName(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotName,
                                                  bool& /*notExist*/, std::string vstoreId) {
  std::vector<_HuaweiLUNSnapshotInfo> snapshots;
  const char kNotFound[] = "[ERROR] Unable to find the snapshot LUN with name [%s]";
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::getLUNSnapshotInfoByName(HuaweiLUNSnapshotInfo_t&, const string&, bool&, "
             "std::string)")
      // The empty name speaks of an ID.
      .required(snapshotName, "The entered snapshot ID is empty")
      .sends(RecordListRequest(snapshots, sanRules("HuaweiJSONGetLUNSnapshotInfoByName::parseResponse",
                                                   HuaweiResponse::WithoutData::Status)),
             get(filtered("snapshot", "NAME", snapshotName, vstoreId), HuaweiOpType::GET_LUN_SNAPSHOT_INFO_BY_NAME),
             SecondGenerationTexts::lookup(kNotFound, snapshotName))
      .runFinding(snapshots, snapshotName, kNotFound, snapshotInfo, "Found the snapshot LUN with name [%s]",
                  &_HuaweiLUNSnapshotInfo::name);
}

CXoError ZrManageHuawei::createLUNSnapshot(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& lunId,
                                           std::string const& snapshotName, std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::createLUNSnapshot(HuaweiLUNSnapshotInfo_t&, const string&, const string&, "
             "std::string)")
      .required({&lunId, &snapshotName})
      .sends(snapshotCreation(snapshotInfo, lunId, snapshotName, vstoreId, false),
             post("snapshot", HuaweiOpType::CREATE_LUN_SNAPSHOT))
      .reacting(absentOrDetailed(
          on(HuaweiArrayCode::LUN_DOES_NOT_EXIST).fails(formatted("[ERROR] LUN with ID [%s] does not exist", lunId)),
          formatted("[ERROR] Unable to create snapshot [%s] for LUN with ID [%s]", snapshotName, lunId)))
      .alsoTelling({{"LUN ID [%s]", snapshotInfo.id}, {"LUN Name [%s]", snapshotInfo.name}})
      .runTelling("Successfully created snapshot for LUN with ParentID [%s] Name [%s]", lunId, snapshotName);
}

CXoError ZrManageHuawei::createLUNSnapshotCopy(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotId,
                                               std::string const& copyName, std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::createLUNSnapshotCopy(HuaweiLUNSnapshotInfo_t&, const string&, const string&, "
             "std::string)")
      .required({&snapshotId, &copyName})
      .sendsRefusedAs(snapshotCreation(snapshotInfo, snapshotId, copyName, vstoreId, true),
                      post("snapshot/createcopy", HuaweiOpType::CREATE_LUN_SNAPSHOT_COPY),
                      formatted("[ERROR] Unable to create snapshot copy for snapshot with ID [%s]", snapshotId))
      .alsoTelling({{"Snapshot ID [%s]", snapshotInfo.id},
                    {"LUN Name [%s]", snapshotInfo.name},
                    {"ParentID [%s]", snapshotInfo.parentId},
                    {"Parent Name [%s]", snapshotInfo.parentName}})
      .runTelling("Successfully created snapshot copy for snapshot with ID [%s]", snapshotId);
}

CXoError ZrManageHuawei::activateLUNSnapshot(std::vector<std::string> const& snapshotIds, std::string vstoreId) {
  const std::string list = joinedIds(snapshotIds);
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::activateLUNSnapshot(const std::vector<std::__cxx11::basic_string<char> >&, "
             "std::string)")
      .required(snapshotIds, "[ERROR] Invalid input parameters")
      .sendsInArrayWords(
          StatusRequest("HuaweiJSONActivateLUNSnapshot::parseResponse",
                        "{\"SNAPSHOTLIST\":[" + list + "]" + vstore(vstoreId) + "}"),
          post("snapshot/activate", HuaweiOpType::ACTIVATE_LUN_SNAPSHOT),
          {on(HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST)
               .fails("[ERROR] The snapshot LUN does not exist.Enter a valid snapshot ID."),
           on(HuaweiArrayCode::SNAPSHOT_NOT_INACTIVE)
               .fails("[ERROR] The snapshot is not in the inactive state. Confirm the snapshot is in the inactive "
                      "state and retry.")},
          formatted("[ERROR] Unable to activate the LUN snapshot(s) with ID(s) [%s]", list))
      .runTelling("Successfully activated the LUN snapshot(s) with ID(s) [%s]", list);
}

CXoError ZrManageHuawei::deActivateLUNSnapshot(std::string const& snapshotId, bool& notExist, std::string vstoreId) {
  return qualifiedSecondGeneration("CXoError ZrManageHuawei::deActivateLUNSnapshot(const string&, bool&, std::string)")
      .required({&snapshotId})
      // Stopping a snapshot that is gone counts as done.
      .sendsInArrayWords(StatusRequest("HuaweiJSONDeActivateLUNSnapshot::parseResponse",
                                       "{" + quoted("ID", snapshotId) + " " + vstore(vstoreId) + "}"),
                         put("snapshot/stop", HuaweiOpType::DEACTIVATE_LUN_SNAPSHOT),
                         {on(HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST)
                              .line(0, formatted("The LUN snapshot with ID [%s] does not exist", snapshotId))
                              .setting(notExist)
                              .done()})
      .runTelling("Successfully de-activated the LUN snapshot with ID [%s]", snapshotId);
}

CXoError ZrManageHuawei::deleteLUNSnapshot(std::string const& snapshotId, std::string vstoreId) {
  return qualifiedSecondGeneration("CXoError ZrManageHuawei::deleteLUNSnapshot(const string&, std::string)")
      .required(snapshotId, "[ERROR] The LUN snapshot ID is empty")
      // A snapshot deleted from outside counts as deleted.
      .sendsInArrayWords(StatusRequest("HuaweiJSONDeleteLUNSnapshot::parseResponse"),
                         del(ResourcePath("snapshot").segment(snapshotId, "snapshotId").vstore(vstoreId),
                             HuaweiOpType::DELETE_LUN_SNAPSHOT),
                         {on(HuaweiArrayCode::SNAPSHOT_LUN_DOES_NOT_EXIST)
                              .line(0, formatted("The snapshot LUN with ID [%s] does not exist. The snapshot may have "
                                                 "been externally deleted.",
                                                 snapshotId))
                              .done()},
                         formatted("[ERROR] Unable to delete the LUN snapshot with ID [%s]", snapshotId))
      .runTelling("Successfully deleted the LUN snapshot with ID [%s]", snapshotId);
}

CXoError ZrManageHuawei::revertLUNSnapshot(std::string const& snapshotId, std::string const& rollbackSpeed,
                                           std::string vstoreId) {
  return qualifiedSecondGeneration(
             "CXoError ZrManageHuawei::revertLUNSnapshot(const string&, const string&, std::string)")
      .required({&snapshotId})
      // The array's words are not read here: the refusal says "[ERROR] " and no more, and the detail
      // stands in the transport's log.
      .sends(StatusRequest("HuaweiJSONRevertLUNSnapshot::parseResponse",
                           "{" + quoted("ID", snapshotId) + "," + quoted("ROLLBACKSPEED", rollbackSpeed) + " " +
                               vstore(vstoreId) + "}",
                           {HuaweiResponse::CodeWidth::Unsigned64}),
             put("snapshot/rollback", HuaweiOpType::REVERT_LUN_SNAPSHOT), SecondGenerationTexts::change("[ERROR] "))
      .runTelling("Successfully reverted the LUN snapshot with ID [%s]", snapshotId);
}
