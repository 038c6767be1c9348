// LUN groups: find or create a group, put snapshot LUNs in and take them out, delete the group.
#include "AdoptionByName.h"
#include "AssociationResource.h"
#include "ExactRecord.h"
#include "FormatArguments.h"
#include "HandBuiltBody.h"
#include "HuaweiApiValues.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONDeleteRequest.h"
#include "HuaweiJSONLunGroupRequests.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

using HandBuiltPiece::association;
using HandBuiltPiece::bare;
using HandBuiltPiece::quoted;
using HandBuiltPiece::vstore;
using HuaweiResponse::sanRules;
using PlainCalls::del;
using PlainCalls::get;
using PlainCalls::post;

CXoError ZrManageHuawei::getLUNGroupIDFromName(std::string const& lunGroupName, std::string& lunGroupId,
                                               std::string vstoreId) {
  std::vector<_HuaweiLunGroupInfo> groups;
  return secondGeneration("CXoError ZrManageHuawei::getLUNGroupIDFromName(const string&, std::string&, std::string)")
      // The wording is shared with the host lookup.
      .required(lunGroupName, "The entered host name is empty")
      .sends(RecordListRequest(groups, groupListRules("HuaweiJSONGetLunGroupInfo::parseResponse",
                                                      {HuaweiResponse::CodeWidth::Unsigned64}))
                 .readBy(&_HuaweiLunGroupInfo::parseFromJson),
             get(filtered("lungroup", "NAME", lunGroupName, vstoreId), HuaweiOpType::GET_LUN_GROUP_ID_FROM_NAME),
             SecondGenerationTexts::prefixedLookup(
                 "[ERROR] Unable to find the information for the lungroup with name [%s]", lunGroupName))
      .runFinding(groups, lunGroupName, "[ERROR] Unable to get the information for the lun group with Name[%s].",
                  lunGroupId, "Successfully got the information for lun group: ID [%s] NAME [%s]",
                  &_HuaweiLunGroupInfo::id, &_HuaweiLunGroupInfo::name);
}

CXoError ZrManageHuawei::createLUNGroup(_HuaweiLunGroupInfo& lunGroup, std::string const& lunGroupName,
                                        std::string vstoreId, std::string appType) {
  _HuaweiLunGroupInfo wanted = namedRecord<_HuaweiLunGroupInfo>(lunGroupName, vstoreId);
  wanted.appType = appType;
  return secondGeneration(
             "CXoError ZrManageHuawei::createLUNGroup(HuaweiLunGroupInfo_t&, const string&, std::string, std::string)")
      // The wording is shared with the host groups.
      .required(lunGroupName, "[ERROR] The hostgroup name is empty")
      .sendsRefusedAs(
          RecordRequest(lunGroup, sanRules("HuaweiJSONCreateLunGroup::parseResponse"),
                        "{" + quoted("NAME", lunGroupName) + ", " + bare("APPTYPE", appType) + vstore(vstoreId) + "}",
                        wanted),
          post("lungroup", HuaweiOpType::CREATE_LUN_GROUP),
          formatted("[ERROR] Unable to create lungroup with name [%s]", lunGroupName))
      // An adopted group keeps the application type and vStore name the caller's record held.
      .adoptingNamed(formatted("The lun group with Name [%s] already exists", lunGroupName),
                     AdoptionByName(*this, &ZrManageHuawei::getLUNGroupIDFromName, lunGroup,
                                    renamedAs(lunGroup, wanted), Rendering::AsWritten))
      .runTelling("Successfully created the lungroup with Name [%s] ID [%s]", lunGroup.name, lunGroup.id);
}

CXoError ZrManageHuawei::addSnapshotLuntoLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                  std::string vstoreId) {
  return secondGeneration(
             "CXoError ZrManageHuawei::addSnapshotLuntoLunGroup(const string&, const string&, std::string)")
      // The guard names the LUN operation; callers know it by that text.
      .guard("addLuntoLunGroup")
      .required({&lunGroupId, &lunId})
      .sendsRefusedAs(
          StatusRequest("HuaweiJSONAssociateLunWithLunGroup::parseResponse",
                        association(lunGroupId, lunId, HuaweiApiValue::OBJECT_TYPE_SNAPSHOT_LUN.getValue(), vstoreId)),
          post("lungroup/associate", HuaweiOpType::ADD_SNAPSHOT_LUN_TO_LUN_GROUP),
          formatted("[ERROR] Failed to associate snapshot LUN [%s] with LUN Group [%s]", lunId, lunGroupId),
          {on(HuaweiArrayCode::ALREADY_IN_LUN_GROUP)
               .line(0, formatted("The LUN [%s] is already associated to the LUN group [%s]", lunId, lunGroupId))
               .done()})
      .runTelling("Successfully associated the Snapshot LUN [%s] with LUN Group [%s]", lunId, lunGroupId);
}

CXoError ZrManageHuawei::getSnapshotLunAssociatedToLunGroup(std::string const& lunGroupId,
                                                            std::vector<_HuaweiLUNSnapshotInfo>& snapshotLuns,
                                                            std::string vstoreId) {
  return secondGeneration(
             "CXoError ZrManageHuawei::getSnapshotLunAssociatedToLunGroup(const string&, "
             "std::vector<_HuaweiLUNSnapshotInfo>&, std::string)")
      // Each snapshot LUN's keys are read in the order the record declares them.
      .listsHeldBy(
          RecordListRequest(snapshotLuns,
                            groupListRules("HuaweiJSONGetSnapLunAssociatedWithLunGroup::parseResponse",
                                           {HuaweiResponse::CodeWidth::Unsigned64}, HuaweiKeys::KeyOrder::Declared)),
          {"snapshot/associate", lunGroupId, HuaweiApiValue::OBJECT_TYPE_LUN_GROUP, vstoreId},
          HuaweiOpType::GET_SNAPSHOT_LUN_ASSOCIATED_TO_LUN_GROUP,
          "[ERROR] Failed to get the snapshot luns associated with the Lun Group [%s]")
      .runCounting(snapshotLuns, "No snapshot luns are associated with the lun Group [%s].",
                   "Successfully got the snapshot luns associated with the lun Group [%s]. Count [%llu]");
}

CXoError ZrManageHuawei::isSnapshotLunAssociatedToLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                           std::string vstoreId) {
  return secondGeneration(
             "CXoError ZrManageHuawei::isSnapshotLunAssociatedToLunGroup(const string&, const string&, std::string)")
      .unguarded()
      .required({&lunGroupId, &lunId})
      // An empty group fails too, in the words of the (successful) listing; the texts name the LUN twice.
      .runHolding(
          *this, &ZrManageHuawei::getSnapshotLunAssociatedToLunGroup, lunGroupId, vstoreId, lunId, Rendering::AsWritten,
          formatted("[ERROR] Unable to find the snapshot lun [%s] associated with the lun group [%s].", lunId, lunId),
          formatted("The snapshot lun [%s] is associated to the lungroup [%s]", lunId, lunId));
}

CXoError ZrManageHuawei::removeSnapshotLunFromLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                       std::string vstoreId) {
  return secondGeneration(
             "CXoError ZrManageHuawei::removeSnapshotLunFromLunGroup(const string&, const string&, std::string)")
      .required({&lunGroupId, &lunId})
      // Only the answer is read: the URL carries everything.
      .sendsRefusedAs(StatusRequest("HuaweiJSONRemoveAssociation::parseResponse"),
                      del(associatedTo(ResourcePath("lungroup/associate").add("ID", lunGroupId), lunId,
                                       HuaweiApiValue::OBJECT_TYPE_SNAPSHOT_LUN, vstoreId),
                          HuaweiOpType::REMOVE_SNAPSHOT_LUN_FROM_LUN_GROUP),
                      formatted("[ERROR] Failed to remove the lun [%s] from lungroup [%s]", lunId, lunGroupId))
      .runTelling(3, "Successfully removed the lun [%s] from lungroup [%s]", lunId, lunGroupId);
}

CXoError ZrManageHuawei::deleteLunGroup(std::string const& lunGroupId, std::string vstoreId) {
  return secondGeneration("CXoError ZrManageHuawei::deleteLunGroup(const string&, std::string)")
      .required({&lunGroupId})
      .sends(HuaweiJSONDeleteRequest(),
             del(ResourcePath("lungroup").segment(lunGroupId, "lunGroupId").vstore(vstoreId),
                 HuaweiOpType::DELETE_LUN_GROUP),
             SecondGenerationTexts::deletion("[ERROR] Failed to delete the lun group with Id [%s]", lunGroupId))
      .runTelling("Successfully deleted the lungroup with ID [%s]", lunGroupId);
}
