// share: CIFS and NFS shares and the grants on them.
#include "Command.h"

namespace zrarray {

std::vector<Command> ShareCommands() {
  const Argument shareId = text("share-id", "Share identifier");
  const Argument fileSystemId = text("file-system-id", "File system of the share");
  const Argument path = text("path", "Share path, as /<file system>[/<directory>]");
  return {
      {"share", "find", "A share by name (CIFS) or by path, then name (NFS); an empty record when absent",
       {oneOf("protocol", "Kind of share", {{"cifs", "unc"}, {"nfs", "nfs"}}), text("name", "Share name or path")},
       record<_HuaweiShareInfo>([](Call& c, auto& out) {
         return c.array.getShareInfoByName(out, c["protocol"], c["name"], c.vstore);
       })},
      {"share", "nfs-of-fs", "The NFS share of a file system", {fileSystemId},
       lookup("NFS share of file system", "file-system-id", record<_HuaweiShareInfo>([](Call& c, auto& out) {
                return c.array.getShareInfoByFSID(out, "nfs", c["file-system-id"], c.vstore);
              }))},

      {"share", "cifs-create", "Create a CIFS share (an existing one answers with its identifier)",
       {text("name", "Share name"), path, fileSystemId},
       value("id", [](Call& c, auto& out) {
         return c.array.createCIFSShare(out, c["name"], c["path"], c["file-system-id"], c.vstore);
       })},
      {"share", "cifs-delete", "Delete a CIFS share by name (one already gone counts as deleted)",
       {text("name", "Share name")}, action([](Call& c) { return c.array.deleteCIFSShare(c["name"], c.vstore); })},
      {"share", "cifs-permissions", "Every CIFS grant of the vStore", {},
       listOf<_HuaweiCIFSSharePermissionInfo>(
           [](Call& c, auto& out) { return c.array.getCIFSSharePermissions(out, c.vstore); })},
      {"share", "cifs-share-permissions", "The grants of one CIFS share (none is a failure)", {shareId},
       listOf<_HuaweiCIFSSharePermissionInfo>([](Call& c, auto& out) {
         return c.array.getCIFSSharePermissionsFromParentId(out, c["share-id"], c.vstore);
       })},
      {"share", "cifs-grant", "Grant a user or group access to a CIFS share (an existing grant: empty id)",
       {shareId, text("name", "User or group, such as DOMAIN\\user"),
        text("domain-type", "The array's domain type value"),
        wordOrCode("permission", "What the grant allows", CifsPermissionWords())},
       value("id", [](Call& c, auto& out) {
         return c.array.addCIFSSharePermission(out, c["name"], c["share-id"], c["domain-type"], c["permission"],
                                               c.vstore);
       })},

      {"share", "nfs-create", "Create an NFS share (an existing one is a failure)",
       {fileSystemId, text("name", "Share name"), path},
       value("id", [](Call& c, auto& out) {
         return c.array.createNFSShare(out, c["file-system-id"], c["name"], c["path"], c.vstore);
       })},
      {"share", "nfs-delete", "Delete an NFS share", {shareId},
       action([](Call& c) { return c.array.deleteNFSShare(c["share-id"], c.vstore); })},
      {"share", "nfs-permissions", "Every NFS client grant of the vStore", {},
       listOf<_HuaweiNFSSharePermissionInfo>(
           [](Call& c, auto& out) { return c.array.getNFSSharePermissions(out, c.vstore); })},
      {"share", "nfs-share-permissions", "The client grants of one NFS share", {shareId},
       listOf<_HuaweiNFSSharePermissionInfo>([](Call& c, auto& out) {
         return c.array.getNFSSharePermissionsFromParentId(out, c["share-id"], c.vstore);
       })},
      {"share", "nfs-grant", "Grant a client access to an NFS share (list the grants for its identifier)",
       {shareId, text("client", "Address or host name of the client"),
        wordOrCode("access", "What the client may do", NfsAccessWords()),
        wordOrCode("sync", "How the client's writes are committed", NfsSyncWords()),
        wordOrCode("all-squash", "Whether every user is mapped to the anonymous one", SquashWords("all-squash")),
        wordOrCode("root-squash", "Whether root is mapped to the anonymous user", SquashWords("root-squash"))},
       action([](Call& c) {
         std::string unwritten;
         return c.array.addNFSSharePermission(unwritten, c["client"], c["share-id"], c["access"], c["sync"],
                                              c["all-squash"], c["root-squash"], c.vstore);
       })},
      {"share", "nfs-revoke", "Delete an NFS client grant (one already gone counts as deleted)",
       {text("permission-id", "Grant identifier")},
       action([](Call& c) { return c.array.deleteNFSSharePermission(c["permission-id"], c.vstore); })},
  };
}

}  // namespace zrarray
