// ZrManageHuawei: one job's connection to one Huawei array. Construct it with the job identifier,
// give it credentials, log in (createSession, or let the first self-describing operation do it),
// call operations, and let the destructor log out and remove the session's cookie file.
//
// Operations come in three generations: the first returns bool and tells the reason in the log;
// the second returns CXoError; the third returns HuaweiApi::ResultStatus and opens the session by
// itself. One object serves one caller at a time.
#pragma once

#include <list>
#include <memory>
#include <vector>
#include <string>

#include "CXoError.h"
#include "HuaweiApiResultStatus.h"
#include "HuaweiIncludes.h"
#include "TkDebug.h"

class HuaweiJSONBaseV2;
class HuaweiRestAPI;
enum class LogKind;
class FirstGenerationCall;
class SecondGenerationCall;
class ThirdGenerationCall;

class ZrManageHuawei {
 public:
  explicit ZrManageHuawei(unsigned long long const& jobId);
  // Closes the session and removes the cookie file of the last session.
  ~ZrManageHuawei();
  ZrManageHuawei(const ZrManageHuawei&) = delete;
  ZrManageHuawei& operator=(const ZrManageHuawei&) = delete;

  // ---- Session ----
  // Stores the credentials; an open session is not touched.
  void setCredentials(std::string const& userName, std::string const& password, std::string const& controlHost);
  bool createSession();
  bool createSession(std::string const& userName, std::string const& password, std::string const& controlHost);
  bool setTokenInfo();
  bool closeSession();
  // Code and text that the last login request returned.
  void GetErrorInfo(unsigned long long& code, std::string& text);

  // ---- Array identity ----
  bool getSystemInformation(_HuaweiSystemInformation& info);
  bool getNDMPServiceSettings(_HuaweiNDMPServiceSettings& settings, std::string vstoreId);
  bool getVStoreNameFromId(std::string const& vstoreId, std::string& vstoreName);
  // The vStore of the login, "-12345" when there was none.
  std::string getvStoreId();

  // ---- File systems and interfaces ----
  bool getFileSystemsList(std::list<_HuaweiFileSystemsInfo>& fileSystems, std::string vstoreId);
  bool getArrayInterfaces(std::list<_HuaweiArrayInterfaces>& interfaces);
  bool getFileSystemId(std::string const& name, std::string& id);
  bool getFileSystemInfoById(std::string const& id, _HuaweiFileSystemsInfo& info, std::string vstoreId);

  // ---- File-system snapshots ----
  // `snapshot` carries the name in and the array's identifier out (changed only on success).
  bool createFileSystemSnapshot(unsigned long long const& fileSystemId, std::string& snapshot, bool enableSnapDiff,
                                std::string vstoreId);
  bool deleteFileSystemSnapshot(std::string const& snapshotId, std::string vstoreId);
  bool getFileSystemSnapshotInfo(std::string const& snapshotId, _HuaweiSnapshotInfo& info, std::string vstoreId);
  bool isSnapshotPresent(std::string const& snapshotId, std::string vstoreId);

  // ---- Snapshot change lists ----
  // The session identifier, empty on any failure. parentType is accepted and ignored (always 40).
  std::string createSnapshotChangeListSession(std::string const& parentId, std::string const& baseSnapshotId,
                                              std::string const& incrementalSnapshotId, int const& parentType);
  // Fetches one page at the cursor held in `info`, opening the session on the first call. The walk
  // is over when a call answers true with no changes at progress "100" (the session is then
  // deleted); it broke when a call answers false (sessionFailed is 1 once a session existed).
  bool getSnapshotChangeList(std::string const& parentId, std::string const& baseSnapshotId,
                             std::string const& incrementalSnapshotId, _HuaweiSnapshotChangeListInfo& info);
  bool deleteSnapshotChangeListSession(std::string const& sessionId);

  // ---- Share lookup, CIFS and NFS shares ----
  // protocol "unc" looks a CIFS share up by name, "nfs" an NFS share by path, then by name. A share
  // that is not there is a success that leaves `info` as it was.
  bool getShareInfoByName(_HuaweiShareInfo& info, std::string const& protocol, std::string const& shareName,
                          std::string vstoreId);
  // NFS only ("nfs"); a share that is not there is a failure.
  bool getShareInfoByFSID(_HuaweiShareInfo& info, std::string const& protocol, std::string const& fileSystemId,
                          std::string vstoreId);

  // A share that exists already answers with its identifier.
  bool createCIFSShare(std::string& shareId, std::string const& name, std::string const& sharePath,
                       std::string const& fileSystemId, std::string vstoreId);
  // By name; a share that is not there counts as deleted.
  bool deleteCIFSShare(std::string const& shareName, std::string vstoreId);
  bool getCIFSSharePermissions(std::list<_HuaweiCIFSSharePermissionInfo>& permissions, std::string vstoreId);
  // Appends the share's permissions to `permissions`; false when the share has none.
  bool getCIFSSharePermissionsFromParentId(std::list<_HuaweiCIFSSharePermissionInfo>& permissions,
                                           std::string const& shareId, std::string vstoreId);
  // A grant that exists already is a success that leaves `permissionId` as it was.
  bool addCIFSSharePermission(std::string& permissionId, std::string const& name, std::string const& shareId,
                              std::string const& domainType, std::string const& permission, std::string vstoreId);

  // Unlike CIFS: an existing share is a failure, and the deletion takes the identifier.
  bool createNFSShare(std::string& shareId, std::string const& fileSystemId, std::string const& name,
                      std::string const& sharePath, std::string vstoreId);
  bool deleteNFSShare(std::string const& shareId, std::string vstoreId);
  bool getNFSSharePermissions(std::list<_HuaweiNFSSharePermissionInfo>& permissions, std::string vstoreId);
  bool getNFSSharePermissionsFromParentId(std::list<_HuaweiNFSSharePermissionInfo>& permissions,
                                          std::string const& shareId, std::string vstoreId);
  // An existing grant is a failure; `permissionId` is never written (list the permissions for it).
  bool addNFSSharePermission(std::string& permissionId, std::string const& name, std::string const& shareId,
                             std::string const& accessVal, std::string const& sync, std::string const& allSquash,
                             std::string const& rootSquash, std::string vstoreId);
  // A permission that is not there counts as deleted.
  bool deleteNFSSharePermission(std::string const& permissionId, std::string vstoreId);

  // ---- LUN and LUN snapshot lookup, LUN snapshot lifecycle ----
  CXoError getLUNInfo(_HuaweiLUNInfo& lunInfo, std::string const& lunId, std::string vstoreId);
  // notExist is set (only) when the array says the snapshot is absent; the result is an error then.
  CXoError getLUNSnapshotInfo(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotId, bool& notExist,
                              std::string vstoreId);
  // The first snapshot whose name is exactly snapshotName. notExist is neither read nor written.
  CXoError getLUNSnapshotInfoByName(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotName,
                                    bool& notExist, std::string vstoreId);
  CXoError createLUNSnapshot(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& lunId,
                             std::string const& snapshotName, std::string vstoreId);
  // One request for all: the array refuses the lot if any snapshot is not inactive.
  CXoError activateLUNSnapshot(std::vector<std::string> const& snapshotIds, std::string vstoreId);
  // An absent snapshot counts as stopped: success, with notExist set.
  CXoError deActivateLUNSnapshot(std::string const& snapshotId, bool& notExist, std::string vstoreId);
  // An absent snapshot counts as deleted.
  CXoError deleteLUNSnapshot(std::string const& snapshotId, std::string vstoreId);
  // rollbackSpeed goes to the array as given.
  CXoError revertLUNSnapshot(std::string const& snapshotId, std::string const& rollbackSpeed, std::string vstoreId);
  CXoError createLUNSnapshotCopy(_HuaweiLUNSnapshotInfo& snapshotInfo, std::string const& snapshotId,
                                 std::string const& copyName, std::string vstoreId);

  // ---- Initiators, hosts and host groups ----
  // isISCSI selects the kind: iSCSI when true, Fibre Channel otherwise. After these lookups an
  // initiator's `name` holds the name of its host.
  CXoError getInitiatorInfoFromID(_HuaweiInitiator& initiatorInfo, std::string const& initiatorId,
                                  bool const& isISCSI, std::string vstoreId);
  // An empty list is an error; `initiators` is replaced all the same.
  CXoError getInitiatorInfo(std::vector<_HuaweiInitiator>& initiators, bool const& isISCSI, std::string vstoreId);
  // Success with an empty hostId for an initiator bound to no host.
  CXoError getHostIDFromInitiatorID(std::string const& initiatorId, bool const& isISCSI, std::string& hostId,
                                    std::string vstoreId);
  CXoError getHostIDFromHostName(std::string const& hostName, std::string& hostId, std::string vstoreId);
  // A host of that name already there is taken as created; its operating system is not compared.
  CXoError createHost(_HuaweiLUNHostInfo& hostInfo, std::string const& hostName, std::string vstoreId,
                      bool useOsCode7);
  // hostId may be empty for a free initiator. An existing initiator is an error that also sets
  // alreadyExists (never cleared): re-bind it with updateInitiatorWithHostID if need be.
  CXoError createInitiator(_HuaweiInitiator& initiatorInfo, std::string const& initiatorId, std::string const& hostId,
                           bool const& isISCSI, bool& alreadyExists, std::string vstoreId);
  CXoError updateInitiatorWithHostID(std::string const& initiatorId, std::string const& hostId, bool const& isISCSI,
                                     std::string vstoreId);
  CXoError getHostGroupIDFromName(std::string const& hostGroupName, std::string& hostGroupId, std::string vstoreId);
  // A group of that name already there is taken as created.
  CXoError createHostGroup(_HuaweiHostGroupInfo& hostGroupInfo, std::string const& hostGroupName,
                           std::string vstoreId);
  // Note the order: the group first. A host already in the group is success.
  CXoError addHostToHostGroup(std::string const& hostGroupId, std::string const& hostId, std::string vstoreId);
  // An empty group is success with `hosts` empty.
  CXoError getHostAssociatedToHostGroup(std::string const& hostGroupId, std::vector<_HuaweiLUNHostInfo>& hosts,
                                        std::string vstoreId);
  // Success means the host is in the group; an empty group is an error.
  CXoError isHostAssociatedToHostGroup(std::string const& hostGroupId, std::string const& hostId,
                                       std::string vstoreId);

  // ---- LUN groups ----
  // The first group whose name is exactly lunGroupName; the array's filter matches parts of names.
  CXoError getLUNGroupIDFromName(std::string const& lunGroupName, std::string& lunGroupId, std::string vstoreId);
  // Creates the group, or adopts the group of that name that exists already.
  CXoError createLUNGroup(_HuaweiLunGroupInfo& lunGroup, std::string const& lunGroupName, std::string vstoreId,
                          std::string appType);
  // Succeeds when the snapshot LUN is in the group already.
  CXoError addSnapshotLuntoLunGroup(std::string const& lunGroupId, std::string const& lunId, std::string vstoreId);
  // Fails, rather than answering no, when the snapshot LUN is not in the group or the group is empty.
  CXoError isSnapshotLunAssociatedToLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                             std::string vstoreId);
  // An empty group is a success with an empty list.
  CXoError getSnapshotLunAssociatedToLunGroup(std::string const& lunGroupId,
                                              std::vector<_HuaweiLUNSnapshotInfo>& snapshotLuns, std::string vstoreId);
  CXoError removeSnapshotLunFromLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                         std::string vstoreId);
  CXoError deleteLunGroup(std::string const& lunGroupId, std::string vstoreId);

  // ---- Mapping views ----
  // The attached group comes first and the view second in the add and remove operations. Adding
  // what is attached, and removing from a view or group that is gone, succeed.
  CXoError getMappingViewInfoByName(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewName,
                                    std::string vstoreId);
  CXoError getMappingViewInfoByID(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewId,
                                  std::string vstoreId);
  // Creates the view, or adopts the view of that name that exists already.
  CXoError createMappingView(_HuaweiLUNMappingView& mappingView, std::string const& mappingViewName,
                             std::string vstoreId);
  CXoError addHostGroupToMappingView(std::string const& hostGroupId, std::string const& mappingViewId,
                                     std::string vstoreId);
  CXoError addLunGroupToMappingView(std::string const& lunGroupId, std::string const& mappingViewId,
                                    std::string vstoreId);
  CXoError getLunGroupAssociatedToMappingView(std::string const& mappingViewId,
                                              std::vector<_HuaweiLunGroupInfo>& lunGroups, std::string vstoreId);
  CXoError getHostGroupAssociatedToMappingView(std::string const& mappingViewId,
                                               std::vector<_HuaweiHostGroupInfo>& hostGroups, std::string vstoreId);
  CXoError removeLunGroupAssociatedToMappingView(std::string const& lunGroupId, std::string const& mappingViewId,
                                                 std::string vstoreId);
  CXoError removeHostGroupAssociatedToMappingView(std::string const& hostGroupId, std::string const& mappingViewId,
                                                  std::string vstoreId);
  CXoError deleteMappingView(std::string const& mappingViewId, std::string vstoreId);
  CXoError getMappingViewAssociatedToLunGroup(std::string const& lunGroupId,
                                              std::vector<_HuaweiLUNMappingView>& mappingViews, std::string vstoreId);

  // ---- LUN provisioning ----
  // The capacity, allocation type, pool and owning controller go to the array as the record holds
  // them; the record's vStore is not sent.
  HuaweiApi::ResultStatus createLUN(std::string& newLunId, _HuaweiLUNInfo const& lun);
  // The pool whose name is exactly poolName (the first, when several are).
  HuaweiApi::ResultStatus getStoragePoolInfoForName(_HuaweiStoragePoolInfo& pool, std::string const& poolName);
  // Renames the LUN lun.id to lun.name; no other field is sent.
  HuaweiApi::ResultStatus modifyLun(_HuaweiLUNInfo const& lun);
  HuaweiApi::ResultStatus getLunAssociatedToLunGroup(std::string const& lunGroupId, std::vector<_HuaweiLUNInfo>& luns);
  // Success when the LUN is in the group; code 2 when it is not.
  HuaweiApi::ResultStatus isLunAssociatedToLunGroup(std::string const& lunGroupId, std::string const& lunId);
  // A LUN already in the group counts as added.
  HuaweiApi::ResultStatus addLuntoLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                           std::string const& vstoreId);
  HuaweiApi::ResultStatus removeLunFromLunGroup(std::string const& lunGroupId, std::string const& lunId,
                                                std::string const& vstoreId);
  HuaweiApi::ResultStatus deleteLun(std::string const& lunId, std::string const& vstoreId);
  HuaweiApi::ResultStatus getLunGroupsAssociatedToLun(std::vector<_HuaweiLunGroupInfo>& lunGroups,
                                                      std::string const& lunId, std::string const& vstoreId);

  // ---- Clones ----
  // Clones are the array's split mirrors: a primary LUN copied to secondary LUNs, which are
  // synchronised and split off. The array reports the progress of each pair through
  // getCloneSecondaryLuns; nothing here waits for it.
  HuaweiApi::ResultStatus getCloneInfo(_HuaweiCloneInfo& clone, std::string const& cloneId);
  // Replaces the list with the clone's secondary LUNs.
  HuaweiApi::ResultStatus getCloneSecondaryLuns(std::list<_HuaweiCloneSecondaryLUN>& secondaryLuns,
                                                std::string const& cloneId);
  // Sends clone.name and clone.priLunId.
  HuaweiApi::ResultStatus createClone(std::string& newCloneId, _HuaweiCloneInfo const& clone);
  HuaweiApi::ResultStatus deleteClone(std::string const& cloneId);
  // Attaches secondaryLun.id to the clone secondaryLun.parentId with its speed and resume policy;
  // firstSync tells whether the array starts copying at once.
  HuaweiApi::ResultStatus addCloneSecondaryLun(_HuaweiCloneSecondaryLUN const& secondaryLun,
                                               HuaweiApi::FirstSyncValue const& firstSync);
  HuaweiApi::ResultStatus splitCloneSecondaryLun(std::string secondaryLunId, std::string const& cloneId);
  HuaweiApi::ResultStatus syncCloneSecondaryLun(std::string secondaryLunId, std::string const& cloneId);
  HuaweiApi::ResultStatus removeCloneSecondaryLun(std::string secondaryLunId, std::string const& cloneId);


 private:
  // The request classes are the library's own: their one way in is SelfDescribingDriver.
  friend struct SelfDescribingDriver;
  // Drives any self-describing request: opens the session when needed, sends, tolerates the
  // request's ignorable codes, parses.
  HuaweiApi::ResultStatus ProcessWithServer(std::string const& operationName, HuaweiJSONBaseV2* const& request);

  // Lines are tagged with logName and go through the log that `kind` names.
  FirstGenerationCall firstGeneration(const char* logName, LogKind kind);
  // signature: the operation's signature as its errors are located; the lines are tagged with the
  // operation's name in it, or with the name and the class before it for the qualified families.
  SecondGenerationCall secondGeneration(const char* signature);
  SecondGenerationCall qualifiedSecondGeneration(const char* signature);
  ThirdGenerationCall thirdGeneration(const char* logName, const char* operationName);

  // Behind a pointer, so that the transport's header stays inside the library.
  std::unique_ptr<HuaweiRestAPI> m_restApi;
  unsigned long long m_jobId;
  bool m_initialized;
  std::string m_vstoreId;
  std::string m_cookieFile;
  TkDebug m_debug;
  std::string m_userName;
  std::string m_password;
  std::string m_controlHost;
  HuaweiApi::ResultStatus m_lastResult;
};
