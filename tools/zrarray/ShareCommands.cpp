// share: CIFS and NFS shares and the grants on them.
#include "Calls.h"

namespace zrarray {

std::vector<Command> ShareCommands() {
  const Argument shareId = text("share-id", "Share identifier");
  const Argument fileSystemId = text("file-system-id", "File system of the share");
  const Argument path = text("path", "Share path, as /<file system>[/<directory>]");
  const Argument shareName = text("name", "Share name");
  return {
      {"share", "find", "A share by name (CIFS) or by path, then name (NFS); an empty record when absent",
       calls(&Array::getShareInfoByName, printed, oneOf("protocol", "Kind of share", {{"cifs", "unc"}, {"nfs", "nfs"}}),
             text("name", "Share name or path"), vstore)},
      {"share", "nfs-of-fs", "The NFS share of a file system",
       lookup("NFS share of file system", "file-system-id",
              calls(&Array::getShareInfoByFSID, printed, "nfs", fileSystemId, vstore))},

      {"share", "cifs-create", "Create a CIFS share (an existing one answers with its identifier)",
       calls(&Array::createCIFSShare, printedAs("id"), shareName, path, fileSystemId, vstore)},
      {"share", "cifs-delete", "Delete a CIFS share by name (one already gone counts as deleted)",
       calls(&Array::deleteCIFSShare, shareName, vstore)},
      {"share", "cifs-permissions", "Every CIFS grant of the vStore",
       calls(&Array::getCIFSSharePermissions, printed, vstore)},
      {"share", "cifs-share-permissions", "The grants of one CIFS share (none is a failure)",
       calls(&Array::getCIFSSharePermissionsFromParentId, printed, shareId, vstore)},
      {"share", "cifs-grant", "Grant a user or group access to a CIFS share (an existing grant: empty id)",
       shownFirst(shareId, calls(&Array::addCIFSSharePermission, printedAs("id"),
                                 text("name", "User or group, such as DOMAIN\\user"), shareId,
                                 text("domain-type", "The array's domain type value"),
                                 wordOrCode("permission", "What the grant allows", CifsPermissionWords()), vstore))},

      {"share", "nfs-create", "Create an NFS share (an existing one is a failure)",
       calls(&Array::createNFSShare, printedAs("id"), fileSystemId, shareName, path, vstore)},
      {"share", "nfs-delete", "Delete an NFS share", calls(&Array::deleteNFSShare, shareId, vstore)},
      {"share", "nfs-permissions", "Every NFS client grant of the vStore",
       calls(&Array::getNFSSharePermissions, printed, vstore)},
      {"share", "nfs-share-permissions", "The client grants of one NFS share",
       calls(&Array::getNFSSharePermissionsFromParentId, printed, shareId, vstore)},
      {"share", "nfs-grant", "Grant a client access to an NFS share (list the grants for its identifier)",
       shownFirst(shareId,
                  calls(&Array::addNFSSharePermission, ignored, text("client", "Address or host name of the client"),
                        shareId, wordOrCode("access", "What the client may do", NfsAccessWords()),
                        wordOrCode("sync", "How the client's writes are committed", NfsSyncWords()),
                        wordOrCode("all-squash", "Whether every user is mapped to the anonymous one",
                                   SquashWords("all-squash")),
                        wordOrCode("root-squash", "Whether root is mapped to the anonymous user",
                                   SquashWords("root-squash")),
                        vstore))},
      {"share", "nfs-revoke", "Delete an NFS client grant (one already gone counts as deleted)",
       calls(&Array::deleteNFSSharePermission, text("permission-id", "Grant identifier"), vstore)},
  };
}

}  // namespace zrarray
