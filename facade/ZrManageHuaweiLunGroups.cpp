// LUN groups: find or create a group, put snapshot LUNs in and take them out, delete the group.
#include "HuaweiApiValues.h"
#include "HuaweiJSONDeleteRequest.h"
#include "HuaweiJSONLunGroupRequests.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "HuaweiArrayCodes.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

namespace {
const unsigned long long kNameExists = HuaweiArrayCode::NAME_ALREADY_IN_USE;
const unsigned long long kAlreadyAssociated = HuaweiArrayCode::ALREADY_IN_LUN_GROUP;
}  // namespace

CXoError ZrManageHuawei::getLUNGroupIDFromName(std::string const& lunGroupName, std::string& lunGroupId,
                                               std::string vstoreId) {
  HuaweiJSONGetLunGroupInfo request(m_jobId);
  std::vector<_HuaweiLunGroupInfo> groups;
  OperationLog log = OperationLog::facade(m_debug, "getLUNGroupIDFromName", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::getLUNGroupIDFromName(const string&, std::string&, std::string)");
  CXoError result = call.guard("getLUNGroupIDFromName", GuardStyle::Bare);
  if (result.IsError()) return result;
  // The wording is shared with the host lookup.
  if (lunGroupName.empty()) return call.error("The entered host name is empty");
  const PlainCall get{HUAWEI_REQ_GET, ResourcePath("lungroup").add("filter", "NAME:" + lunGroupName).vstore(vstoreId),
                      HuaweiOpType::GET_LUN_GROUP_ID_FROM_NAME};
  result = call.exchange(
      request, get,
      SecondGenerationTexts(
          YbString::Format("[ERROR] Unable to find the information for the lungroup with name [%s]", lunGroupName.c_str()))
          .emptyResponseSays("[ERROR] Empty response is returned from the array"));
  if (result.IsError()) return result;
  request.getLunGroupInfo(groups);
  // The filter matches parts of names: only an exact name counts.
  for (const _HuaweiLunGroupInfo& group : groups) {
    if (group.name != lunGroupName) continue;
    lunGroupId = group.id;
    log.line(0, "Successfully got the information for lun group: ID [%s] NAME [%s]", group.id.c_str(),
             group.name.c_str());
    return CXoError::Success();
  }
  return call.error(
      YbString::Format("[ERROR] Unable to get the information for the lun group with Name[%s].", lunGroupName.c_str()));
}

CXoError ZrManageHuawei::createLUNGroup(_HuaweiLunGroupInfo& lunGroup, std::string const& lunGroupName,
                                        std::string vstoreId, std::string appType) {
  OperationLog log = OperationLog::facade(m_debug, "createLUNGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::createLUNGroup(HuaweiLunGroupInfo_t&, const string&, std::string, std::string)");
  CXoError result = call.guard("createLUNGroup");
  if (result.IsError()) return result;
  // The wording is shared with the host groups.
  if (lunGroupName.empty()) return call.error("[ERROR] The hostgroup name is empty");
  _HuaweiLunGroupInfo wanted;
  wanted.name = lunGroupName;
  wanted.appType = appType;
  wanted.vstoreId = vstoreId;
  HuaweiJSONCreateLunGroup request(m_jobId, wanted);
  result = call.exchange(request, {HUAWEI_REQ_POST, "lungroup", HuaweiOpType::CREATE_LUN_GROUP},
                         SecondGenerationTexts::change(YbString::Format(
                                                               "[ERROR] Unable to create lungroup with name [%s]",
                                                               lunGroupName.c_str()))
                             .alsoLogged()
                             .handling({kNameExists}));
  if (call.failedWith(kNameExists)) {
    log.line(3, "The lun group with Name [%s] already exists", lunGroupName.c_str());
    std::string existingId;
    const CXoError lookup = getLUNGroupIDFromName(lunGroupName, existingId, vstoreId);
    if (lookup.IsError() || existingId.empty()) return call.error(lookup.AsString());
    // An adopted group keeps the application type and vStore name the caller's record held.
    lunGroup.id = existingId;
    lunGroup.name = lunGroupName;
    lunGroup.vstoreId = vstoreId;
    return CXoError::Success();
  }
  if (result.IsError()) return result;
  request.getLunGroupInfo(lunGroup);
  log.line(0, "Successfully created the lungroup with Name [%s] ID [%s]", lunGroup.name.c_str(), lunGroup.id.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::addSnapshotLuntoLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                  std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "addSnapshotLuntoLunGroup", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::addSnapshotLuntoLunGroup(const string&, const string&, std::string)");
  // The guard names the LUN operation; callers know it by that text.
  CXoError result = call.guard("addLuntoLunGroup");
  if (result.IsError()) return result;
  result = call.arguments({&lunGroupId, &lunId});
  if (result.IsError()) return result;
  HuaweiJSONAssociateLunWithLunGroup request(m_jobId, lunId, lunGroupId,
                                             HuaweiApiValue::OBJECT_TYPE_SNAPSHOT_LUN.getValue(), vstoreId);
  result = call.exchange(request, {HUAWEI_REQ_POST, "lungroup/associate", HuaweiOpType::ADD_SNAPSHOT_LUN_TO_LUN_GROUP},
                         SecondGenerationTexts::change(
                             YbString::Format("[ERROR] Failed to associate snapshot LUN [%s] with LUN Group [%s]",
                                              lunId.c_str(), lunGroupId.c_str()))
                             .alsoLogged()
                             .handling({kAlreadyAssociated}));
  if (call.failedWith(kAlreadyAssociated)) {
    log.line(0, "The LUN [%s] is already associated to the LUN group [%s]", lunId.c_str(), lunGroupId.c_str());
    return CXoError::Success();
  }
  if (result.IsError()) return result;
  log.line(0, "Successfully associated the Snapshot LUN [%s] with LUN Group [%s]", lunId.c_str(), lunGroupId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::getSnapshotLunAssociatedToLunGroup(std::string const& lunGroupId,
                                                            std::vector<_HuaweiLUNSnapshotInfo>& snapshotLuns,
                                                            std::string vstoreId) {
  HuaweiJSONGetSnapLunAssociatedWithLunGroup request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "getSnapshotLunAssociatedToLunGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::getSnapshotLunAssociatedToLunGroup(const string&, "
      "std::vector<_HuaweiLUNSnapshotInfo>&, std::string)");
  CXoError result = call.guard("getSnapshotLunAssociatedToLunGroup");
  if (result.IsError()) return result;
  result = call.arguments({&lunGroupId});
  if (result.IsError()) return result;
  const ResourcePath resource = ResourcePath("snapshot/associate")
                                     .add("ASSOCIATEOBJID", lunGroupId)
                                     .add("ASSOCIATEOBJTYPE", HuaweiApiValue::OBJECT_TYPE_LUN_GROUP.getValue())
                                     .vstore(vstoreId);
  result = call.exchange(request, {HUAWEI_REQ_GET, resource, HuaweiOpType::GET_SNAPSHOT_LUN_ASSOCIATED_TO_LUN_GROUP},
                         SecondGenerationTexts::change(
                             YbString::Format("[ERROR] Failed to get the snapshot luns associated with the Lun Group [%s]",
                                              lunGroupId.c_str()))
                             .alsoLogged());
  if (result.IsError()) return result;
  request.getSnapLunInfo(snapshotLuns);
  if (snapshotLuns.empty()) {
    log.line(0, "No snapshot luns are associated with the lun Group [%s].", lunGroupId.c_str());
  } else {
    log.line(0, "Successfully got the snapshot luns associated with the lun Group [%s]. Count [%llu]",
             lunGroupId.c_str(), static_cast<unsigned long long>(snapshotLuns.size()));
  }
  return CXoError::Success();
}

CXoError ZrManageHuawei::isSnapshotLunAssociatedToLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                           std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "isSnapshotLunAssociatedToLunGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::isSnapshotLunAssociatedToLunGroup(const string&, const string&, std::string)");
  CXoError result = call.arguments({&lunGroupId, &lunId});
  if (result.IsError()) return result;
  std::vector<_HuaweiLUNSnapshotInfo> members;
  const CXoError listed = getSnapshotLunAssociatedToLunGroup(lunGroupId, members, vstoreId);
  // An empty group fails too, in the words of the (successful) listing.
  if (listed.IsError() || members.empty()) return call.error(listed.AsString());
  for (const _HuaweiLUNSnapshotInfo& member : members) {
    if (member.id != lunId) continue;
    log.line(0, "The snapshot lun [%s] is associated to the lungroup [%s]", lunId.c_str(), lunId.c_str());
    return CXoError::Success();
  }
  return call.error(YbString::Format("[ERROR] Unable to find the snapshot lun [%s] associated with the lun group [%s].",
                                     lunId.c_str(), lunId.c_str()));
}

CXoError ZrManageHuawei::removeSnapshotLunFromLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                       std::string vstoreId) {
  // Only the answer is read: the URL carries everything.
  HuaweiJSONRemoveAssociation request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "removeSnapshotLunFromLunGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::removeSnapshotLunFromLunGroup(const string&, const string&, std::string)");
  CXoError result = call.guard("removeSnapshotLunFromLunGroup");
  if (result.IsError()) return result;
  result = call.arguments({&lunGroupId, &lunId});
  if (result.IsError()) return result;
  const ResourcePath resource = ResourcePath("lungroup/associate")
                                     .add("ID", lunGroupId)
                                     .add("ASSOCIATEOBJID", lunId)
                                     .add("ASSOCIATEOBJTYPE", HuaweiApiValue::OBJECT_TYPE_SNAPSHOT_LUN.getValue())
                                     .vstore(vstoreId);
  result = call.exchange(request, {HUAWEI_REQ_DELETE, resource, HuaweiOpType::REMOVE_SNAPSHOT_LUN_FROM_LUN_GROUP},
                         SecondGenerationTexts::change(YbString::Format(
                                                               "[ERROR] Failed to remove the lun [%s] from lungroup [%s]",
                                                               lunId.c_str(), lunGroupId.c_str()))
                             .alsoLogged());
  if (result.IsError()) return result;
  log.line(3, "Successfully removed the lun [%s] from lungroup [%s]", lunId.c_str(), lunGroupId.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::deleteLunGroup(std::string const& lunGroupId, std::string vstoreId) {
  HuaweiJSONDeleteRequest request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "deleteLunGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(log, "CXoError ZrManageHuawei::deleteLunGroup(const string&, std::string)");
  CXoError result = call.guard("deleteLunGroup");
  if (result.IsError()) return result;
  result = call.arguments({&lunGroupId});
  if (result.IsError()) return result;
  result = call.exchange(
      request,
      {HUAWEI_REQ_DELETE, ResourcePath("lungroup").segment(lunGroupId, "lunGroupId").vstore(vstoreId), HuaweiOpType::DELETE_LUN_GROUP},
      SecondGenerationTexts(YbString::Format("[ERROR] Failed to delete the lun group with Id [%s]", lunGroupId.c_str()))
          .emptyResponseSays("[ERROR] Empty response returned from the array"));
  if (result.IsError()) return result;
  log.line(0, "Successfully deleted the lungroup with ID [%s]", lunGroupId.c_str());
  return CXoError::Success();
}
