// CIFS and NFS shares and their permissions. A share names a file system the array holds (by
// FSID, or by the first directory of its path); a permission names a share of its protocol, once
// per client; deleting a share drops its permissions.
//
//   POST CIFSHARE, GET cifshare, DELETE cifshare/<id>
//   POST NFSHARE, GET nfshare, DELETE nfshare/<id>
//   POST CIFS_SHARE_AUTH_CLIENT, GET CIFS_SHARE_AUTH_CLIENT
//   POST NFS_SHARE_AUTH_CLIENT, GET NFS_SHARE_AUTH_CLIENT, DELETE NFS_SHARE_AUTH_CLIENT/<id>
#include <optional>

#include "ArrayCodes.h"
#include "resources/StoreFamilies.h"
#include "store/StoreActions.h"

namespace arraysim {
namespace {

// A file system of another vStore is no file system to a request of this one; one outside every
// vStore serves any.
bool Sees(const VStoreScope& scope, const FileSystemInfo& info) {
  return info.vstoreId.empty() || scope.admits(Record{{"vstoreId", info.vstoreId}});
}

std::optional<std::string> FileSystemNamed(const FileSystemResources& fileSystems, const VStoreScope& scope,
                                           const std::string& name) {
  for (const auto& info : fileSystems.list()) {
    if (info.name == name && Sees(scope, info)) return info.id;
  }
  return std::nullopt;
}

// Ties a new share to a file system the request's vStore sees: the body's FSID when given, else
// the one whose name is the first directory of SHAREPATH. Neither is an unknown object.
RouteHook TiedToFileSystem(const FileSystemResources& fileSystems) {
  return [&fileSystems](RouteContext& c) -> std::optional<Reply> {
    const std::string given = TextMember(c.body, "FSID");
    if (!given.empty()) {
      const auto info = fileSystems.info(given);
      if (info && Sees(c.scope, *info)) return std::nullopt;
      return c.fail({codes::kObjectNotFound, "The file system does not exist."});
    }
    const std::string path = TextMember(c.body, "SHAREPATH");
    const auto named = FileSystemNamed(fileSystems, c.scope, path.substr(1, path.find('/', 1) - 1));
    if (!named) return c.fail({codes::kObjectNotFound, "The file system does not exist."});
    c.body["FSID"] = *named;
    return std::nullopt;
  };
}

// A grant needs a visible share of its protocol, is made once per client and share, and belongs
// to the share's vStore even when the request names none.
RouteHook GrantOn(const char* shareType) {
  return [shareType](RouteContext& c) -> std::optional<Reply> {
    const std::string shareId = TextMember(c.body, "PARENTID");
    const auto share = c.visible(shareType, shareId);
    if (!share) return c.fail({codes::kObjectNotFound, "The share does not exist."});
    for (const auto& other : c.store.list(c.route.type)) {
      if (other.value("PARENTID", "") == shareId && other.value("NAME", "") == TextMember(c.body, "NAME")) {
        return c.fail(c.route.exists);
      }
    }
    const std::string vstore = share->value("vstoreId", "");
    if (vstore.empty() || !c.scope.owner().empty()) return std::nullopt;
    Record record = Record::object();
    for (const auto& item : c.body.items()) {
      if (item.key() != "vstoreId" && item.key() != "ID") record[item.key()] = AsArrayValue(item.value());
    }
    record["vstoreId"] = vstore;
    return Reply::Object(*c.store.get(c.route.type, c.store.insert(c.route.type, std::move(record))));
  };
}

RouteHook DroppingPermissions(const char* permissionType) {
  return [permissionType](RouteContext& c) -> std::optional<Reply> {
    if (!c.visible()) return std::nullopt;  // the deletion answers the absence
    for (const auto& permission : c.store.list(permissionType)) {
      if (permission.value("PARENTID", "") == c.id) c.store.erase(permissionType, permission["ID"].get<std::string>());
    }
    return std::nullopt;
  };
}

}  // namespace

void DeclareShares(ResourceTable& table, const FileSystemResources& fileSystems) {
  using namespace storetype;
  using R = ResourceRoute;
  table.add(R("POST", "CIFSHARE", kCIFSShare, Action::Create)
                .requiring({"NAME", "SHAREPATH"})
                .existsAs(codes::kCIFSShareExists, "The CIFS share already exists.")
                .hooked(TiedToFileSystem(fileSystems)));
  table.add(R("GET", "cifshare", kCIFSShare, Action::List));
  table.add(R("DELETE", "cifshare/{}", kCIFSShare, Action::Delete).hooked(DroppingPermissions(kCIFSPermission)));

  table.add(R("POST", "NFSHARE", kNFSShare, Action::Create)
                .requiring({"SHAREPATH"})
                .uniqueBy("SHAREPATH")
                .existsAs(codes::kNameExists, "The NFS share already exists.")
                .hooked(TiedToFileSystem(fileSystems)));
  table.add(R("GET", "nfshare", kNFSShare, Action::List));
  table.add(R("DELETE", "nfshare/{}", kNFSShare, Action::Delete).hooked(DroppingPermissions(kNFSPermission)));

  table.add(R("POST", kCIFSPermission, kCIFSPermission, Action::Create)
                .requiring({"NAME", "PARENTID", "PERMISSION"})
                .uniqueBy("")
                .existsAs(codes::kCIFSSharePermissionExists, "The permission already exists.")
                .hooked(GrantOn(kCIFSShare)));
  table.add(R("GET", kCIFSPermission, kCIFSPermission, Action::List));

  table.add(R("POST", kNFSPermission, kNFSPermission, Action::Create)
                .requiring({"NAME", "PARENTID", "ACCESSVAL", "SYNC", "ALLSQUASH", "ROOTSQUASH"})
                .uniqueBy("")
                .existsAs(codes::kNFSSharePermissionExists, "The client already has a permission.")
                .hooked(GrantOn(kNFSShare)));
  table.add(R("GET", kNFSPermission, kNFSPermission, Action::List));
  table.add(R("DELETE", std::string(kNFSPermission) + "/{}", kNFSPermission, Action::Delete)
                .absentAs(codes::kNFSSharePermissionNotFound, "The permission does not exist."));
}

}  // namespace arraysim
