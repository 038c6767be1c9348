// An incremental backup job on one Huawei array, driven through ZrManageHuawei alone:
// log in, look at the array, take a base snapshot, let files change, take an incremental
// snapshot, walk the change list between the two, delete both snapshots and log out.
//
//   backup_job --with-simulator [--address 127.0.0.1] [--record run.jsonl]
//       runs against the bundled array simulator, started in this process, which also changes
//       the files between the two snapshots
//   ZR_ARRAY_PASSWORD=... backup_job --host 10.0.0.5 --user backup --ca-bundle array-ca.pem
//       runs against a real array (the password comes from the environment or a prompt)
//   backup_job ... --inventory
//       only reads: the system, its file systems and interfaces
#include <chrono>
#include <iostream>
#include <list>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "ExampleArray.h"
#include "ExampleJob.h"
#include "ZrManageHuawei.h"

namespace {

// A small array: two file systems with files, two interfaces, NDMP on the first one.
nlohmann::json simulatorSeed() {
  return nlohmann::json::parse(R"({
    "system": {"NAME": "lab-array", "PRODUCTVERSION": "V600R005C20"},
    "ndmp": [{"isEnabled": "true", "ip": "192.168.100.21", "port": "10000", "version": "4"}],
    "lifs": [{"NAME": "lif-ndmp", "IPV4ADDR": "192.168.100.21"},
             {"NAME": "lif-nfs", "IPV4ADDR": "192.168.100.22", "IPV6ADDR": "fd00::22"}],
    "filesystems": [
      {"NAME": "projects", "steps": [
        {"write": "/reports/2023.txt", "size": 1200}, {"write": "/reports/2024.txt", "size": 800},
        {"write": "/reports/draft (old).txt", "size": 10}, {"write": "/src/main.cpp", "size": 4000},
        {"mkdir": "/tmp"}, {"write": "/tmp/build.log", "size": 99}]},
      {"NAME": "home", "generate": {"files": 200, "filesPerDirectory": 50}}],
    "changeListPageSize": 4
  })");
}

// What users do between two backups, done directly on the simulated array.
void changeFiles(arraysim::ArraySimulator& simulator, const std::string& fileSystemId) {
  simulator.files(fileSystemId)
      .writeFile("/reports/2023.txt", 1500)                       // modified
      .remove("/reports/draft (old).txt")                         // deleted
      .writeFile("/reports/R&D plan (v2).txt", 42)                // ampersand, parentheses, blanks
      .writeFile("/reports/r\xC3\xA9sum\xC3\xA9 \xE6\x97\xA5\xE6\x9C\xAC.txt", 7)  // non-ASCII (UTF-8)
      .makeDirectory("/photos/summer 2024")                       // a new directory
      .writeFile("/photos/summer 2024/beach.jpg", 300000)
      .remove("/tmp");                                            // a directory with its contents
}

// Deletes the snapshots the job took, whatever happens after they were taken.
class SnapshotsTaken {
 public:
  SnapshotsTaken(ZrManageHuawei& array, std::string vstoreId) : array_(array), vstoreId_(std::move(vstoreId)) {}
  ~SnapshotsTaken() { deleteAll(); }
  void add(const std::string& id) { ids_.push_back(id); }
  bool deleteAll() {
    bool ok = true;
    for (const std::string& id : ids_) {
      const bool deleted = array_.deleteFileSystemSnapshot(id, vstoreId_);
      std::cout << (deleted ? "deleted snapshot " : "could not delete snapshot ") << id << "\n";
      ok = ok && deleted;
    }
    ids_.clear();
    return ok;
  }

 private:
  ZrManageHuawei& array_;
  std::string vstoreId_;
  std::vector<std::string> ids_;
};

struct WalkSummary {
  std::map<int, unsigned long long> countByType;
  std::map<int, std::vector<std::string>> examples;
};

// Walks the change list page by page. The library deletes the change-list session itself when
// the walk ends, and also when a page fails (it then sets sessionFailed to 1). A walk that stops
// otherwise, such as on an exception while handling a page, would leave the session open on the
// array: the guard deletes it then.
WalkSummary walkChangeList(ZrManageHuawei& array, const std::string& fileSystemId, const std::string& base,
                           const std::string& incremental) {
  _HuaweiSnapshotChangeListInfo page;  // a fresh record is the cursor of the first page
  bool sessionClosed = false;
  struct SessionGuard {
    ZrManageHuawei& array;
    const _HuaweiSnapshotChangeListInfo& page;
    const bool& closed;
    ~SessionGuard() {
      if (!closed && !page.sessionId.empty()) array.deleteSnapshotChangeListSession(page.sessionId);
    }
  } guard{array, page, sessionClosed};

  WalkSummary summary;
  unsigned long long pages = 0, entries = 0;
  for (;;) {
    if (!array.getSnapshotChangeList(fileSystemId, base, incremental, page)) {
      sessionClosed = page.sessionFailed == 1;  // else none was opened, or the guard deletes it
      throw JobFailure("change list walk broke after " + std::to_string(pages) + " pages");
    }
    if (page.changes.empty() && page.progress == "100") {
      sessionClosed = true;  // the end of the walk: the library has deleted the session
      break;
    }
    ++pages;
    entries += page.changes.size();
    for (const _HuaweiSnapshotChangeList& change : page.changes) {
      ++summary.countByType[change.changeType];
      auto& names = summary.examples[change.changeType];
      if (names.size() < 6) names.push_back(change.filePath + (change.fType == 2 ? "/" : ""));
    }
    std::cout << "  page " << pages << ": " << page.changes.size() << " entries, " << entries << " so far, "
              << page.progress << "% done\n";
  }
  std::cout << "change list complete: " << entries << " entries in " << pages << " pages\n";
  return summary;
}

void printSummary(const WalkSummary& summary) {
  // The change types are the array's codes: 0 created, 1 modified, 2 deleted.
  const std::map<int, const char*> kinds = {{0, "created"}, {1, "modified"}, {2, "deleted"}};
  for (const auto& [code, label] : kinds) {
    const auto count = summary.countByType.find(code);
    std::cout << "  " << label << ": " << (count == summary.countByType.end() ? 0 : count->second);
    const auto names = summary.examples.find(code);
    if (names != summary.examples.end()) {
      const char* separator = "  (";
      for (const std::string& name : names->second) std::cout << separator << name, separator = ", ";
      std::cout << (summary.countByType.at(code) > names->second.size() ? ", ...)" : ")");
    }
    std::cout << "\n";
  }
  for (const auto& [code, count] : summary.countByType) {
    if (!kinds.count(code)) std::cout << "  change type " << code << ": " << count << "\n";
  }
}

struct JobSettings {
  std::string fileSystemName;
  unsigned long long jobId = 1;
  int intervalSeconds = 0;
  bool inventoryOnly = false;
};

void runJob(const JobSettings& settings, const ExampleArray& target) {
  ZrManageHuawei array(settings.jobId);  // logs out and removes the cookie file when destroyed
  require(array.createSession(target.user(), target.password(), target.host()), "login to " + target.host());

  _HuaweiSystemInformation system;
  require(array.getSystemInformation(system), "reading the system information");
  const std::string vstore = array.getvStoreId();  // "-12345": the login belongs to no vStore
  std::cout << "logged in to " << system.name << " (version " << system.productVersion << ") as " << target.user()
            << ", vStore " << vstore << "\n";

  std::list<_HuaweiFileSystemsInfo> fileSystems;
  require(array.getFileSystemsList(fileSystems, vstore), "listing file systems");
  std::cout << "file systems:\n";
  for (const auto& fs : fileSystems) std::cout << "  " << fs.id << "  " << fs.name << "\n";
  std::list<_HuaweiArrayInterfaces> interfaces;
  require(array.getArrayInterfaces(interfaces), "listing interfaces");
  std::cout << "interfaces:\n";
  for (const auto& lif : interfaces) {
    std::cout << "  " << lif.name << "  " << lif.ipv4Address << (lif.ipv6Address.empty() ? "" : " ")
              << lif.ipv6Address << (lif.ndmpMonitoringIp ? "  [NDMP]" : "") << "\n";
  }
  if (settings.inventoryOnly) {
    require(array.closeSession(), "logout");
    std::cout << "session closed; inventory done\n";
    return;
  }

  const _HuaweiFileSystemsInfo* chosen = nullptr;
  for (const auto& fs : fileSystems) {
    if (settings.fileSystemName.empty() || fs.name == settings.fileSystemName) {
      chosen = &fs;
      break;
    }
  }
  if (!chosen) throw JobFailure("no file system named '" + settings.fileSystemName + "'");
  std::cout << "backing up file system " << chosen->name << " (" << chosen->id << ")\n";

  SnapshotsTaken snapshots(array, vstore);
  const std::string prefix = "backup-job-" + std::to_string(settings.jobId) + "-";
  std::string base = prefix + "base";  // the name goes in, the array's identifier comes out
  require(array.createFileSystemSnapshot(std::stoull(chosen->id), base, true, vstore), "taking the base snapshot");
  snapshots.add(base);
  std::cout << "base snapshot " << base << "\n";

  if (target.simulator()) {
    changeFiles(*target.simulator(), chosen->id);
    std::cerr << "the simulator changed some files\n";
  } else if (settings.intervalSeconds > 0) {
    std::cout << "waiting " << settings.intervalSeconds << " s for files to change\n";
    std::this_thread::sleep_for(std::chrono::seconds(settings.intervalSeconds));
  }

  std::string incremental = prefix + "incremental";
  require(array.createFileSystemSnapshot(std::stoull(chosen->id), incremental, true, vstore),
          "taking the incremental snapshot");
  snapshots.add(incremental);
  std::cout << "incremental snapshot " << incremental << "\n";

  std::cout << "walking the change list:\n";
  printSummary(walkChangeList(array, chosen->id, base, incremental));

  require(snapshots.deleteAll(), "deleting the snapshots");
  require(array.closeSession(), "logout");
  std::cout << "session closed; job done\n";
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"An incremental backup job on a Huawei array: two snapshots and the files changed between them."};
  ExampleArray target;
  JobSettings settings;
  target.addOptions(app, ExampleArray::SimulatorOnRequest);
  app.add_option("--file-system", settings.fileSystemName, "File system to back up (default: the first one)");
  app.add_option("--interval", settings.intervalSeconds, "Seconds between the two snapshots on a real array");
  app.add_option("--job-id", settings.jobId, "Job identifier")->capture_default_str();
  app.add_flag("--inventory", settings.inventoryOnly, "Only read the system, its file systems and interfaces");
  CLI11_PARSE(app, argc, argv);

  installLogSink(true);
  try {
    arraysim::SimulatorOptions options;
    options.seed = simulatorSeed();
    target.connect(options);
    if (target.simulated() && settings.fileSystemName.empty()) settings.fileSystemName = "projects";
    runJob(settings, target);
  } catch (const std::exception& error) {
    std::cerr << "backup_job: " << error.what() << std::endl;
    return 1;
  }
  return 0;
}
