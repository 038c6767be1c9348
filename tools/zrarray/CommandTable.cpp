// The groups of subcommands, as the library groups its operations, and all rows together.
#include "Command.h"

namespace zrarray {

const std::vector<std::pair<std::string, std::string>>& CommandGroups() {
  static const std::vector<std::pair<std::string, std::string>> groups = {
      {"system", "The array itself: system facts, NDMP, vStores"},
      {"fs", "File systems and logical interfaces"},
      {"snapshot", "File-system snapshots"},
      {"changelist", "Files changed between two file-system snapshots"},
      {"share", "CIFS and NFS shares and their permissions"},
      {"lun", "LUNs, LUN snapshots and storage pools"},
      {"host", "Initiators and hosts"},
      {"hostgroup", "Host groups"},
      {"lungroup", "LUN groups"},
      {"mappingview", "Mapping views between host groups and LUN groups"},
      {"clone", "Clones and their secondary LUNs"},
  };
  return groups;
}

std::vector<Command> AllCommands() {
  std::vector<Command> all;
  for (auto rows : {InventoryCommands(), FileSystemSnapshotAndChangeListCommands(), ShareCommands(),
                    ProvisioningAndLunSnapshotCommands(), HostCommands(), LunGroupAndMappingViewCommands(),
                    CloneCommands()}) {
    all.insert(all.end(), rows.begin(), rows.end());
  }
  return all;
}

}  // namespace zrarray
