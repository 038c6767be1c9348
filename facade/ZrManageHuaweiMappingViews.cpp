// Mapping views: find, create and delete a view, attach host groups and LUN groups to it and
// detach them, and list what a view holds and which views hold a LUN group.
#include "HuaweiApiValues.h"
#include "HuaweiJSONDeleteRequest.h"
#include "HuaweiJSONMappingViewRequests.h"
#include "HuaweiOpTypes.h"
#include "OperationLog.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "HuaweiArrayCodes.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

namespace {

const unsigned long long kNameExists = HuaweiArrayCode::NAME_ALREADY_IN_USE;
const unsigned long long kHostGroupAlreadyInView = HuaweiArrayCode::HOST_GROUP_ALREADY_IN_MAPPING_VIEW;
const unsigned long long kLunGroupAlreadyInView = HuaweiArrayCode::LUN_GROUP_ALREADY_IN_MAPPING_VIEW;
const unsigned long long kLunGroupDoesNotExist = HuaweiArrayCode::LUN_GROUP_DOES_NOT_EXIST;
const unsigned long long kHostGroupDoesNotExist = HuaweiArrayCode::HOST_GROUP_DOES_NOT_EXIST;
const unsigned long long kMappingViewDoesNotExist = HuaweiArrayCode::MAPPING_VIEW_DOES_NOT_EXIST;

// What tells one association listing from another.
struct AssociationListing {
  const char* resource;
  const HuaweiApi::ObjectTypeValue& ownerType;
  int opType;
  const char* failure;
  const char* none;
  const char* counted;
};

// GET <resource>?ASSOCIATEOBJID=<owner>&ASSOCIATEOBJTYPE=<type>: the objects tied to the owner.
// An owner with nothing attached is a success with an empty list.
template <typename Request, typename Record>
CXoError listAssociated(SecondGenerationCall& call, Request& request, const AssociationListing& listing,
                        const std::string& ownerId, const std::string& vstoreId, std::vector<Record>& records,
                        void (Request::*getter)(std::vector<Record>&)) {
  CXoError result = call.arguments({&ownerId});
  if (result.IsError()) return result;
  const ResourcePath resource = ResourcePath(listing.resource)
                                     .add("ASSOCIATEOBJID", ownerId)
                                     .add("ASSOCIATEOBJTYPE", listing.ownerType.getValue())
                                     .vstore(vstoreId);
  result = call.exchange(request, {HUAWEI_REQ_GET, resource, listing.opType},
                         SecondGenerationTexts::change(YbString::Format(listing.failure, ownerId.c_str())).alsoLogged());
  if (result.IsError()) return result;
  (request.*getter)(records);
  if (records.empty()) {
    call.log().line(0, listing.none, ownerId.c_str());
  } else {
    call.log().line(0, listing.counted, ownerId.c_str(), static_cast<unsigned long long>(records.size()));
  }
  return CXoError::Success();
}

// What tells the attaching of a host group from that of a LUN group.
struct Attachment {
  const HuaweiApi::ObjectTypeValue& type;
  int opType;
  unsigned long long alreadyAttached;
  const char* attachedAlready;
  const char* refusedLog;
  const char* refused;
  const char* attached;
  // Whether the body is logged before the send.
  bool logsBody;
};

// PUT mappingview/create_associate; the group comes first in every text, the view second.
template <typename Request>
CXoError attach(SecondGenerationCall& call, unsigned long long jobId, const Attachment& attachment,
                const std::string& groupId, const std::string& mappingViewId, const std::string& vstoreId) {
  CXoError result = call.arguments({&groupId, &mappingViewId});
  if (result.IsError()) return result;
  Request request(jobId, mappingViewId, groupId, attachment.type.getValue(), vstoreId);
  if (attachment.logsBody) {
    std::string body;
    if (!request.buildRequest(body) || body.empty()) return call.error(kBuildFailedText);
    call.log().line(0, "REQUESSTT:[%s]", body.c_str());
  }
  result = call.exchange(
      request, {HUAWEI_REQ_PUT, "mappingview/create_associate", attachment.opType},
      SecondGenerationTexts::change(YbString::Format(attachment.refused, groupId.c_str(), mappingViewId.c_str()))
          .alsoLogged(YbString::Format(attachment.refusedLog, groupId.c_str(), mappingViewId.c_str()))
          .handling({attachment.alreadyAttached}));
  if (call.failedWith(attachment.alreadyAttached)) {
    call.log().line(0, attachment.attachedAlready, groupId.c_str(), mappingViewId.c_str());
    return CXoError::Success();
  }
  if (result.IsError()) return result;
  call.log().line(0, attachment.attached, groupId.c_str(), mappingViewId.c_str());
  return CXoError::Success();
}

// What tells the detaching of a host group from that of a LUN group.
struct Detachment {
  const HuaweiApi::ObjectTypeValue& type;
  int opType;
  unsigned long long groupAbsent;
  const char* groupGone;
  const char* detached;
};

// PUT mappingview/remove_associate. A group or view that is gone already counts as detached; any
// other refusal is told in the array's own words.
CXoError detach(SecondGenerationCall& call, unsigned long long jobId, const Detachment& detachment,
                const std::string& groupId, const std::string& mappingViewId, const std::string& vstoreId) {
  CXoError result = call.arguments({&groupId, &mappingViewId});
  if (result.IsError()) return result;
  HuaweiJSONRemoveAssociation request(jobId, mappingViewId, groupId, detachment.type.getValue(), vstoreId);
  result = call.exchange(request, {HUAWEI_REQ_PUT, "mappingview/remove_associate", detachment.opType},
                         SecondGenerationTexts::change(std::string()));
  if (call.failedWith(detachment.groupAbsent)) {
    call.log().line(0, detachment.groupGone, groupId.c_str());
    return CXoError::Success();
  }
  if (call.failedWith(kMappingViewDoesNotExist)) {
    call.log().line(0, "The mappingview [%s] does not exist", mappingViewId.c_str());
    return CXoError::Success();
  }
  if (call.status().IsError()) return call.errorInArrayWords();
  if (result.IsError()) return result;
  call.log().line(0, detachment.detached, groupId.c_str(), mappingViewId.c_str());
  return CXoError::Success();
}

}  // namespace

CXoError ZrManageHuawei::getMappingViewInfoByName(_HuaweiLUNMappingView& mappingView,
                                                  std::string const& mappingViewName, std::string vstoreId) {
  HuaweiJSONGetLUNMappingViewInfo request(m_jobId);
  std::vector<_HuaweiLUNMappingView> views;
  OperationLog log = OperationLog::facade(m_debug, "getMappingViewInfoByName", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::getMappingViewInfoByName(HuaweiLUNMappingView_t&, const string&, std::string)");
  CXoError result = call.guard("getMappingViewInfoByName", GuardStyle::Bare);
  if (result.IsError()) return result;
  // One text for both lookups.
  if (mappingViewName.empty()) return call.error("The entered mapping view ID is empty");
  const PlainCall get{HUAWEI_REQ_GET,
                      ResourcePath("mappingview").add("filter", "NAME:" + mappingViewName).vstore(vstoreId),
                      HuaweiOpType::GET_MAPPING_VIEW_INFO_BY_NAME};
  result = call.exchange(request, get,
                         SecondGenerationTexts(YbString::Format(
                                                   "[ERROR] Unable to find the information for mapping view with name [%s]",
                                                   mappingViewName.c_str()))
                             .emptyResponseSays("[ERROR] Empty response is returned from the array"));
  if (result.IsError()) return result;
  request.getLUNMappingInfo(views);
  // The filter matches parts of names: only an exact name counts.
  for (const _HuaweiLUNMappingView& view : views) {
    if (view.name != mappingViewName) continue;
    mappingView = view;
    log.line(0, "Successfully got the information for mapping view with Name [%s]. ID [%s]", view.name.c_str(),
             view.id.c_str());
    return CXoError::Success();
  }
  return call.error(
      YbString::Format("[ERROR] Unable to get the information for mapping view with Name[%s].", mappingViewName.c_str()));
}

CXoError ZrManageHuawei::getMappingViewInfoByID(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewId,
                                                std::string vstoreId) {
  HuaweiJSONGetLUNMappingViewInfo request(m_jobId);
  std::vector<_HuaweiLUNMappingView> views;
  OperationLog log = OperationLog::facade(m_debug, "getMappingViewInfoByID", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::getMappingViewInfoByID(HuaweiLUNMappingView_t&, const string&, std::string)");
  CXoError result = call.guard("getMappingViewInfoByID", GuardStyle::Bare);
  if (result.IsError()) return result;
  if (mappingViewId.empty()) return call.error("The entered mapping view ID is empty");
  const PlainCall get{HUAWEI_REQ_GET, ResourcePath("mappingview").add("filter", "ID:" + mappingViewId).vstore(vstoreId),
                      HuaweiOpType::GET_MAPPING_VIEW_INFO_BY_ID};
  result = call.exchange(request, get,
                         SecondGenerationTexts(YbString::Format(
                                                   "[ERROR] Unable to find the information for mapping view with ID [%s]",
                                                   mappingViewId.c_str()))
                             .emptyResponseSays("[ERROR] Empty response is returned from the array"));
  if (result.IsError()) return result;
  request.getLUNMappingInfo(views);
  // Exactly the one view asked for: an answer of several is not trusted.
  if (views.size() != 1 || views.front().id != mappingViewId) {
    return call.error(
        YbString::Format("[ERROR] Unable to get the information for mapping view with ID [%s].", mappingViewId.c_str()));
  }
  mappingView = views.front();
  log.line(0, "Successfully got the information for mapping view with ID [%s]. Name [%s]", mappingView.id.c_str(),
           mappingView.name.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::createMappingView(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewName,
                                           std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "createMappingView", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::createMappingView(HuaweiLUNMappingView_t&, const string&, std::string)");
  CXoError result = call.guard("createMappingView");
  if (result.IsError()) return result;
  // The wording is shared with the host groups.
  if (mappingViewName.empty()) return call.error("[ERROR] The hostgroup name is empty");
  _HuaweiLUNMappingView wanted;
  wanted.name = mappingViewName;
  wanted.vstoreId = vstoreId;
  HuaweiJSONCreateMappingView request(m_jobId, wanted);
  result = call.exchange(request, {HUAWEI_REQ_POST, "mappingview", HuaweiOpType::CREATE_MAPPING_VIEW},
                         SecondGenerationTexts::change(YbString::Format(
                                                               "[ERROR] Unable to create mapping view with name [%s]",
                                                               mappingViewName.c_str()))
                             .alsoLogged()
                             .handling({kNameExists}));
  if (call.failedWith(kNameExists)) {
    log.line(3, "The mapping view with Name [%s] already exists", mappingViewName.c_str());
    const CXoError lookup = getMappingViewInfoByName(mappingView, mappingViewName, vstoreId);
    if (lookup.IsError() || mappingView.id.empty()) return call.error(lookup.AsString());
    return CXoError::Success();
  }
  if (result.IsError()) return result;
  request.getMappingViewInfo(mappingView);
  log.line(0, "Successfully created the mapping view with Name [%s] ID [%s]", mappingView.name.c_str(),
           mappingView.id.c_str());
  return CXoError::Success();
}

CXoError ZrManageHuawei::addHostGroupToMappingView(std::string const& hostGroupId, std::string const& mappingViewId,
                                                   std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "addHostGroupToMappingView", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::addHostGroupToMappingView(const string&, const string&, std::string)");
  const CXoError guard = call.guard("addHostGroupToMappingView");
  if (guard.IsError()) return guard;
  static const Attachment kHostGroup{
      /*type=*/HuaweiApiValue::OBJECT_TYPE_HOSTGROUP,
      /*opType=*/HuaweiOpType::ADD_HOST_GROUP_TO_MAPPING_VIEW,
      /*alreadyAttached=*/kHostGroupAlreadyInView,
      /*attachedAlready=*/"The hostgroup [%s] is already associated to the mappingview [%s]",
      /*refusedLog=*/"[ERROR] Unable to associate hostgroup [%s] with mappingview [%s]",
      /*refused=*/"[ERROR] Failed to associate hostgroup [%s] with mappingview [%s]",
      /*attached=*/"Successfully associated the hostgroup [%s] with mappingview [%s]",
      /*logsBody=*/true};  // only the host group's attachment logs its body
  return attach<HuaweiJSONAssociateHostGroupWithMappingView>(call, m_jobId, kHostGroup, hostGroupId, mappingViewId,
                                                             vstoreId);
}

CXoError ZrManageHuawei::addLunGroupToMappingView(std::string const& lunGroupId, std::string const& mappingViewId,
                                                  std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "addLunGroupToMappingView", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::addLunGroupToMappingView(const string&, const string&, std::string)");
  const CXoError guard = call.guard("addLunGroupToMappingView");
  if (guard.IsError()) return guard;
  static const Attachment kLunGroup{
      /*type=*/HuaweiApiValue::OBJECT_TYPE_LUN_GROUP,
      /*opType=*/HuaweiOpType::ADD_LUN_GROUP_TO_MAPPING_VIEW,
      /*alreadyAttached=*/kLunGroupAlreadyInView,
      /*attachedAlready=*/"The lungroup [%s] is already associated to the mappingview [%s]",
      /*refusedLog=*/"[ERROR] Unable to associate lungroup [%s] with mappingview [%s]",
      /*refused=*/"[ERROR] Failed to associate lungroup [%s] with mappingview [%s]",
      /*attached=*/"Successfully associated the lungroup [%s] with mappingview [%s]",
      /*logsBody=*/false};
  return attach<HuaweiJSONAssociateLunGroupWithMappingView>(call, m_jobId, kLunGroup, lunGroupId, mappingViewId,
                                                            vstoreId);
}

CXoError ZrManageHuawei::getLunGroupAssociatedToMappingView(std::string const& mappingViewId,
                                                            std::vector<_HuaweiLunGroupInfo>& lunGroups,
                                                            std::string vstoreId) {
  HuaweiJSONGetLunGroupAssociatedWithMappingView request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "getLunGroupAssociatedToMappingView", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::getLunGroupAssociatedToMappingView(const string&, std::vector<_HuaweiLunGroupInfo>&, "
      "std::string)");
  const CXoError guard = call.guard("getLunGroupAssociatedToMappingView");
  if (guard.IsError()) return guard;
  static const AssociationListing kLunGroupsOfView{
      /*resource=*/"lungroup/associate",
      /*ownerType=*/HuaweiApiValue::OBJECT_TYPE_MAPPINGVIEW,
      /*opType=*/HuaweiOpType::GET_LUN_GROUP_ASSOCIATED_TO_MAPPING_VIEW,
      /*failure=*/"[ERROR] Failed to get the lun groups associated with the mappingview [%s]",
      /*none=*/"No lun groups are associated with the mappingview [%s].",
      /*counted=*/"Successfully got all the lun groups associated with the mappingview [%s]. Count [%llu]"};
  return listAssociated(call, request, kLunGroupsOfView, mappingViewId, vstoreId, lunGroups,
                        &HuaweiJSONGetLunGroupAssociatedWithMappingView::getLunGroupInfo);
}

CXoError ZrManageHuawei::getHostGroupAssociatedToMappingView(std::string const& mappingViewId,
                                                             std::vector<_HuaweiHostGroupInfo>& hostGroups,
                                                             std::string vstoreId) {
  HuaweiJSONGetHostGroupAssociatedWithMappingView request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "getHostGroupAssociatedToMappingView", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::getHostGroupAssociatedToMappingView(const string&, "
      "std::vector<_HuaweiHostGroupInfo>&, std::string)");
  const CXoError guard = call.guard("getHostGroupAssociatedToMappingView");
  if (guard.IsError()) return guard;
  static const AssociationListing kHostGroupsOfView{
      /*resource=*/"hostgroup/associate",
      /*ownerType=*/HuaweiApiValue::OBJECT_TYPE_MAPPINGVIEW,
      /*opType=*/HuaweiOpType::GET_HOST_GROUP_ASSOCIATED_TO_MAPPING_VIEW,
      /*failure=*/"[ERROR] Failed to get the host groups associated with the mappingview [%s]",
      /*none=*/"No host groups are associated with the mappingview [%s].",
      /*counted=*/"Successfully got all the host groups associated with the mappingview [%s]. Count [%llu]"};
  return listAssociated(call, request, kHostGroupsOfView, mappingViewId, vstoreId, hostGroups,
                        &HuaweiJSONGetHostGroupAssociatedWithMappingView::getHostGroupInfo);
}

CXoError ZrManageHuawei::getMappingViewAssociatedToLunGroup(std::string const& lunGroupId,
                                                            std::vector<_HuaweiLUNMappingView>& mappingViews,
                                                            std::string vstoreId) {
  HuaweiJSONGetLUNMappingViewInfo request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "getMappingViewAssociatedToLunGroup", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log,
      "CXoError ZrManageHuawei::getMappingViewAssociatedToLunGroup(const string&, "
      "std::vector<_HuaweiLUNMappingView>&, std::string)");
  const CXoError guard = call.guard("getMappingViewAssociatedToLunGroup");
  if (guard.IsError()) return guard;
  static const AssociationListing kViewsOfLunGroup{
      /*resource=*/"mapping/associate",
      /*ownerType=*/HuaweiApiValue::OBJECT_TYPE_LUN_GROUP,
      /*opType=*/HuaweiOpType::GET_MAPPING_VIEW_ASSOCIATED_TO_LUN_GROUP,
      /*failure=*/"[ERROR] Failed to get the mapping views associated with the lungroup with ID [%s]",
      /*none=*/"No mappingviews are associated with the lungroup with ID [%s]",
      /*counted=*/"Successfully got all the mappingviews associated with the lungroup with ID [%s]. Count [%llu]"};
  return listAssociated(call, request, kViewsOfLunGroup, lunGroupId, vstoreId, mappingViews,
                        &HuaweiJSONGetLUNMappingViewInfo::getLUNMappingInfo);
}

CXoError ZrManageHuawei::removeLunGroupAssociatedToMappingView(std::string const& lunGroupId,
                                                               std::string const& mappingViewId, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "removeLunGroupAssociatedToMappingView", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::removeLunGroupAssociatedToMappingView(const string&, const string&, std::string)");
  // The guard's name is shorter than the operation's; callers know it by that text.
  const CXoError guard = call.guard("removeLunGroupToMappingView");
  if (guard.IsError()) return guard;
  static const Detachment kLunGroup{
      /*type=*/HuaweiApiValue::OBJECT_TYPE_LUN_GROUP,
      /*opType=*/HuaweiOpType::REMOVE_LUN_GROUP_ASSOCIATED_TO_MAPPING_VIEW,
      /*groupAbsent=*/kLunGroupDoesNotExist,
      /*groupGone=*/"The lungroup [%s] does not exist",
      /*detached=*/"Successfully removed the association between the lungroup [%s] and mappingview [%s]"};
  return detach(call, m_jobId, kLunGroup, lunGroupId, mappingViewId, vstoreId);
}

CXoError ZrManageHuawei::removeHostGroupAssociatedToMappingView(std::string const& hostGroupId,
                                                                std::string const& mappingViewId,
                                                                std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "removeHostGroupAssociatedToMappingView", m_jobId);
  SecondGenerationCall call = secondGeneration(
      log, "CXoError ZrManageHuawei::removeHostGroupAssociatedToMappingView(const string&, const string&, std::string)");
  const CXoError guard = call.guard("removeHostGroupAssociatedToMappingView");
  if (guard.IsError()) return guard;
  static const Detachment kHostGroup{
      /*type=*/HuaweiApiValue::OBJECT_TYPE_HOSTGROUP,
      /*opType=*/HuaweiOpType::REMOVE_HOST_GROUP_ASSOCIATED_TO_MAPPING_VIEW,
      /*groupAbsent=*/kHostGroupDoesNotExist,
      /*groupGone=*/"The hostgroup [%s] does not exist",
      /*detached=*/"Successfully removed the association between the hostgroup [%s] and mappingview [%s]"};
  return detach(call, m_jobId, kHostGroup, hostGroupId, mappingViewId, vstoreId);
}

CXoError ZrManageHuawei::deleteMappingView(std::string const& mappingViewId, std::string vstoreId) {
  HuaweiJSONDeleteRequest request(m_jobId);
  OperationLog log = OperationLog::facade(m_debug, "deleteMappingView", m_jobId);
  SecondGenerationCall call =
      secondGeneration(log, "CXoError ZrManageHuawei::deleteMappingView(const string&, std::string)");
  CXoError result = call.guard("deleteMappingView");
  if (result.IsError()) return result;
  result = call.arguments({&mappingViewId});
  if (result.IsError()) return result;
  // A view that is gone is a failure here.
  result = call.exchange(request,
                         {HUAWEI_REQ_DELETE, ResourcePath("mappingview").segment(mappingViewId, "mappingViewId").vstore(vstoreId),
                          HuaweiOpType::DELETE_MAPPING_VIEW},
                         SecondGenerationTexts(YbString::Format("[ERROR] Failed to delete the mappingview with Id [%s]",
                                                                mappingViewId.c_str()))
                             .emptyResponseSays("[ERROR] Empty response returned from the array"));
  if (result.IsError()) return result;
  log.line(0, "Successfully deleted the mappingview with ID [%s]", mappingViewId.c_str());
  return CXoError::Success();
}
