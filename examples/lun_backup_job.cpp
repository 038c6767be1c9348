// A backup job over a LUN, driven through ZrManageHuawei alone: take a snapshot of the LUN,
// activate it, make sure the backup host exists with its iSCSI initiator and sits in a host group,
// present the snapshot to it, then stop and delete the snapshot and log out.
//
//   lun_backup_job [--address 127.0.0.1] [--record run.jsonl]
//       runs against the bundled array simulator, started in this process with one LUN on it
//   ZR_ARRAY_PASSWORD=... lun_backup_job --host 10.0.0.5 --user admin --ca-bundle array-ca.pem --lun-id 11
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>

#include <CLI/CLI.hpp>

#include "ExampleArray.h"
#include "ExampleJob.h"
#include "LunPresentation.h"
#include "ZrManageHuawei.h"

namespace {

const char kNoVstore[] = "-12345";

struct BackupHost {
  std::string name;
  std::string iscsiInitiator;
  std::string hostGroup;
};

// The host, its initiator and its group, made where missing. An initiator that exists already
// is bound to this host unless it is so already.
std::string prepareHost(ZrManageHuawei& array, const BackupHost& wanted) {
  _HuaweiLUNHostInfo host;
  require(array.createHost(host, wanted.name, kNoVstore, false), "host");
  _HuaweiInitiator initiator;
  bool initiatorExists = false;
  const CXoError created =
      array.createInitiator(initiator, wanted.iscsiInitiator, host.id, true, initiatorExists, kNoVstore);
  if (initiatorExists) {
    std::string boundTo;
    require(array.getHostIDFromInitiatorID(wanted.iscsiInitiator, true, boundTo, kNoVstore), "initiator lookup");
    if (boundTo != host.id) {
      require(array.updateInitiatorWithHostID(wanted.iscsiInitiator, host.id, true, kNoVstore), "initiator binding");
    }
  } else {
    require(created, "initiator");
  }
  _HuaweiHostGroupInfo group;
  require(array.createHostGroup(group, wanted.hostGroup, kNoVstore), "host group");
  require(array.addHostToHostGroup(group.id, host.id, kNoVstore), "host group membership");
  require(array.isHostAssociatedToHostGroup(group.id, host.id, kNoVstore), "host group membership check");
  std::cout << "backup host " << host.name << " (" << host.id << ") is in host group " << group.id << "\n";
  return group.id;
}

// arrayState: the array's objects, as text, to show that the presentation is withdrawn cleanly
// (empty where the job cannot see them).
void runJob(ZrManageHuawei& array, const std::string& lunId, const BackupHost& backupHost,
            const std::function<std::string()>& arrayState) {
  _HuaweiLUNInfo lun;
  require(array.getLUNInfo(lun, lunId, kNoVstore), "LUN lookup");
  _HuaweiLUNSnapshotInfo snapshot;
  require(array.createLUNSnapshot(snapshot, lun.id, lun.name + "-backup", kNoVstore), "snapshot");
  require(array.activateLUNSnapshot({snapshot.id}, kNoVstore), "activation");
  std::cout << "snapshot " << snapshot.name << " (" << snapshot.id << ") of LUN " << lun.name << " is active\n";

  const std::string hostGroupId = prepareHost(array, backupHost);
  // The snapshot LUN is shown to the host group through a LUN group and a mapping view, read, and
  // withdrawn again: the withdrawal must leave the array as the presentation found it.
  const std::string beforePresentation = arrayState();
  require(presentAndWithdraw(array, {snapshot.id, hostGroupId, "backup-" + snapshot.id, kNoVstore},
                             [&] {
                               std::cout << "snapshot LUN " << snapshot.id << " presented to host group "
                                         << backupHost.hostGroup << "\n";
                             }),
          "presentation");
  if (arrayState() != beforePresentation) throw JobFailure("the presentation left objects behind on the array");
  std::cout << "presentation withdrawn\n";

  bool alreadyGone = false;
  require(array.deActivateLUNSnapshot(snapshot.id, alreadyGone, kNoVstore), "stop");
  require(array.deleteLUNSnapshot(snapshot.id, kNoVstore), "deletion");
  bool notExist = false;
  _HuaweiLUNSnapshotInfo after;
  if (!array.getLUNSnapshotInfo(after, snapshot.id, notExist, kNoVstore).IsError() || !notExist) {
    throw JobFailure("the snapshot is still on the array");
  }
  std::cout << "snapshot " << snapshot.id << " stopped and deleted\n";
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app("A backup job over a LUN snapshot, on the bundled array simulator unless --host names an array");
  ExampleArray target;
  std::string lunId = "11";
  BackupHost backupHost{"backup01", "iqn.2024-01.com.example:backup01", "backup-hosts"};
  target.addOptions(app);
  app.add_option("--lun-id", lunId, "LUN to back up")->capture_default_str();
  app.add_option("--backup-host", backupHost.name, "Host that reads the snapshot")->capture_default_str();
  app.add_option("--initiator", backupHost.iscsiInitiator, "Its iSCSI initiator")->capture_default_str();
  app.add_option("--host-group", backupHost.hostGroup, "Its host group")->capture_default_str();
  CLI11_PARSE(app, argc, argv);

  installLogSink();
  try {
    target.connect(arraysim::SimulatorOptions());
    if (auto* simulator = target.simulator()) {
      simulator->store().insert("lun", {{"ID", lunId}, {"NAME", "db-data"}, {"PARENTID", "0"}, {"RUNNINGSTATUS", "27"}});
      // The initiator is known to the array already, bound to no host.
      simulator->store().insert("iscsi_initiator", {{"ID", backupHost.iscsiInitiator}, {"ISFREE", "true"}});
    }
    ZrManageHuawei array(1);
    if (!array.createSession(target.user(), target.password(), target.host())) throw JobFailure("login failed");
    runJob(array, lunId, backupHost, [&target] {
      return target.simulator() ? target.simulator()->store().dump().dump() : std::string();
    });
  } catch (const std::exception& error) {
    std::cerr << "lun_backup_job: " << error.what() << std::endl;
    return 1;
  }
  return 0;
}
