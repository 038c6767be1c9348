// system and fs: facts of the array, its file systems and interfaces.
#include "Calls.h"

namespace zrarray {

std::vector<Command> InventoryCommands() {
  return {
      {"system", "info", "The array's name, identifier, version and state",
       calls(&Array::getSystemInformation, printed)},
      {"system", "ndmp", "NDMP service settings of the vStore", calls(&Array::getNDMPServiceSettings, printed, vstore)},
      {"system", "vstore-name", "Name of a vStore",
       calls(&Array::getVStoreNameFromId, text("id", "vStore identifier"), printedAs("vstoreName"))},
      {"system", "login-vstore", "vStore of the login (-12345: none)", {},
       value("vstoreId", [](Call& c, auto& out) {
         out = c.array.getvStoreId();
         return true;
       })},

      {"fs", "list", "File systems of the vStore", calls(&Array::getFileSystemsList, printed, vstore)},
      {"fs", "interfaces", "Logical interfaces; the one serving NDMP is marked",
       calls(&Array::getArrayInterfaces, printed)},
      {"fs", "id", "Identifier of a file system",
       lookup("file system", "name",
              calls(&Array::getFileSystemId, text("name", "File system name"), printedAs("id")))},
      {"fs", "info", "One file system",
       lookup("file system", "id",
              calls(&Array::getFileSystemInfoById, text("id", "File system identifier"), printed, vstore))},
  };
}

}  // namespace zrarray
