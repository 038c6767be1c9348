// Mapping views: find, create and delete a view, attach host groups and LUN groups to it and
// detach them, and list what a view holds and which views hold a LUN group.
#include "AdoptionByName.h"
#include "AssociationResource.h"
#include "FormatArguments.h"
#include "HandBuiltBody.h"
#include "HuaweiApiValues.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONDeleteRequest.h"
#include "HuaweiJSONLunGroupRequests.h"
#include "HuaweiOpTypes.h"
#include "OperationLog.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

using HandBuiltPiece::association;
using HandBuiltPiece::quoted;
using HandBuiltPiece::vstore;
using HuaweiResponse::sanIdentityRules;
using PlainCalls::del;
using PlainCalls::get;
using PlainCalls::post;
using PlainCalls::put;

namespace {

// The views' lists; their refusals are logged as errors.
HuaweiResponse::ReadingRules viewListRules() {
  return groupListRules("HuaweiJSONGetLUNMappingViewInfo::parseResponse", {HuaweiResponse::CodeWidth::Signed32, -1});
}

// Attaching a host group or a LUN group to a mapping view: what tells the two apart.
struct Attachment {
  const char* kind;  // the group's word in the lines: "lungroup", "hostgroup"
  const HuaweiApi::ObjectTypeValue& type;
  unsigned long long alreadyCode;  // the group is in the view already
  int opType;
  const char* answerLog;
  bool bodyTold;  // only the host group's attachment tells its body
};

CXoError attach(SecondGenerationCall call, const Attachment& attachment, const std::string& groupId,
                const std::string& mappingViewId, const std::string& vstoreId) {
  if (attachment.bodyTold) call.bodyTold();
  return call
      .required({&groupId, &mappingViewId})
      // Refusals are told as "Unable to associate" and fail as "Failed to associate".
      .sendsRefusedAs(StatusRequest(attachment.answerLog,
                                    association(mappingViewId, groupId, attachment.type.getValue(), vstoreId)),
                      put("mappingview/create_associate", attachment.opType),
                      {formatted("[ERROR] Unable to associate %s [%s] with mappingview [%s]", attachment.kind, groupId,
                                 mappingViewId),
                       formatted("[ERROR] Failed to associate %s [%s] with mappingview [%s]", attachment.kind, groupId,
                                 mappingViewId)},
                      {on(attachment.alreadyCode)
                           .line(0, formatted("The %s [%s] is already associated to the mappingview [%s]",
                                              attachment.kind, groupId, mappingViewId))
                           .done()})
      .runTelling("Successfully associated the %s [%s] with mappingview [%s]", attachment.kind, groupId, mappingViewId);
}

// Detaching a host group or a LUN group from a mapping view: what tells the two apart.
struct Detachment {
  const char* kind;  // the group's word in the lines: "lungroup", "hostgroup"
  const HuaweiApi::ObjectTypeValue& type;
  unsigned long long absentCode;
  int opType;
  const char* guardName;  // where the operation is known by another name
};

CXoError detach(SecondGenerationCall call, const Detachment& detachment, const std::string& groupId,
                const std::string& mappingViewId, const std::string& vstoreId) {
  if (detachment.guardName != nullptr) call.guard(detachment.guardName);
  return call.required({&groupId, &mappingViewId})
      .sends(StatusRequest("HuaweiJSONRemoveAssociation::parseResponse",
                           association(mappingViewId, groupId, detachment.type.getValue(), vstoreId)),
             put("mappingview/remove_associate", detachment.opType))
      // A group or view that is gone already counts as detached; any other refusal is told in the
      // array's own words.
      .reacting(
          {on(detachment.absentCode).line(0, formatted("The %s [%s] does not exist", detachment.kind, groupId)).done(),
           on(HuaweiArrayCode::MAPPING_VIEW_DOES_NOT_EXIST)
               .line(0, formatted("The mappingview [%s] does not exist", mappingViewId))
               .done(),
           otherwise().failsInArrayWords("", Rendering::AsFormat)})
      .runTelling("Successfully removed the association between the %s [%s] and mappingview [%s]", detachment.kind,
                  groupId, mappingViewId);
}

}  // namespace

CXoError ZrManageHuawei::getMappingViewInfoByName(_HuaweiLUNMappingView& mappingView,
                                                  std::string const& mappingViewName, std::string vstoreId) {
  std::vector<_HuaweiLUNMappingView> views;
  return secondGeneration(
             "CXoError ZrManageHuawei::getMappingViewInfoByName(HuaweiLUNMappingView_t&, const string&, std::string)")
      // One text for both lookups.
      .required(mappingViewName, "The entered mapping view ID is empty")
      .sends(
          RecordListRequest(views, viewListRules()),
          get(filtered("mappingview", "NAME", mappingViewName, vstoreId), HuaweiOpType::GET_MAPPING_VIEW_INFO_BY_NAME),
          SecondGenerationTexts::prefixedLookup(
              "[ERROR] Unable to find the information for mapping view with name [%s]", mappingViewName))
      .runFinding(views, mappingViewName, "[ERROR] Unable to get the information for mapping view with Name[%s].",
                  mappingView, "Successfully got the information for mapping view with Name [%s]. ID [%s]",
                  &_HuaweiLUNMappingView::name, &_HuaweiLUNMappingView::id);
}

CXoError ZrManageHuawei::getMappingViewInfoByID(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewId,
                                                std::string vstoreId) {
  std::vector<_HuaweiLUNMappingView> views;
  return secondGeneration(
             "CXoError ZrManageHuawei::getMappingViewInfoByID(HuaweiLUNMappingView_t&, const string&, std::string)")
      .required(mappingViewId, "The entered mapping view ID is empty")
      .sends(RecordListRequest(views, viewListRules()),
             get(filtered("mappingview", "ID", mappingViewId, vstoreId), HuaweiOpType::GET_MAPPING_VIEW_INFO_BY_ID),
             SecondGenerationTexts::prefixedLookup(
                 "[ERROR] Unable to find the information for mapping view with ID [%s]", mappingViewId))
      .runFinding(views, &_HuaweiLUNMappingView::id, mappingViewId, Listed::Sole,
                  formatted("[ERROR] Unable to get the information for mapping view with ID [%s].", mappingViewId),
                  mappingView, "Successfully got the information for mapping view with ID [%s]. Name [%s]",
                  &_HuaweiLUNMappingView::id, &_HuaweiLUNMappingView::name);
}

CXoError ZrManageHuawei::createMappingView(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewName,
                                           std::string vstoreId) {
  const auto wanted = namedRecord<_HuaweiLUNMappingView>(mappingViewName, vstoreId);
  return secondGeneration(
             "CXoError ZrManageHuawei::createMappingView(HuaweiLUNMappingView_t&, const string&, std::string)")
      // The wording is shared with the host groups.
      .required(mappingViewName, "[ERROR] The hostgroup name is empty")
      // The answer gives the view's ID and NAME; the vStore identifier stays as sent, its name empty.
      .sendsRefusedAs(RecordRequest(mappingView, sanIdentityRules("HuaweiJSONCreateMappingView::parseResponse"),
                                    "{" + quoted("NAME", mappingViewName) + " " + vstore(vstoreId) + "}", wanted),
                      post("mappingview", HuaweiOpType::CREATE_MAPPING_VIEW),
                      formatted("[ERROR] Unable to create mapping view with name [%s]", mappingViewName))
      .adoptingNamed(
          formatted("The mapping view with Name [%s] already exists", mappingViewName),
          AdoptionByName(*this, &ZrManageHuawei::getMappingViewInfoByName, mappingView, wanted, Rendering::AsWritten))
      .runTelling("Successfully created the mapping view with Name [%s] ID [%s]", mappingView.name, mappingView.id);
}

CXoError ZrManageHuawei::addHostGroupToMappingView(std::string const& hostGroupId, std::string const& mappingViewId,
                                                   std::string vstoreId) {
  return attach(
      secondGeneration("CXoError ZrManageHuawei::addHostGroupToMappingView(const string&, const string&, std::string)"),
      {"hostgroup", HuaweiApiValue::OBJECT_TYPE_HOSTGROUP, HuaweiArrayCode::HOST_GROUP_ALREADY_IN_MAPPING_VIEW,
       HuaweiOpType::ADD_HOST_GROUP_TO_MAPPING_VIEW, "HuaweiJSONAssociateHostGroupWithMappingView::parseResponse",
       true},
      hostGroupId, mappingViewId, vstoreId);
}

CXoError ZrManageHuawei::addLunGroupToMappingView(std::string const& lunGroupId, std::string const& mappingViewId,
                                                  std::string vstoreId) {
  return attach(
      secondGeneration("CXoError ZrManageHuawei::addLunGroupToMappingView(const string&, const string&, std::string)"),
      {"lungroup", HuaweiApiValue::OBJECT_TYPE_LUN_GROUP, HuaweiArrayCode::LUN_GROUP_ALREADY_IN_MAPPING_VIEW,
       HuaweiOpType::ADD_LUN_GROUP_TO_MAPPING_VIEW, "HuaweiJSONAssociateLunGroupWithMappingView::parseResponse", false},
      lunGroupId, mappingViewId, vstoreId);
}

CXoError ZrManageHuawei::getLunGroupAssociatedToMappingView(std::string const& mappingViewId,
                                                            std::vector<_HuaweiLunGroupInfo>& lunGroups,
                                                            std::string vstoreId) {
  return secondGeneration(
             "CXoError ZrManageHuawei::getLunGroupAssociatedToMappingView(const string&, "
             "std::vector<_HuaweiLunGroupInfo>&, std::string)")
      .listsHeldBy(
          RecordListRequest(lunGroups, groupListRules("HuaweiJSONGetLunGroupAssociatedWithMappingView::parseResponse",
                                                      {HuaweiResponse::CodeWidth::Signed32}))
              .readBy(&_HuaweiLunGroupInfo::parseFromJson),
          {"lungroup/associate", mappingViewId, HuaweiApiValue::OBJECT_TYPE_MAPPINGVIEW, vstoreId},
          HuaweiOpType::GET_LUN_GROUP_ASSOCIATED_TO_MAPPING_VIEW,
          "[ERROR] Failed to get the lun groups associated with the mappingview [%s]")
      .runCounting(lunGroups, "No lun groups are associated with the mappingview [%s].",
                   "Successfully got all the lun groups associated with the mappingview [%s]. Count [%llu]");
}

CXoError ZrManageHuawei::getHostGroupAssociatedToMappingView(std::string const& mappingViewId,
                                                             std::vector<_HuaweiHostGroupInfo>& hostGroups,
                                                             std::string vstoreId) {
  return secondGeneration(
             "CXoError ZrManageHuawei::getHostGroupAssociatedToMappingView(const string&, "
             "std::vector<_HuaweiHostGroupInfo>&, std::string)")
      .listsHeldBy(
          RecordListRequest(hostGroups, groupListRules("HuaweiJSONGetHostGroupAssociatedWithMappingView::parseResponse",
                                                       HuaweiResponse::StatusReport())),
          {"hostgroup/associate", mappingViewId, HuaweiApiValue::OBJECT_TYPE_MAPPINGVIEW, vstoreId},
          HuaweiOpType::GET_HOST_GROUP_ASSOCIATED_TO_MAPPING_VIEW,
          "[ERROR] Failed to get the host groups associated with the mappingview [%s]")
      .runCounting(hostGroups, "No host groups are associated with the mappingview [%s].",
                   "Successfully got all the host groups associated with the mappingview [%s]. Count [%llu]");
}

CXoError ZrManageHuawei::getMappingViewAssociatedToLunGroup(std::string const& lunGroupId,
                                                            std::vector<_HuaweiLUNMappingView>& mappingViews,
                                                            std::string vstoreId) {
  return secondGeneration(
             "CXoError ZrManageHuawei::getMappingViewAssociatedToLunGroup(const string&, "
             "std::vector<_HuaweiLUNMappingView>&, std::string)")
      .listsHeldBy(RecordListRequest(mappingViews, viewListRules()),
                   {"mapping/associate", lunGroupId, HuaweiApiValue::OBJECT_TYPE_LUN_GROUP, vstoreId},
                   HuaweiOpType::GET_MAPPING_VIEW_ASSOCIATED_TO_LUN_GROUP,
                   "[ERROR] Failed to get the mapping views associated with the lungroup with ID [%s]")
      .runCounting(mappingViews, "No mappingviews are associated with the lungroup with ID [%s]",
                   "Successfully got all the mappingviews associated with the lungroup with ID [%s]. Count [%llu]");
}

CXoError ZrManageHuawei::removeLunGroupAssociatedToMappingView(std::string const& lunGroupId,
                                                               std::string const& mappingViewId, std::string vstoreId) {
  // The guard's name is shorter than the operation's; callers know it by that text.
  return detach(
      secondGeneration(
          "CXoError ZrManageHuawei::removeLunGroupAssociatedToMappingView(const string&, const string&, std::string)"),
      {"lungroup", HuaweiApiValue::OBJECT_TYPE_LUN_GROUP, HuaweiArrayCode::LUN_GROUP_DOES_NOT_EXIST,
       HuaweiOpType::REMOVE_LUN_GROUP_ASSOCIATED_TO_MAPPING_VIEW, "removeLunGroupToMappingView"},
      lunGroupId, mappingViewId, vstoreId);
}

CXoError ZrManageHuawei::removeHostGroupAssociatedToMappingView(std::string const& hostGroupId,
                                                                std::string const& mappingViewId,
                                                                std::string vstoreId) {
  return detach(
      secondGeneration(
          "CXoError ZrManageHuawei::removeHostGroupAssociatedToMappingView(const string&, const string&, std::string)"),
      {"hostgroup", HuaweiApiValue::OBJECT_TYPE_HOSTGROUP, HuaweiArrayCode::HOST_GROUP_DOES_NOT_EXIST,
       HuaweiOpType::REMOVE_HOST_GROUP_ASSOCIATED_TO_MAPPING_VIEW, nullptr},
      hostGroupId, mappingViewId, vstoreId);
}

CXoError ZrManageHuawei::deleteMappingView(std::string const& mappingViewId, std::string vstoreId) {
  return secondGeneration("CXoError ZrManageHuawei::deleteMappingView(const string&, std::string)")
      .required({&mappingViewId})
      // A view that is gone is a failure here.
      .sends(HuaweiJSONDeleteRequest(),
             del(ResourcePath("mappingview").segment(mappingViewId, "mappingViewId").vstore(vstoreId),
                 HuaweiOpType::DELETE_MAPPING_VIEW),
             SecondGenerationTexts::deletion("[ERROR] Failed to delete the mappingview with Id [%s]", mappingViewId))
      .runTelling("Successfully deleted the mappingview with ID [%s]", mappingViewId);
}
