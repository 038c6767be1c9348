// Clones (the array's split mirrors) and their secondary LUNs: create, read, attach, sync, split,
// remove, delete.
#include "HuaweiJSONCloneRequests.h"
#include "ThirdGenerationCall.h"
#include "ZrManageHuawei.h"

namespace {
const char kSecondaryLunIdEmpty[] = "The input parameter [secondary lun id] is empty";
const char kParentIdEmpty[] = "The input parameter [Clone/Parent ID] is empty";

// Split, sync and remove differ only in their request and their three lines.
struct SecondaryLunLines {
  const char* request;
  const char* failure;
  const char* success;
};

template <typename Request>
HuaweiApi::ResultStatus driveSecondaryLun(ThirdGenerationCall call, unsigned long long jobId,
                                          const SecondaryLunLines& lines, std::string const& secondaryLunId,
                                          std::string const& cloneId) {
  call.line(lines.request, secondaryLunId.c_str(), cloneId.c_str());
  Request request(jobId, secondaryLunId, cloneId);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{secondaryLunId.empty(), kSecondaryLunIdEmpty}, {cloneId.empty(), kParentIdEmpty}},
                           request, lines.failure, secondaryLunId.c_str(), cloneId.c_str());
  if (status.IsError()) return status;
  call.line(lines.success, secondaryLunId.c_str());
  return status;
}
}  // namespace

HuaweiApi::ResultStatus ZrManageHuawei::getCloneInfo(_HuaweiCloneInfo& clone, std::string const& cloneId) {
  ThirdGenerationCall call = thirdGeneration("getCloneInfo", "GetCloneInfo");
  call.line("Request to get clone info for id [%s]", cloneId.c_str());
  HuaweiJSONGetCloneInfo request(m_jobId, cloneId);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{cloneId.empty(), "The input parameter [Clone id] is empty"}}, request,
                           "API Error [%s] Unable to get clone info for id [%s]", cloneId.c_str());
  if (status.IsError()) return status;
  request.getCloneInfo(clone);
  call.line("Successfully got clone info with name [%s]", clone.name.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::getCloneSecondaryLuns(std::list<_HuaweiCloneSecondaryLUN>& secondaryLuns,
                                                              std::string const& cloneId) {
  ThirdGenerationCall call = thirdGeneration("getCloneSecondaryLuns", "GetCloneSecondaryLun");
  call.line("Request to get clone secondary lun info for parent (clone) id [%s]", cloneId.c_str());
  HuaweiJSONGetCloneSecondaryLunInfo request(m_jobId, cloneId);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{cloneId.empty(), "The input parameter [Clone id] is empty"}}, request,
                           "API Error [%s] Unable to get clone secondary lun info for parent id [%s]", cloneId.c_str());
  if (status.IsError()) return status;
  request.getCloneSecLunsInfo(secondaryLuns);
  call.line("Successfully got clone info of size [%zu]", secondaryLuns.size());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::createClone(std::string& newCloneId, _HuaweiCloneInfo const& clone) {
  ThirdGenerationCall call = thirdGeneration("createClone", "CreateClone");
  call.line("Request to create clone with name [%s]", clone.name.c_str());
  HuaweiJSONCreateCloneInfo request(m_jobId, clone);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{clone.name.empty(), "The input parameter [clone name] is empty"},
                            {clone.priLunId.empty(), "The input parameter [clone pri lun id] is empty"}},
                           request, "API Error [%s] Unable to create clone with name [%s]", clone.name.c_str());
  if (status.IsError()) return status;
  request.getNewCloneId(newCloneId);
  call.line("Successfully created clone with id [%s]", newCloneId.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::deleteClone(std::string const& cloneId) {
  ThirdGenerationCall call = thirdGeneration("deleteClone", "DeleteClone");
  call.line("Request to delete clone with ID [%s]", cloneId.c_str());
  HuaweiJSONDeleteClone request(m_jobId, cloneId);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{cloneId.empty(), "The input parameter [clone id] is empty"}}, request,
                           "API Error [%s] Unable to delete clone with ID  [%s]", cloneId.c_str());
  if (status.IsError()) return status;
  call.line("Successfully deleted clone with id [%s]", cloneId.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::addCloneSecondaryLun(_HuaweiCloneSecondaryLUN const& secondaryLun,
                                                             HuaweiApi::FirstSyncValue const& firstSync) {
  ThirdGenerationCall call = thirdGeneration("addCloneSecondaryLun", "AddCloneSecondaryLun");
  call.line("Request to add clone secondary lun ID [%s], parent ID [%s]", secondaryLun.id.c_str(),
            secondaryLun.parentId.c_str());
  HuaweiJSONAddCloneSecondaryLun request(m_jobId, secondaryLun, firstSync);
  const HuaweiApi::ResultStatus status =
      call.checkAndProcess({{secondaryLun.id.empty(), "The input parameter [ID] is empty"},
                            {secondaryLun.parentId.empty(), "The input parameter [parent ID] is empty"},
                            {secondaryLun.speed.isEmpty(), "The input parameter [speed] is empty"},
                            {secondaryLun.resumePolicy.isEmpty(), "The input parameter [resume policy] is empty"},
                            {firstSync.isEmpty(), "The input parameter [First sync] is empty"}},
                           request, "API Error [%s] Unable to add clone secondary lun ID [%s], parent ID [%s]",
                           secondaryLun.id.c_str(), secondaryLun.parentId.c_str());
  if (status.IsError()) return status;
  call.line("Successfully added clone secondary lun ID [%s]", secondaryLun.id.c_str());
  return status;
}

HuaweiApi::ResultStatus ZrManageHuawei::splitCloneSecondaryLun(std::string secondaryLunId, std::string const& cloneId) {
  return driveSecondaryLun<HuaweiJSONSplitCloneSecondaryLun>(thirdGeneration("splitCloneSecondaryLun",
                                                                             "SplitCloneSecondaryLun"),
                                                             m_jobId,
      {"Request to split clone secondary lun with ID [%s], clone/parent with ID [%s]",
       "API Error [%s] Unable to split clone secondary lun with ID [%s], clone/parent with ID [%s]",
       "Successfully split clone secondary lun ID [%s]"},
      secondaryLunId, cloneId);
}

HuaweiApi::ResultStatus ZrManageHuawei::syncCloneSecondaryLun(std::string secondaryLunId, std::string const& cloneId) {
  return driveSecondaryLun<HuaweiJSONSyncCloneSecondaryLun>(thirdGeneration("syncCloneSecondaryLun",
                                                                            "SyncCloneSecondaryLun"),
                                                            m_jobId,
      {"Request to sync clone secondary lun with ID [%s], clone/parent with ID [%s]",
       "API Error [%s] Unable to sync clone secondary lun with ID [%s], clone/parent with ID [%s]",
       "Successfully synced clone secondary lun ID [%s]"},
      secondaryLunId, cloneId);
}

HuaweiApi::ResultStatus ZrManageHuawei::removeCloneSecondaryLun(std::string secondaryLunId,
                                                                std::string const& cloneId) {
  return driveSecondaryLun<HuaweiJSONRemoveCloneSecondaryLun>(thirdGeneration("removeCloneSecondaryLun",
                                                                              "RemoveCloneSecondaryLun"),
                                                              m_jobId,
      {"Request to remove clone secondary lun with ID [%s], clone/parent with ID [%s]",
       "API Error [%s] Unable to remove clone secondary lun with ID [%s], clone/parent with ID [%s]",
       "Successfully removed clone secondary lun ID [%s]"},
      secondaryLunId, cloneId);
}

