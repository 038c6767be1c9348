// Exports a backup's incremental snapshot for restore: over NFS to the backup host and over CIFS
// to a Windows account, lists who may reach it, then withdraws both shares. Runs against the
// bundled array simulator, started in this process, unless --host names an array:
//
//   share_export_job [--address 127.0.0.1] [--backup-host 10.0.0.50] [--windows-account CORP\restore]
//   ZR_ARRAY_PASSWORD=... share_export_job --host 10.0.0.5 --user admin --file-system-id 7 --snapshot-id 7@2
#include <iostream>
#include <list>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

#include "ExampleArray.h"
#include "ExampleJob.h"
#include "ZrManageHuawei.h"

namespace {

const char kNoVstore[] = "-12345";
// The array's values for a read-only, synchronous, squashing NFS client and a read-only CIFS user.
const char kReadOnly[] = "0";
const char kSynchronous[] = "0";
const char kSquash[] = "1";
const char kDomainUser[] = "2";

void exportSnapshot(ZrManageHuawei& array, const std::string& fileSystemId, const std::string& snapshotPath,
                    const std::string& backupHost, const std::string& windowsAccount) {
  std::string nfsShare;
  require(array.createNFSShare(nfsShare, fileSystemId, snapshotPath, snapshotPath, kNoVstore), "NFS export");
  std::string unused;  // the NFS grant answers no identifier
  require(array.addNFSSharePermission(unused, backupHost, nfsShare, kReadOnly, kSynchronous, kSquash, kSquash,
                                      kNoVstore),
          "NFS grant");
  std::string cifsShare;
  require(array.createCIFSShare(cifsShare, "restore", snapshotPath, fileSystemId, kNoVstore), "CIFS export");
  std::string cifsPermission;
  require(array.addCIFSSharePermission(cifsPermission, windowsAccount, cifsShare, kDomainUser, kReadOnly, kNoVstore),
          "CIFS grant");
  std::cout << "exported " << snapshotPath << " as NFS share " << nfsShare << " and CIFS share " << cifsShare << "\n";

  std::list<_HuaweiNFSSharePermissionInfo> nfsClients;
  require(array.getNFSSharePermissionsFromParentId(nfsClients, nfsShare, kNoVstore), "NFS permission list");
  for (const auto& client : nfsClients) std::cout << "  NFS client " << client.name << " access " << client.accessVal << "\n";
  std::list<_HuaweiCIFSSharePermissionInfo> cifsUsers;
  require(array.getCIFSSharePermissionsFromParentId(cifsUsers, cifsShare, kNoVstore), "CIFS permission list");
  for (const auto& user : cifsUsers) std::cout << "  CIFS user " << user.name << " permission " << user.permission << "\n";

  for (const auto& client : nfsClients) require(array.deleteNFSSharePermission(client.id, kNoVstore), "NFS revoke");
  require(array.deleteNFSShare(nfsShare, kNoVstore), "NFS withdrawal");
  require(array.deleteCIFSShare("restore", kNoVstore), "CIFS withdrawal");  // takes its permissions along
  std::cout << "withdrew both shares\n";
}

}  // namespace

// The backup before the export: a base and an incremental snapshot (7@1 and 7@2) of a file system.
nlohmann::json simulatorSeed() {
  return nlohmann::json::parse(R"({
    "filesystems": [{"ID": "7", "NAME": "projects", "steps": [
      {"write": "/plans/q1.txt", "size": 100}, {"snapshot": "base"},
      {"write": "/plans/q2.txt", "size": 200}, {"snapshot": "incremental"}]}]
  })");
}

int main(int argc, char** argv) {
  CLI::App app{"Exports an incremental snapshot over NFS and CIFS, lists its clients and withdraws it"};
  ExampleArray target;
  std::string fileSystemId = "7", snapshotId = "7@2";
  std::string backupHost = "10.0.0.50";
  std::string windowsAccount = "CORP\\restore";
  target.addOptions(app);
  app.add_option("--file-system-id", fileSystemId, "File system of the snapshot")->capture_default_str();
  app.add_option("--snapshot-id", snapshotId, "Snapshot to export")->capture_default_str();
  app.add_option("--backup-host", backupHost, "NFS client that reads the export")->capture_default_str();
  app.add_option("--windows-account", windowsAccount, "Account that reads the CIFS export")->capture_default_str();
  CLI11_PARSE(app, argc, argv);
  installLogSink();

  try {
    arraysim::SimulatorOptions options;
    options.seed = simulatorSeed();
    target.connect(options);
    const nlohmann::json before = target.simulator() ? target.simulator()->store().dump() : nlohmann::json();
    {
      ZrManageHuawei array(1);
      require(array.createSession(target.user(), target.password(), target.host()), "login");
      _HuaweiFileSystemsInfo fileSystem;
      require(array.getFileSystemInfoById(fileSystemId, fileSystem, kNoVstore), "file system lookup");
      _HuaweiSnapshotInfo snapshot;
      require(array.getFileSystemSnapshotInfo(snapshotId, snapshot, kNoVstore), "snapshot lookup");
      exportSnapshot(array, fileSystemId, "/" + fileSystem.name + "/.snapshot/" + snapshot.name, backupHost,
                     windowsAccount);
    }
    if (target.simulator()) require(target.simulator()->store().dump() == before, "leaving the array as it was");
  } catch (const std::exception& error) {
    std::cerr << "share_export_job: " << error.what() << std::endl;
    return 1;
  }
  return 0;
}
