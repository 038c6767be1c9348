// Read-only facts of the array: identity, NDMP settings, vStores, file systems and interfaces.
#include "FirstGenerationCall.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "RecordRequests.h"
#include "RequiredValueContainment.h"
#include "ResourcePath.h"
#include "ZrManageHuawei.h"

using HuaweiResponse::plainRules;
using PlainCalls::get;

namespace {

// Marks the interface that carries the address of the NDMP service, when the service could be
// placed and is enabled; else tells why none is.
void markNDMPInterface(FirstGenerationCall& call, std::list<_HuaweiArrayInterfaces>& interfaces, bool placed,
                       const _HuaweiNDMPServiceSettings& settings) {
  if (!placed || settings.ip.empty() || !settings.isEnabled) {
    call.failure(
        "Unable to get the NDMP Service settings either because NDMP is not configured or configured but disabled.");
    return;
  }
  for (_HuaweiArrayInterfaces& candidate : interfaces) {
    if (candidate.ipv4Address == settings.ip || candidate.ipv6Address == settings.ip) {
      call.line(0, "NDMP Monitoring IP is set [%s].", settings.ip);
      candidate.ndmpMonitoringIp = true;
      return;
    }
  }
}

}  // namespace

bool ZrManageHuawei::getSystemInformation(_HuaweiSystemInformation& info) {
  return firstGeneration("ZrManageHuawei::getSystemInformation", LogKind::Event)
      .sends(RecordRequest(info, plainRules("HuaweiJSONGetSystemInformation::parseResponse")),
             get("system/", HuaweiOpType::GET_SYSTEM_INFORMATION), "Unable to get the system information.")
      .runTelling("Successfully got the system information for [%s].", info.name);
}

bool ZrManageHuawei::getNDMPServiceSettings(_HuaweiNDMPServiceSettings& settings, std::string vstoreId) {
  // The vStore goes into the path here, not into a query.
  const ResourcePath resource = HuaweiVstore::isNone(vstoreId)
                                    ? ResourcePath("ndmpservice")
                                    : ResourcePath("ndmpservice").segment(vstoreId, "vstoreId");
  return firstGeneration("getNDMPServiceSettings", LogKind::FacadeErrors)
      .sends(RecordRequest(settings, plainRules("HuaweiJSONGetNDMPSettingsInfo::parseResponse")),
             get(resource, HuaweiOpType::GET_NDMP_SERVICE_SETTINGS),
             FirstGenerationTexts("Unable to get the NDMP Service settings.").emptyResponseSays(kParseFailedText))
      .runTelling("Successfully got the NDMP Settings information.");
}

bool ZrManageHuawei::getVStoreNameFromId(std::string const& vstoreId, std::string& vstoreName) {
  _HuaweiVStoreInfo info;
  return firstGeneration("getVStoreNameFromId", LogKind::FacadeErrors)
      .guard("getVStoreName")
      .required(vstoreId, "VStoreID")
      .sends(RecordRequest(info, plainRules("HuaweiJSONGetVStoreInfo::parseResponse")),
             get(ResourcePath("vstore").segment(vstoreId, "VStoreID"), HuaweiOpType::GET_VSTORE_NAME_FROM_ID),
             FirstGenerationTexts(formatted("Unable to get the VStoreName from VStoreId [%s]", vstoreId))
                 .emptyResponseSays(kParseFailedText))
      .runTaking(vstoreName, info.name, 0, "Successfully got the VStoreName [%s] from VStoreId [%s]", vstoreName,
                 vstoreId);
}

bool ZrManageHuawei::getFileSystemsList(std::list<_HuaweiFileSystemsInfo>& fileSystems, std::string vstoreId) {
  // No paging: one GET returns every file system.
  return firstGeneration("ZrManageHuawei::getFileSystemsList", LogKind::Event)
      .sends(RecordListRequest(fileSystems, plainRules("HuaweiJSONGetFileSystems::parseResponse")),
             get(ResourcePath("filesystem").vstore(vstoreId), HuaweiOpType::GET_FILE_SYSTEMS_LIST),
             "Unable to get the file systems list.")
      .runListing(fileSystems, 0, "Successfully got the File Systems. Count[%zd].");
}

bool ZrManageHuawei::getArrayInterfaces(std::list<_HuaweiArrayInterfaces>& interfaces) {
  // Held to the end: the NDMP lookup below belongs to this operation.
  FirstGenerationCall call = firstGeneration("ZrManageHuawei::getArrayInterfaces", LogKind::Event);
  // Read aside: an NDMP answer without a required value fails the whole operation.
  std::list<_HuaweiArrayInterfaces> found;
  if (!call.sends(RecordListRequest(found, plainRules("HuaweiJSONGetArrayInterfaces::parseResponse")),
                  get("lif", HuaweiOpType::GET_ARRAY_INTERFACES), "Unable to get the array interfaces list.")
           .runListing(found, 0, "Successfully got the Array Interfaces. Count[%zd].")) {
    return RequiredValueContainment::failEmptying(interfaces);
  }
  // The list stands even when the NDMP service cannot be placed.
  _HuaweiNDMPServiceSettings settings;
  const bool placed = getNDMPServiceSettings(settings, HuaweiVstore::kNone);
  if (RequiredValueContainment::failed()) return false;
  interfaces.swap(found);
  markNDMPInterface(call, interfaces, placed, settings);
  return true;
}

bool ZrManageHuawei::getFileSystemId(std::string const& name, std::string& id) {
  OperationLog log = OperationLog::event("ZrManageHuawei::getFileSystemId", m_jobId);
  std::list<_HuaweiFileSystemsInfo> fileSystems;
  if (!getFileSystemsList(fileSystems, HuaweiVstore::kNone)) return false;  // the list said what failed
  // The whole list is walked: of two file systems named alike, the later one wins.
  bool found = false;
  for (const _HuaweiFileSystemsInfo& fileSystem : fileSystems) {
    if (fileSystem.name == name) {
      id = fileSystem.id;
      found = true;
    }
  }
  if (found) log.line(3, "File System [%s] found. FS Id [%s]", name.c_str(), id.c_str());
  return found;
}

bool ZrManageHuawei::getFileSystemInfoById(std::string const& id, _HuaweiFileSystemsInfo& info, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "getFileSystemInfoById", m_jobId);
  std::list<_HuaweiFileSystemsInfo> fileSystems;
  if (!getFileSystemsList(fileSystems, vstoreId)) {
    log.line(3, "Unable to get the file systems list.");
    return false;
  }
  for (const _HuaweiFileSystemsInfo& fileSystem : fileSystems) {
    if (fileSystem.id == id) {
      info = fileSystem;
      log.line(0, "Found file system [%s] with Id [%s].", info.name.c_str(), info.id.c_str());
      return true;
    }
  }
  return false;
}
