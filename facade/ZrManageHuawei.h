// ZrManageHuawei: one job's connection to one Huawei array. Construct it with the job identifier,
// give it credentials, log in (createSession, or let the first self-describing operation do it),
// call operations, and let the destructor log out and remove the session's cookie file.
//
// Operations come in three generations: the first returns bool and tells the reason in the log;
// the second returns CXoError; the third returns HuaweiApi::ResultStatus and opens the session by
// itself. One object serves one caller at a time.
#pragma once

#include <list>
#include <vector>
#include <string>

#include "CXoError.h"
#include "HuaweiApiResultStatus.h"
#include "HuaweiIncludes.h"
#include "HuaweiRestAPI.h"
#include "TkDebug.h"

class HuaweiJSONBaseV2;
class OperationLog;
class FirstGenerationCall;

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

  // Drives any self-describing request: opens the session when needed, sends, tolerates the
  // request's ignorable codes, parses.
  HuaweiApi::ResultStatus ProcessWithServer(std::string const& operationName, HuaweiJSONBaseV2* const& request);

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

  // ---- LUN and LUN snapshot lookup, LUN snapshot lifecycle ----

  // ---- Initiators, hosts and host groups ----

  // ---- LUN groups ----

  // ---- Mapping views ----

  // ---- LUN provisioning ----

  // ---- Clones ----


 private:
  FirstGenerationCall firstGeneration(OperationLog& log);

  HuaweiRestAPI m_restApi;
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
