// Mapping views: find, create and delete a view, attach host groups and LUN groups to it and
// detach them, and list what a view holds and which views hold a LUN group.
#include "AdoptionByName.h"
#include "ExactRecord.h"
#include "HuaweiApiValues.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONDeleteRequest.h"
#include "HuaweiJSONMappingViewRequests.h"
#include "HuaweiOpTypes.h"
#include "OperationLog.h"
#include "ResourcePath.h"
#include "SecondGenerationCall.h"
#include "YbString.h"
#include "ZrManageHuawei.h"

namespace {

// <resource>?ASSOCIATEOBJID=<owner>&ASSOCIATEOBJTYPE=<type>: the objects tied to the owner.
ResourcePath associatedWith(const char* resource, const std::string& ownerId,
                            const HuaweiApi::ObjectTypeValue& ownerType, const std::string& vstoreId) {
  return ResourcePath(resource)
      .add("ASSOCIATEOBJID", ownerId)
      .add("ASSOCIATEOBJTYPE", ownerType.getValue())
      .vstore(vstoreId);
}

// An owner with nothing attached is a success with an empty list, told in its own words.
void tellCount(SecondGenerationCall& call, size_t count, const char* none, const char* counted,
               const std::string& ownerId) {
  if (count == 0) {
    call.line(0, none, ownerId.c_str());
  } else {
    call.line(0, counted, ownerId.c_str(), static_cast<unsigned long long>(count));
  }
}

}  // namespace

CXoError ZrManageHuawei::getMappingViewInfoByName(_HuaweiLUNMappingView& mappingView,
                                                  std::string const& mappingViewName, std::string vstoreId) {
  HuaweiJSONGetLUNMappingViewInfo request(m_jobId);
  const char* name = mappingViewName.c_str();
  return secondGeneration(
             "getMappingViewInfoByName",
             "CXoError ZrManageHuawei::getMappingViewInfoByName(HuaweiLUNMappingView_t&, const string&, std::string)")
      .guard("getMappingViewInfoByName", GuardStyle::Bare)
      // One text for both lookups.
      .required(mappingViewName, "The entered mapping view ID is empty")
      .sends(request,
             {HUAWEI_REQ_GET, ResourcePath("mappingview").add("filter", "NAME:" + mappingViewName).vstore(vstoreId),
              HuaweiOpType::GET_MAPPING_VIEW_INFO_BY_NAME},
             SecondGenerationTexts(
                 YbString::Format("[ERROR] Unable to find the information for mapping view with name [%s]", name))
                 .emptyResponseSays("[ERROR] Empty response is returned from the array"))
      .run([&](SecondGenerationCall& call) {
        std::vector<_HuaweiLUNMappingView> views;
        request.getLUNMappingInfo(views);
        const _HuaweiLUNMappingView* view = exactRecord(views, &_HuaweiLUNMappingView::name, mappingViewName);
        if (view == nullptr) {
          return call.error("[ERROR] Unable to get the information for mapping view with Name[%s].", name);
        }
        mappingView = *view;
        call.line(0, "Successfully got the information for mapping view with Name [%s]. ID [%s]", view->name.c_str(),
                  view->id.c_str());
        return CXoError::Success();
      });
}

CXoError ZrManageHuawei::getMappingViewInfoByID(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewId,
                                                std::string vstoreId) {
  HuaweiJSONGetLUNMappingViewInfo request(m_jobId);
  const char* id = mappingViewId.c_str();
  return secondGeneration(
             "getMappingViewInfoByID",
             "CXoError ZrManageHuawei::getMappingViewInfoByID(HuaweiLUNMappingView_t&, const string&, std::string)")
      .guard("getMappingViewInfoByID", GuardStyle::Bare)
      .required(mappingViewId, "The entered mapping view ID is empty")
      .sends(request,
             {HUAWEI_REQ_GET, ResourcePath("mappingview").add("filter", "ID:" + mappingViewId).vstore(vstoreId),
              HuaweiOpType::GET_MAPPING_VIEW_INFO_BY_ID},
             SecondGenerationTexts(
                 YbString::Format("[ERROR] Unable to find the information for mapping view with ID [%s]", id))
                 .emptyResponseSays("[ERROR] Empty response is returned from the array"))
      .run([&](SecondGenerationCall& call) {
        std::vector<_HuaweiLUNMappingView> views;
        request.getLUNMappingInfo(views);
        // Exactly the one view asked for: an answer of several is not trusted.
        if (views.size() != 1 || views.front().id != mappingViewId) {
          return call.error("[ERROR] Unable to get the information for mapping view with ID [%s].", id);
        }
        mappingView = views.front();
        call.line(0, "Successfully got the information for mapping view with ID [%s]. Name [%s]", id,
                  mappingView.name.c_str());
        return CXoError::Success();
      });
}

CXoError ZrManageHuawei::createMappingView(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewName,
                                           std::string vstoreId) {
  _HuaweiLUNMappingView wanted;
  wanted.name = mappingViewName;
  wanted.vstoreId = vstoreId;
  HuaweiJSONCreateMappingView request(m_jobId, wanted);
  AdoptionByName<_HuaweiLUNMappingView> adoption(*this, &ZrManageHuawei::getMappingViewInfoByName, mappingView, wanted,
                                                 Rendering::AsWritten);
  const std::string failure =
      YbString::Format("[ERROR] Unable to create mapping view with name [%s]", mappingViewName.c_str());
  return secondGeneration(
             "createMappingView",
             "CXoError ZrManageHuawei::createMappingView(HuaweiLUNMappingView_t&, const string&, std::string)")
      .guard("createMappingView")
      // The wording is shared with the host groups.
      .required(mappingViewName, "[ERROR] The hostgroup name is empty")
      .sends(request, {HUAWEI_REQ_POST, "mappingview", HuaweiOpType::CREATE_MAPPING_VIEW},
             SecondGenerationTexts::change(failure))
      .reacting(
          {on(HuaweiArrayCode::NAME_ALREADY_IN_USE)
               .line(3, YbString::Format("The mapping view with Name [%s] already exists", mappingViewName.c_str()))
               .adopts(),
           otherwise().line(3, failure)})
      .adopting(adoption)
      .run([&](SecondGenerationCall& call) {
        request.getMappingViewInfo(mappingView);
        call.line(0, "Successfully created the mapping view with Name [%s] ID [%s]", mappingView.name.c_str(),
                  mappingView.id.c_str());
      });
}

CXoError ZrManageHuawei::addHostGroupToMappingView(std::string const& hostGroupId, std::string const& mappingViewId,
                                                   std::string vstoreId) {
  HuaweiJSONAssociateHostGroupWithMappingView request(m_jobId, mappingViewId, hostGroupId,
                                                      HuaweiApiValue::OBJECT_TYPE_HOSTGROUP.getValue(), vstoreId);
  const char* ids[] = {hostGroupId.c_str(), mappingViewId.c_str()};
  return secondGeneration(
             "addHostGroupToMappingView",
             "CXoError ZrManageHuawei::addHostGroupToMappingView(const string&, const string&, std::string)")
      .guard("addHostGroupToMappingView")
      .required({&hostGroupId, &mappingViewId})
      .bodyTold()  // only the host group's attachment tells its body
      .sends(request, {HUAWEI_REQ_PUT, "mappingview/create_associate", HuaweiOpType::ADD_HOST_GROUP_TO_MAPPING_VIEW},
             SecondGenerationTexts::change(
                 YbString::Format("[ERROR] Failed to associate hostgroup [%s] with mappingview [%s]", ids[0], ids[1])))
      .reacting(
          {on(HuaweiArrayCode::HOST_GROUP_ALREADY_IN_MAPPING_VIEW)
               .line(0, YbString::Format("The hostgroup [%s] is already associated to the mappingview [%s]", ids[0],
                                         ids[1]))
               .done(),
           otherwise().line(3, YbString::Format("[ERROR] Unable to associate hostgroup [%s] with mappingview [%s]",
                                                ids[0], ids[1]))})
      .run([&](SecondGenerationCall& call) {
        call.line(0, "Successfully associated the hostgroup [%s] with mappingview [%s]", ids[0], ids[1]);
      });
}

CXoError ZrManageHuawei::addLunGroupToMappingView(std::string const& lunGroupId, std::string const& mappingViewId,
                                                  std::string vstoreId) {
  HuaweiJSONAssociateLunGroupWithMappingView request(m_jobId, mappingViewId, lunGroupId,
                                                     HuaweiApiValue::OBJECT_TYPE_LUN_GROUP.getValue(), vstoreId);
  const char* ids[] = {lunGroupId.c_str(), mappingViewId.c_str()};
  return secondGeneration(
             "addLunGroupToMappingView",
             "CXoError ZrManageHuawei::addLunGroupToMappingView(const string&, const string&, std::string)")
      .guard("addLunGroupToMappingView")
      .required({&lunGroupId, &mappingViewId})
      .sends(request, {HUAWEI_REQ_PUT, "mappingview/create_associate", HuaweiOpType::ADD_LUN_GROUP_TO_MAPPING_VIEW},
             SecondGenerationTexts::change(
                 YbString::Format("[ERROR] Failed to associate lungroup [%s] with mappingview [%s]", ids[0], ids[1])))
      .reacting({on(HuaweiArrayCode::LUN_GROUP_ALREADY_IN_MAPPING_VIEW)
                     .line(0, YbString::Format("The lungroup [%s] is already associated to the mappingview [%s]",
                                               ids[0], ids[1]))
                     .done(),
                 otherwise().line(3, YbString::Format("[ERROR] Unable to associate lungroup [%s] with mappingview [%s]",
                                                      ids[0], ids[1]))})
      .run([&](SecondGenerationCall& call) {
        call.line(0, "Successfully associated the lungroup [%s] with mappingview [%s]", ids[0], ids[1]);
      });
}

CXoError ZrManageHuawei::getLunGroupAssociatedToMappingView(std::string const& mappingViewId,
                                                            std::vector<_HuaweiLunGroupInfo>& lunGroups,
                                                            std::string vstoreId) {
  HuaweiJSONGetLunGroupAssociatedWithMappingView request(m_jobId);
  const std::string failure = YbString::Format(
      "[ERROR] Failed to get the lun groups associated with the mappingview [%s]", mappingViewId.c_str());
  return secondGeneration("getLunGroupAssociatedToMappingView",
                          "CXoError ZrManageHuawei::getLunGroupAssociatedToMappingView(const string&, "
                          "std::vector<_HuaweiLunGroupInfo>&, std::string)")
      .guard("getLunGroupAssociatedToMappingView")
      .required({&mappingViewId})
      .sends(request,
             {HUAWEI_REQ_GET,
              associatedWith("lungroup/associate", mappingViewId, HuaweiApiValue::OBJECT_TYPE_MAPPINGVIEW, vstoreId),
              HuaweiOpType::GET_LUN_GROUP_ASSOCIATED_TO_MAPPING_VIEW},
             SecondGenerationTexts::change(failure))
      .reacting({otherwise().line(3, failure)})
      .run([&](SecondGenerationCall& call) {
        request.getLunGroupInfo(lunGroups);
        tellCount(call, lunGroups.size(), "No lun groups are associated with the mappingview [%s].",
                  "Successfully got all the lun groups associated with the mappingview [%s]. Count [%llu]",
                  mappingViewId);
      });
}

CXoError ZrManageHuawei::getHostGroupAssociatedToMappingView(std::string const& mappingViewId,
                                                             std::vector<_HuaweiHostGroupInfo>& hostGroups,
                                                             std::string vstoreId) {
  HuaweiJSONGetHostGroupAssociatedWithMappingView request(m_jobId);
  const std::string failure = YbString::Format(
      "[ERROR] Failed to get the host groups associated with the mappingview [%s]", mappingViewId.c_str());
  return secondGeneration("getHostGroupAssociatedToMappingView",
                          "CXoError ZrManageHuawei::getHostGroupAssociatedToMappingView(const string&, "
                          "std::vector<_HuaweiHostGroupInfo>&, std::string)")
      .guard("getHostGroupAssociatedToMappingView")
      .required({&mappingViewId})
      .sends(request,
             {HUAWEI_REQ_GET,
              associatedWith("hostgroup/associate", mappingViewId, HuaweiApiValue::OBJECT_TYPE_MAPPINGVIEW, vstoreId),
              HuaweiOpType::GET_HOST_GROUP_ASSOCIATED_TO_MAPPING_VIEW},
             SecondGenerationTexts::change(failure))
      .reacting({otherwise().line(3, failure)})
      .run([&](SecondGenerationCall& call) {
        request.getHostGroupInfo(hostGroups);
        tellCount(call, hostGroups.size(), "No host groups are associated with the mappingview [%s].",
                  "Successfully got all the host groups associated with the mappingview [%s]. Count [%llu]",
                  mappingViewId);
      });
}

CXoError ZrManageHuawei::getMappingViewAssociatedToLunGroup(std::string const& lunGroupId,
                                                            std::vector<_HuaweiLUNMappingView>& mappingViews,
                                                            std::string vstoreId) {
  HuaweiJSONGetLUNMappingViewInfo request(m_jobId);
  const std::string failure = YbString::Format(
      "[ERROR] Failed to get the mapping views associated with the lungroup with ID [%s]", lunGroupId.c_str());
  return secondGeneration("getMappingViewAssociatedToLunGroup",
                          "CXoError ZrManageHuawei::getMappingViewAssociatedToLunGroup(const string&, "
                          "std::vector<_HuaweiLUNMappingView>&, std::string)")
      .guard("getMappingViewAssociatedToLunGroup")
      .required({&lunGroupId})
      .sends(request,
             {HUAWEI_REQ_GET,
              associatedWith("mapping/associate", lunGroupId, HuaweiApiValue::OBJECT_TYPE_LUN_GROUP, vstoreId),
              HuaweiOpType::GET_MAPPING_VIEW_ASSOCIATED_TO_LUN_GROUP},
             SecondGenerationTexts::change(failure))
      .reacting({otherwise().line(3, failure)})
      .run([&](SecondGenerationCall& call) {
        request.getLUNMappingInfo(mappingViews);
        tellCount(call, mappingViews.size(), "No mappingviews are associated with the lungroup with ID [%s]",
                  "Successfully got all the mappingviews associated with the lungroup with ID [%s]. Count [%llu]",
                  lunGroupId);
      });
}

CXoError ZrManageHuawei::removeLunGroupAssociatedToMappingView(std::string const& lunGroupId,
                                                               std::string const& mappingViewId, std::string vstoreId) {
  HuaweiJSONRemoveAssociation request(m_jobId, mappingViewId, lunGroupId,
                                      HuaweiApiValue::OBJECT_TYPE_LUN_GROUP.getValue(), vstoreId);
  const char* ids[] = {lunGroupId.c_str(), mappingViewId.c_str()};
  return secondGeneration("removeLunGroupAssociatedToMappingView",
                          "CXoError ZrManageHuawei::removeLunGroupAssociatedToMappingView(const string&, const "
                          "string&, std::string)")
      // The guard's name is shorter than the operation's; callers know it by that text.
      .guard("removeLunGroupToMappingView")
      .required({&lunGroupId, &mappingViewId})
      .sends(
          request,
          {HUAWEI_REQ_PUT, "mappingview/remove_associate", HuaweiOpType::REMOVE_LUN_GROUP_ASSOCIATED_TO_MAPPING_VIEW},
          SecondGenerationTexts::change(""))
      // A group or view that is gone already counts as detached; any other refusal is told in the
      // array's own words.
      .reacting({on(HuaweiArrayCode::LUN_GROUP_DOES_NOT_EXIST)
                     .line(0, YbString::Format("The lungroup [%s] does not exist", ids[0]))
                     .done(),
                 on(HuaweiArrayCode::MAPPING_VIEW_DOES_NOT_EXIST)
                     .line(0, YbString::Format("The mappingview [%s] does not exist", ids[1]))
                     .done(),
                 otherwise().failsInArrayWords("", Rendering::AsFormat)})
      .run([&](SecondGenerationCall& call) {
        call.line(0, "Successfully removed the association between the lungroup [%s] and mappingview [%s]", ids[0],
                  ids[1]);
      });
}

CXoError ZrManageHuawei::removeHostGroupAssociatedToMappingView(std::string const& hostGroupId,
                                                                std::string const& mappingViewId,
                                                                std::string vstoreId) {
  HuaweiJSONRemoveAssociation request(m_jobId, mappingViewId, hostGroupId,
                                      HuaweiApiValue::OBJECT_TYPE_HOSTGROUP.getValue(), vstoreId);
  const char* ids[] = {hostGroupId.c_str(), mappingViewId.c_str()};
  return secondGeneration("removeHostGroupAssociatedToMappingView",
                          "CXoError ZrManageHuawei::removeHostGroupAssociatedToMappingView(const string&, const "
                          "string&, std::string)")
      .guard("removeHostGroupAssociatedToMappingView")
      .required({&hostGroupId, &mappingViewId})
      .sends(
          request,
          {HUAWEI_REQ_PUT, "mappingview/remove_associate", HuaweiOpType::REMOVE_HOST_GROUP_ASSOCIATED_TO_MAPPING_VIEW},
          SecondGenerationTexts::change(""))
      .reacting({on(HuaweiArrayCode::HOST_GROUP_DOES_NOT_EXIST)
                     .line(0, YbString::Format("The hostgroup [%s] does not exist", ids[0]))
                     .done(),
                 on(HuaweiArrayCode::MAPPING_VIEW_DOES_NOT_EXIST)
                     .line(0, YbString::Format("The mappingview [%s] does not exist", ids[1]))
                     .done(),
                 otherwise().failsInArrayWords("", Rendering::AsFormat)})
      .run([&](SecondGenerationCall& call) {
        call.line(0, "Successfully removed the association between the hostgroup [%s] and mappingview [%s]", ids[0],
                  ids[1]);
      });
}

CXoError ZrManageHuawei::deleteMappingView(std::string const& mappingViewId, std::string vstoreId) {
  HuaweiJSONDeleteRequest request(m_jobId);
  return secondGeneration("deleteMappingView", "CXoError ZrManageHuawei::deleteMappingView(const string&, std::string)")
      .guard("deleteMappingView")
      .required({&mappingViewId})
      // A view that is gone is a failure here.
      .sends(request,
             {HUAWEI_REQ_DELETE, ResourcePath("mappingview").segment(mappingViewId, "mappingViewId").vstore(vstoreId),
              HuaweiOpType::DELETE_MAPPING_VIEW},
             SecondGenerationTexts(
                 YbString::Format("[ERROR] Failed to delete the mappingview with Id [%s]", mappingViewId.c_str()))
                 .emptyResponseSays("[ERROR] Empty response returned from the array"))
      .run([&](SecondGenerationCall& call) {
        call.line(0, "Successfully deleted the mappingview with ID [%s]", mappingViewId.c_str());
      });
}
