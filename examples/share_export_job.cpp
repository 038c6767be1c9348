// Exports a backup's incremental snapshot for restore: over NFS to the backup host and over CIFS
// to a Windows account, lists who may reach it, then withdraws both shares. Runs against the
// bundled array simulator, started in this process:
//
//   share_export_job [--address 127.0.0.1] [--backup-host 10.0.0.50] [--windows-account CORP\restore]
#include <cstdio>
#include <iostream>
#include <list>
#include <memory>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

#include "ArraySimulator.h"
#include "TkLogSink.h"
#include "ZRLibCurlOptions.h"
#include "ZrManageHuawei.h"

namespace {

const char kNoVstore[] = "-12345";
// The array's values for a read-only, synchronous, squashing NFS client and a read-only CIFS user.
const char kReadOnly[] = "0";
const char kSynchronous[] = "0";
const char kSquash[] = "1";
const char kDomainUser[] = "2";

void require(bool ok, const std::string& what) {
  if (!ok) throw std::runtime_error(what + " failed (the array log above tells why)");
}

// Errors and operator progress of the library, as the operator would read them.
void installLogSink() {
  tklog::SetMaxLevel(0);
  tklog::SetSink([](const tklog::LogLine& line) {
    std::cout.flush();
    std::fprintf(stderr, "  %s %s: %s\n", line.level < 0 ? "[error]" : "[array]", line.name.c_str(), line.text.c_str());
  });
}

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

int main(int argc, char** argv) {
  CLI::App app{"Exports an incremental snapshot over NFS and CIFS on the bundled array simulator"};
  std::string address = "127.0.0.1";
  std::string backupHost = "10.0.0.50";
  std::string windowsAccount = "CORP\\restore";
  app.add_option("--address", address, "Loopback address of the simulator (port 8088)")->capture_default_str();
  app.add_option("--backup-host", backupHost, "NFS client that reads the export")->capture_default_str();
  app.add_option("--windows-account", windowsAccount, "Account that reads the CIFS export")->capture_default_str();
  CLI11_PARSE(app, argc, argv);
  installLogSink();

  arraysim::SimulatorOptions options;
  options.address = address;
  arraysim::ArraySimulator simulator(options);
  simulator.start();
  int exitCode = 0;
  try {
    ZRLibCurlOptions tls;  // certificate and host name are verified against the simulator's CA
    tls.caBundlePath = simulator.caCertPath();
    ZRLibCurlSetOptions(tls);

    // The backup before the export: a base and an incremental snapshot of a file system.
    const std::string fileSystemId = simulator.fileSystems().create("projects");
    simulator.files(fileSystemId).writeFile("/plans/q1.txt", 100);
    simulator.snapshots().take(fileSystemId, "base");
    simulator.files(fileSystemId).writeFile("/plans/q2.txt", 200);
    const std::string incremental = simulator.snapshots().take(fileSystemId, "incremental");
    const nlohmann::json before = simulator.store().dump();

    ZrManageHuawei array(1);
    require(array.createSession(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword,
                                address),
            "login");
    _HuaweiSnapshotInfo snapshot;
    require(array.getFileSystemSnapshotInfo(incremental, snapshot, kNoVstore), "snapshot lookup");
    exportSnapshot(array, fileSystemId, "/projects/.snapshot/" + snapshot.name, backupHost, windowsAccount);
    require(simulator.store().dump() == before, "leaving the array as it was");
  } catch (const std::exception& error) {
    std::cerr << "share_export_job: " << error.what() << std::endl;
    exitCode = 1;
  }
  ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections before the simulator stops
  return exitCode;
}
