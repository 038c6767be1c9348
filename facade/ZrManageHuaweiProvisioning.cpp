// LUN provisioning: create, rename and delete LUNs, find storage pools, and put LUNs into LUN
// groups and take them out.
#include <algorithm>

#include "HuaweiJSONProvisioningRequests.h"
#include "ThirdGenerationCall.h"
#include "ZrManageHuawei.h"

namespace {
const char kLunIdEmpty[] = "The input parameter [lun id] is empty";
const char kLunGroupIdEmpty[] = "The input parameter [lun group id] is empty";
}  // namespace

HuaweiApi::ResultStatus ZrManageHuawei::createLUN(std::string& newLunId, _HuaweiLUNInfo const& lun) {
  ThirdGenerationCall call = thirdGeneration("createLUN", "CreateLUN");
  call.line("Request to create lun with name [%s]", lun.name.c_str());
  HuaweiJSONCreateLUN request(m_jobId, lun);
  const HuaweiApi::ResultStatus status = call.checkAndProcess(
      {{lun.name.empty(), "The input parameter [Name] is empty"},
       {lun.capacity.empty(), "The input parameter [Capacity] is empty"},
       {lun.allocType.isEmpty(), "The input parameter [AllocType] is not set"},
       {lun.parentId.empty(), "The input parameter [Parent Pool id] is not set"},
       {lun.owningController.empty(), "The input parameter [Owning controller] is not set"}},
      request, "API Error [%s] Unable to create lun with name [%s]", lun.name.c_str());
  if (status.IsError()) return status;
  request.getNewLunId(newLunId);
  call.line("Successfully created lun with id [%s]", newLunId.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::getStoragePoolInfoForName(_HuaweiStoragePoolInfo& pool,
                                                                  std::string const& poolName) {
  ThirdGenerationCall call = thirdGeneration("getStoragePoolInfoForName", "GetStoragePoolInfo");
  call.line("Request to get storage pool info for name [%s]", poolName.c_str());
  HuaweiJSONGetStoragePool request(m_jobId, poolName, std::string());
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{poolName.empty(), "The input parameter [Storage pool name] is empty"}}, request,
                           "API Error [%s] Unable to get storage pool info for name [%s]", poolName.c_str());
  if (status.IsError()) return status;
  request.getStoragePoolInfo(pool);
  call.line("Successfully got storage pool info with id [%s]", pool.id.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::modifyLun(_HuaweiLUNInfo const& lun) {
  ThirdGenerationCall call = thirdGeneration("modifyLun", "ModifyLun");
  call.line("Request to modify lun info of ID [%s], name [%s]", lun.id.c_str(), lun.name.c_str());
  HuaweiJSONModifyLun request(m_jobId, lun);
  const HuaweiApi::ResultStatus status = call.checkAndProcess(
      {{lun.id.empty(), kLunIdEmpty}}, request, "API Error [%s] Unable to modify lun info of ID  [%s]", lun.id.c_str());
  if (status.IsError()) return status;
  call.line("Successfully modified lun info [%s]", lun.name.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::getLunAssociatedToLunGroup(std::string const& lunGroupId,
                                                                   std::vector<_HuaweiLUNInfo>& luns) {
  ThirdGenerationCall call = thirdGeneration("getLunAssociatedToLunGroup", "GetLunAssociatedToLunGroup");
  call.line("Request to get lun associated to lun group [%s]", lunGroupId.c_str());
  HuaweiJSONGetLunAssociate request(m_jobId, HuaweiApiValue::OBJECT_TYPE_LUN_GROUP, lunGroupId);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{lunGroupId.empty(), kLunGroupIdEmpty}}, request,
                           "API Error [%s] Unable to get lun associated to lun group  [%s]", lunGroupId.c_str());
  if (status.IsError()) return status;
  request.getAssociatedLunInfo(luns);
  call.line("Successfully got lun associated to lun group of size [%zu]", luns.size());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::isLunAssociatedToLunGroup(std::string const& lunGroupId,
                                                                  std::string const& lunId) {
  ThirdGenerationCall call = thirdGeneration("isLunAssociatedToLunGroup", "");
  call.line("Request to check if lun [%s] is associated with lun group [%s]", lunId.c_str(), lunGroupId.c_str());
  HuaweiApi::ResultStatus status = ThirdGenerationCall::check({{lunId.empty(), kLunIdEmpty}});
  if (status.IsError()) return status;
  std::vector<_HuaweiLUNInfo> luns;
  status = getLunAssociatedToLunGroup(lunGroupId, luns);
  if (status.IsError()) return status;
  const bool member = std::any_of(luns.begin(), luns.end(), [&](const _HuaweiLUNInfo& lun) { return lun.id == lunId; });
  if (!member) {
    return HuaweiApi::ResultStatus(HuaweiApi::RESULT_CLIENT_FAILURE,
                                   YbString::Format("Unable to find required lun id [%s], in the lun group [%s]",
                                                    lunId.c_str(), lunGroupId.c_str()));
  }
  call.log().line(0, "The lun [%s] is associated with lun group [%s]", lunId.c_str(), lunGroupId.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::addLuntoLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                         std::string const& vstoreId) {
  ThirdGenerationCall call = thirdGeneration("addLuntoLunGroup", "AddLuntoLunGroup");
  call.line("Request to add lun [%s] to lun group [%s]", lunId.c_str(), lunGroupId.c_str());
  HuaweiJSONAssociateWithLunGroup request(m_jobId, lunGroupId, HuaweiApiValue::OBJECT_TYPE_LUN, lunId, vstoreId);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{lunId.empty(), kLunIdEmpty}, {lunGroupId.empty(), kLunGroupIdEmpty}}, request,
                           "API Error [%s] Unable to add lun [%s] to lun group [%s]", lunId.c_str(), lunGroupId.c_str());
  if (status.IsError()) return status;
  call.line("Successfully added lun [%s] to lun group [%s]", lunId.c_str(), lunGroupId.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::removeLunFromLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                              std::string const& vstoreId) {
  ThirdGenerationCall call = thirdGeneration("removeLunFromLunGroup", "RemoveLunFromLunGroup");
  call.line("Request to remove lun [%s] from lun group [%s] in vStore [%s] ", lunId.c_str(), lunGroupId.c_str(),
            vstoreId.c_str());
  HuaweiJSONRemoveAssociateWithLunGroup request(m_jobId, lunGroupId, HuaweiApiValue::OBJECT_TYPE_LUN, lunId,
                                                vstoreId);
  const HuaweiApi::ResultStatus status = call.checkAndProcess(
      {{lunId.empty(), kLunIdEmpty}, {lunGroupId.empty(), kLunGroupIdEmpty}}, request,
      "API Error [%s] Unable to remove lun [%s] from lun group [%s] ", lunId.c_str(), lunGroupId.c_str());
  if (status.IsError()) return status;
  call.line("Successfully removed lun [%s] from lun group [%s] ", lunId.c_str(), lunGroupId.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::deleteLun(std::string const& lunId, std::string const& vstoreId) {
  ThirdGenerationCall call = thirdGeneration("deleteLun", "DeleteLun");
  call.line("Request to delete lun with ID [%s] and vstoreid [%s]", lunId.c_str(), vstoreId.c_str());
  HuaweiJSONDeleteLun request(m_jobId, lunId, vstoreId);
  const HuaweiApi::ResultStatus status = call.checkAndProcess(
      {{lunId.empty(), kLunIdEmpty}}, request, "API Error [%s] Unable to delete lun with ID  [%s]", lunId.c_str());
  if (status.IsError()) return status;
  call.line("Successfully deleted lun with id [%s]", lunId.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::getLunGroupsAssociatedToLun(std::vector<_HuaweiLunGroupInfo>& lunGroups,
                                                                    std::string const& lunId,
                                                                    std::string const& vstoreId) {
  ThirdGenerationCall call = thirdGeneration("getLunGroupsAssociatedToLun", "GetLunGroupsAssociatedToLun");
  call.line("Request to get lungroup associated to lun [%s] and vstoreid [%s]", lunId.c_str(), vstoreId.c_str());
  HuaweiJSONGetLunGroupAssociate request(m_jobId, HuaweiApiValue::OBJECT_TYPE_LUN, lunId, vstoreId);
  const HuaweiApi::ResultStatus status = call.checkAndProcess(
      {{lunId.empty(), kLunIdEmpty}}, request, "API Error [%s] Unable to get lungroup associated to lun [%s]",
      lunId.c_str());
  if (status.IsError()) return status;
  request.getAssociatedLunGroupInfo(lunGroups);
  call.line("Successfully got lungroup associated to lun of size [%zd]", lunGroups.size());
  return status;
}
