// NAS shares: lookup, CIFS and NFS shares, and their permissions. The two protocols look alike
// and differ on purpose in nearly every particular: which refusals are successes, what the
// deletion takes, which bodies carry the vStore.
#include "AdoptionByLookup.h"
#include "CreatedIdentifier.h"
#include "FirstGenerationCall.h"
#include "HandBuiltBody.h"
#include "HuaweiArrayCodes.h"
#include "HuaweiJSONShareRequests.h"
#include "HuaweiOpTypes.h"
#include "HuaweiVstore.h"
#include "OperationLog.h"
#include "RequiredValueContainment.h"
#include "ResourcePath.h"
#include "ZrManageHuawei.h"

using PlainCalls::del;
using PlainCalls::get;
using PlainCalls::post;

namespace {

const char kCIFSProtocol[] = "unc";
const char kNFSProtocol[] = "nfs";
const char kErrorPrefix[] = "[ERROR] ";
const char kCIFSPermissions[] = "CIFS_SHARE_AUTH_CLIENT";
const char kCIFSPermissionExists[] =
    "The permission with Name [%s] Permission [%s] already exists for the CIFS Share with ID [%s]";
const char kCIFSPermissionAdded[] =
    "Successfully added the permission with ID [%s] Name [%s] Permission [%s] to the CIFS Share with ID [%s]";
const char kNFSPermissions[] = "NFS_SHARE_AUTH_CLIENT";

// The lookup's texts carry the error prefix.
FirstGenerationTexts lookupTexts(const std::string& requestFailed) {
  return FirstGenerationTexts(requestFailed)
      .emptyResponseSays(std::string(kErrorPrefix) + kEmptyResponseText)
      .parseFailureSays(kErrorParseFailedText);
}

// Shares of either protocol. An answer with an error object of code 0 and no list is how the array
// says it found nothing.
HuaweiResponse::ReadingRules shareListRules() {
  return {kShareParserLog, HuaweiResponse::WithoutData::Status, {HuaweiResponse::CodeWidth::Unsigned64, 3}};
}

// A share's creation, of either protocol: the answer's identifier goes to the caller's shareId.
RecordRequest<CreatedObjectId> shareCreation(std::string& shareId, const HandBuiltBody& body, const std::string& name,
                                             const std::string& sharePath) {
  const HuaweiResponse::ReadingRules rules{kShareParserLog, HuaweiResponse::WithoutData::Fatal};
  return RecordRequest<CreatedObjectId>(shareId, &CreatedObjectId::id, rules, body.str())
      .requiring({"buildRequest", 3, {&name, &sharePath}});
}

// Where the lookup by name asks: the array filters CIFS shares by name, NFS shares are all
// fetched and searched here. Empty for a protocol of neither kind.
ResourcePath lookupResource(const std::string& protocol, const std::string& shareName, const std::string& vstoreId) {
  if (protocol == kCIFSProtocol) {
    return ResourcePath("cifshare").add("filter", "NAME:" + shareName).vstore(vstoreId);
  }
  if (protocol == kNFSProtocol) return ResourcePath("nfshare").vstore(vstoreId);
  return ResourcePath("");
}

const _HuaweiShareInfo* findShare(const std::list<_HuaweiShareInfo>& shares, std::string _HuaweiShareInfo::*field,
                                  const std::string& value) {
  for (const _HuaweiShareInfo& share : shares) {
    if (share.*field == value) return &share;
  }
  return nullptr;
}

// The NFS argument is a path; when no share has it, the path without a trailing separator is
// tried as a share name.
const _HuaweiShareInfo* findNFSShare(FirstGenerationCall& call, const std::list<_HuaweiShareInfo>& shares,
                                     const std::string& path) {
  if (const _HuaweiShareInfo* byPath = findShare(shares, &_HuaweiShareInfo::sharePath, path)) return byPath;
  std::string name = path;
  if (!name.empty() && (name.back() == '/' || name.back() == '\\')) name.pop_back();
  call.failure("[ERROR] Unable to find the NFS share with share path as [%s]. Retry with the share name [%s]", path,
               name);
  return findShare(shares, &_HuaweiShareInfo::name, name);
}

// The quota tree of a share: the path behind the file system's directory, "/fs1/a/b" giving "a/b".
std::string quotaNameOf(const std::string& sharePath) {
  const std::string::size_type slash = sharePath.find('/', 1);
  if (slash == std::string::npos || slash + 1 == sharePath.size()) return std::string();
  return sharePath.substr(slash + 1);
}

// Takes the share that the lookup by name found, and logs it. The array's name filter narrowed the
// CIFS list already; the exact test here is final. A share that is not there is deliberately a
// success: callers learn that it does not exist by an identifier that stayed empty.
bool takeNamedShare(FirstGenerationCall& call, const std::list<_HuaweiShareInfo>& shares, const std::string& protocol,
                    const std::string& shareName, bool inVstore, _HuaweiShareInfo& info) {
  const _HuaweiShareInfo* share = protocol == kCIFSProtocol ? findShare(shares, &_HuaweiShareInfo::name, shareName)
                                                            : findNFSShare(call, shares, shareName);
  if (share == nullptr) {
    call.failure("[ERROR] Unable to find the share details for the [%s] share [%s]", protocol, shareName);
    return true;
  }
  info = *share;
  if (info.sharePath.empty()) {
    call.failure("[ERROR] Local share path for the share [%s] is not found", shareName);
    return false;
  }
  info.quotaName = quotaNameOf(info.sharePath);
  call.line(0, "Successfully got the share information.");
  call.line(3, "Share ID : [%s]", info.id);
  call.line(3, "Share Name : [%s]", info.name);
  call.line(3, "Share Path : [%s]", info.sharePath);
  call.line(3, "FileSystem ID : [%s]", info.fileSystemId);
  call.line(3, "Quota Name : [%s]", info.quotaName.empty() ? "EMPTY" : info.quotaName.c_str());
  if (inVstore) {
    call.line(3, "VStore ID : [%s]", info.vstoreId);
    call.line(3, "VStore Name : [%s]", info.vstoreName);
  }
  return true;
}

// Only a single share of that file system counts; two are as good as none.
bool takeOnlyShare(FirstGenerationCall& call, const std::list<_HuaweiShareInfo>& shares,
                   const std::string& fileSystemId, _HuaweiShareInfo& info) {
  const bool single = shares.size() == 1 && shares.front().fileSystemId == fileSystemId;
  call.line(0,
            single ? "Successfully retrieved the share details for the NFS share with File System ID [%s]"
                   : "Unable to fetch the share details for the NFS share with File System ID [%s]",
            fileSystemId);
  if (single) info = shares.front();
  return single;
}

// One of the facade's listings of every permission of a protocol in a vStore.
template <typename Permission>
using PermissionListing = bool (ZrManageHuawei::*)(std::list<Permission>& permissions, std::string vstoreId);

// Appends the permissions of one share out of all that `listAll` fetches.
template <typename Permission>
bool permissionsOfShare(ZrManageHuawei& facade, PermissionListing<Permission> listAll, OperationLog& log,
                        const char* emptyShareText, const std::string& shareId, const std::string& vstoreId,
                        std::list<Permission>& permissions) {
  if (shareId.empty()) {
    log.failure("%s", emptyShareText);
    return false;
  }
  std::list<Permission> all;
  if (!(facade.*listAll)(all, vstoreId)) return false;
  bool found = false;
  for (const Permission& permission : all) {
    if (permission.parentId != shareId) continue;
    permissions.push_back(permission);
    found = true;
  }
  // A share without permissions reads as a failure, unlogged.
  if (!found) return false;
  log.line(0, "Successfully got the permissions associated with the share with parentID [%s]. Count [%zu]",
           shareId.c_str(), permissions.size());
  return true;
}

// A CIFS share whose name is in use is taken as the one asked for: its identifier is looked up.
const AdoptionTexts kCIFSShareAdoption{"Unable to get the CIFS share with Name [%s]",
                                       "The CIFS share [%s] already exists and the ID is [%s]"};

}  // namespace

bool ZrManageHuawei::getShareInfoByName(_HuaweiShareInfo& info, std::string const& protocol,
                                        std::string const& shareName, std::string vstoreId) {
  std::list<_HuaweiShareInfo> shares;
  const ResourcePath resource = lookupResource(protocol, shareName, vstoreId);
  return firstGeneration("getShareInfoByName", LogKind::Facade)
      .guardPrefixed(kErrorPrefix)
      .refusing(shareName.empty(), "[ERROR] The share name is empty.")
      .refusing(resource.str().empty(), "[ERROR] Unable to get the resource details.")
      .sends(HuaweiJSONGetShareInfo(shares, shareListRules()), get(resource, HuaweiOpType::GET_SHARE_INFO),
             lookupTexts(formatted("[ERROR] Unable to get the share information for [%s].", shareName)))
      .run([&](FirstGenerationCall& call) {
        return takeNamedShare(call, shares, protocol, shareName, !HuaweiVstore::isNone(vstoreId), info);
      });
}

bool ZrManageHuawei::getShareInfoByFSID(_HuaweiShareInfo& info, std::string const& protocol,
                                        std::string const& fileSystemId, std::string vstoreId) {
  std::list<_HuaweiShareInfo> shares;
  // The vStore follows as a bare "&<id>", without a key; the array has always been asked so.
  const ResourcePath resource =
      ResourcePath("nfshare").add("filter", "FSID:" + fileSystemId).add("range", "[0-1]").bareVstore(vstoreId);
  return firstGeneration("getShareInfoByFSID", LogKind::Facade)
      .guardPrefixed(kErrorPrefix)
      .refusing(protocol != kNFSProtocol, "[ERROR] API is supported only for NFS shares")
      .refusing(fileSystemId.empty(), "[ERROR] The file system ID is empty")
      .sends(HuaweiJSONGetShareInfo(shares, shareListRules()), get(resource, HuaweiOpType::GET_SHARE_INFO),
             lookupTexts(formatted("[ERROR] Unable to find NFS Share with FSID [%s].", fileSystemId)))
      .run([&](FirstGenerationCall& call) { return takeOnlyShare(call, shares, fileSystemId, info); });
}

bool ZrManageHuawei::createCIFSShare(std::string& shareId, std::string const& name, std::string const& sharePath,
                                     std::string const& fileSystemId, std::string vstoreId) {
  HandBuiltBody body;
  body.add("NAME", name).add("SHAREPATH", sharePath).add("FSID", fileSystemId);
  if (!HuaweiVstore::isNone(vstoreId)) body.addPiece("vstoreId", vstoreId);
  AdoptionByLookup<_HuaweiShareInfo> existing(*this, &ZrManageHuawei::getShareInfoByName, kCIFSProtocol, name, vstoreId,
                                              shareId, kCIFSShareAdoption);
  // The guard has always named the grant; operators search the logs for that text. Other refusals
  // fail without a line of their own.
  return firstGeneration("createCIFSShare", LogKind::Facade)
      .guard("addCIFSSharePermission")
      .sends(shareCreation(shareId, body, name, sharePath),
             post("CIFSHARE", HuaweiOpType::CREATE_CIFS_SHARE))
      .reacting({on(HuaweiArrayCode::CIFS_SHARE_ALREADY_EXISTS)
                     .line(0, formatted("The CIFS share with Name [%s] already exists.Get the share details", name))
                     .adopts()})
      .adopting(existing)
      .runTelling("Successfully created CIFS share with Name [%s] Share Path [%s]. ID returned [%s]", name, sharePath,
                  shareId);
}

bool ZrManageHuawei::deleteCIFSShare(std::string const& shareName, std::string vstoreId) {
  FirstGenerationCall call = firstGeneration("deleteCIFSShare", LogKind::Facade);
  if (!call.checked()) return false;
  _HuaweiShareInfo share;
  if (!getShareInfoByName(share, kCIFSProtocol, shareName, vstoreId)) {
    return call.failure("Unable to get CIFS Share information for the share name [%s]", shareName);
  }
  if (share.id.empty()) {
    call.line(3, "The share [%s] does not exist", shareName);
    return true;
  }
  return call
      .sends(
          HuaweiJSONDeleteCIFSShare(kShareParserLog),
          del(ResourcePath("cifshare").segment(share.id, "share ID").vstore(vstoreId), HuaweiOpType::DELETE_CIFS_SHARE),
          "Unable to delete the CIFS share")
      .runTelling("Successfully deleted the CIFS Share[%s] with ID[%s]", shareName, share.id);
}

bool ZrManageHuawei::getCIFSSharePermissions(std::list<_HuaweiCIFSSharePermissionInfo>& permissions,
                                             std::string vstoreId) {
  // No filter: every permission of the array (or vStore) comes, and callers narrow the list.
  return firstGeneration("getCIFSSharePermissions", LogKind::Facade)
      .sends(HuaweiJSONGetCIFSSharePermissionInfo(permissions),
             get(ResourcePath(kCIFSPermissions).vstore(vstoreId), HuaweiOpType::GET_CIFS_SHARE_PERMISSIONS),
             "Unable to get the permissions list for CIFS Share.")
      .runListing(permissions, 3, "Successfully got the permission list. Count[%zu].");
}

bool ZrManageHuawei::getCIFSSharePermissionsFromParentId(std::list<_HuaweiCIFSSharePermissionInfo>& permissions,
                                                         std::string const& shareId, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "getCIFSSharePermissionsFromParentId", m_jobId);
  return permissionsOfShare(*this, &ZrManageHuawei::getCIFSSharePermissions, log, "[ERROR] The shareID is empty",
                            shareId, vstoreId, permissions);
}

bool ZrManageHuawei::addCIFSSharePermission(std::string& permissionId, std::string const& name,
                                            std::string const& shareId, std::string const& domainType,
                                            std::string const& permission, std::string vstoreId) {
  HuaweiJSONAddCIFSSharePermissions request(m_jobId, name, shareId, domainType, permission, vstoreId);
  // Other refusals go on to the parser, which reports the array's code.
  return firstGeneration("addCIFSSharePermission", LogKind::Facade)
      .sends(request, post(kCIFSPermissions, HuaweiOpType::ADD_CIFS_SHARE_PERMISSION))
      .reacting({on(HuaweiArrayCode::CIFS_PERMISSION_ALREADY_EXISTS)
                     .line(0, formatted(kCIFSPermissionExists, name, permission, shareId))
                     .done()})
      .readingRefusals()
      .runTaking(permissionId, request.getPermissionId(), 0, kCIFSPermissionAdded, permissionId, name, permission,
                 shareId);
}

bool ZrManageHuawei::createNFSShare(std::string& shareId, std::string const& fileSystemId, std::string const& name,
                                    std::string const& sharePath, std::string vstoreId) {
  HandBuiltBody body;
  body.add("NAME", name).add("SHAREPATH", sharePath);
  if (!fileSystemId.empty()) body.addPiece("FSID", fileSystemId);
  if (!HuaweiVstore::isNone(vstoreId)) body.addPiece("vstoreId", vstoreId);
  // No code is looked at: a share that exists is a failure like any other.
  return firstGeneration("createNFSShare", LogKind::Facade)
      .sends(shareCreation(shareId, body, name, sharePath),
             post("NFSHARE", HuaweiOpType::CREATE_NFS_SHARE),
             formatted("Unable to create NFS Share [%s] with share path [%s] and file system ID [%s].", name, sharePath,
                       fileSystemId))
      .runTelling("Successfully created NFS share with Name [%s] Share Path [%s]. ID returned [%s]", name, sharePath,
                  shareId);
}

bool ZrManageHuawei::deleteNFSShare(std::string const& shareId, std::string vstoreId) {
  // A share that is gone is a failure.
  return firstGeneration("deleteNFSShare", LogKind::Facade)
      .required(shareId, "ShareID")
      .sends(HuaweiJSONDeleteNFSShare(kShareParserLog),
             del(ResourcePath("nfshare").segment(shareId, "shareId").vstore(vstoreId), HuaweiOpType::DELETE_NFS_SHARE),
             formatted("[ERROR] Unable to delete the NFS share with ID [%s].", shareId))
      .runTelling("Successfully deleted the NFS Share with ID[%s]", shareId);
}

bool ZrManageHuawei::getNFSSharePermissions(std::list<_HuaweiNFSSharePermissionInfo>& permissions,
                                            std::string vstoreId) {
  return firstGeneration("getNFSSharePermissions", LogKind::Facade)
      .sends(HuaweiJSONGetNFSSharePermissionInfo(permissions, {kShareParserLog, HuaweiResponse::WithoutData::Fatal}),
             get(ResourcePath(kNFSPermissions).vstore(vstoreId), HuaweiOpType::GET_NFS_SHARE_PERMISSIONS),
             "Unable to get the permissions list for NFS Share")
      .runListing(permissions, 3, "Successfully got the permission list for NFS Share. Count[%zu].");
}

bool ZrManageHuawei::getNFSSharePermissionsFromParentId(std::list<_HuaweiNFSSharePermissionInfo>& permissions,
                                                        std::string const& shareId, std::string vstoreId) {
  OperationLog log = OperationLog::facade(m_debug, "getNFSSharePermissionsFromParentId", m_jobId);
  return permissionsOfShare(*this, &ZrManageHuawei::getNFSSharePermissions, log, "[ERROR] The NFS shareID is empty",
                            shareId, vstoreId, permissions);
}

bool ZrManageHuawei::addNFSSharePermission(std::string& permissionId, std::string const& name,
                                           std::string const& shareId, std::string const& accessVal,
                                           std::string const& sync, std::string const& allSquash,
                                           std::string const& rootSquash, std::string vstoreId) {
  (void)permissionId;  // the answer carries no identifier that is read; callers list the permissions
  HuaweiJSONAddNFSSharePermissions request(m_jobId, name, shareId, accessVal, sync, allSquash, rootSquash, vstoreId);
  // Every refusal alike, a client that has its permission already included, and told at level 0.
  return firstGeneration("addNFSSharePermission", LogKind::Facade)
      .sends(request, post(kNFSPermissions, HuaweiOpType::ADD_NFS_SHARE_PERMISSION))
      .reacting({otherwise().fails(formatted("Unable to add IP [%s] to the NFS share [%s].", name, shareId), 0)})
      .runTelling("Successfully added the IP [%s] to the NFS Share with ID [%s]", name, shareId);
}

bool ZrManageHuawei::deleteNFSSharePermission(std::string const& permissionId, std::string vstoreId) {
  const std::string failed = formatted("[ERROR] Unable to delete the NFS share permission with ID [%s]", permissionId);
  // Gone already is what a deletion wants; the prefix stands in the text all the same.
  return firstGeneration("deleteNFSSharePermission", LogKind::Event)
      .required(permissionId, "PermissionID")
      .sends(HuaweiJSONDeleteNFSSharePermission(kShareParserLog),
             del(ResourcePath(kNFSPermissions).segment(permissionId, "permissionId").vstore(vstoreId),
                 HuaweiOpType::DELETE_NFS_SHARE_PERMISSION))
      .reacting({on(HuaweiArrayCode::NFS_PERMISSION_DOES_NOT_EXIST)
                     .line(3, failed + " as the permission does not exist")
                     .done(),
                 otherwise().line(kFailureLevel, failed).detailedLine(3, std::string())})
      .runTelling("Successfully deleted the NFS share permission with ID[%s]", permissionId);
}
