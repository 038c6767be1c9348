// system and fs: facts of the array, its file systems and interfaces.
#include "Command.h"

namespace zrarray {

std::vector<Command> InventoryCommands() {
  return {
      {"system", "info", "The array's name, identifier, version and state", {},
       record<_HuaweiSystemInformation>([](Call& c, auto& out) { return c.array.getSystemInformation(out); })},
      {"system", "ndmp", "NDMP service settings of the vStore", {},
       record<_HuaweiNDMPServiceSettings>(
           [](Call& c, auto& out) { return c.array.getNDMPServiceSettings(out, c.vstore); })},
      {"system", "vstore-name", "Name of a vStore", {text("id", "vStore identifier")},
       value("vstoreName", [](Call& c, auto& out) { return c.array.getVStoreNameFromId(c["id"], out); })},
      {"system", "login-vstore", "vStore of the login (-12345: none)", {},
       value("vstoreId", [](Call& c, auto& out) {
         out = c.array.getvStoreId();
         return true;
       })},

      {"fs", "list", "File systems of the vStore", {},
       listOf<_HuaweiFileSystemsInfo>([](Call& c, auto& out) { return c.array.getFileSystemsList(out, c.vstore); })},
      {"fs", "interfaces", "Logical interfaces; the one serving NDMP is marked", {},
       listOf<_HuaweiArrayInterfaces>([](Call& c, auto& out) { return c.array.getArrayInterfaces(out); })},
      {"fs", "id", "Identifier of a file system", {text("name", "File system name")},
       lookup("file system", "name",
              value("id", [](Call& c, auto& out) { return c.array.getFileSystemId(c["name"], out); }))},
      {"fs", "info", "One file system", {text("id", "File system identifier")},
       lookup("file system", "id", record<_HuaweiFileSystemsInfo>([](Call& c, auto& out) {
                return c.array.getFileSystemInfoById(c["id"], out, c.vstore);
              }))},
  };
}

}  // namespace zrarray
