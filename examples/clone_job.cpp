// A clone job on one Huawei array: create a LUN in a named storage pool, clone it to a second
// LUN, wait for the first synchronisation, split the copy off, then remove everything the job
// made, in reverse order, also when a step fails.
//
//   clone_job --with-simulator [--address 127.0.0.1] [--record run.jsonl]
//       runs against the bundled array simulator, started in this process, and checks at the end
//       that the array holds exactly what it held at the start
//   ZR_ARRAY_PASSWORD=... clone_job --host 10.0.0.5 --user admin --ca-bundle array-ca.pem --pool StoragePool001
#include <chrono>
#include <functional>
#include <iostream>
#include <list>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "ExampleArray.h"
#include "ExampleJob.h"
#include "TkLogSink.h"
#include "ZrManageHuawei.h"

namespace {

// Undoes the job's steps, last first, when it goes out of scope.
class Cleanup {
 public:
  ~Cleanup() { run(); }
  void push(std::string what, std::function<HuaweiApi::ResultStatus()> undo) {
    steps_.push_back({std::move(what), std::move(undo)});
  }
  bool run() {
    bool ok = true;
    while (!steps_.empty()) {
      const auto status = steps_.back().second();
      std::cout << (status.IsError() ? "could not undo: " : "undone: ") << steps_.back().first
                << (status.IsError() ? " (" + status.GetErrorString() + ")" : "") << "\n";
      ok = ok && !status.IsError();
      steps_.pop_back();
    }
    return ok;
  }

 private:
  std::vector<std::pair<std::string, std::function<HuaweiApi::ResultStatus()>>> steps_;
};

struct JobSettings {
  std::string pool = "pool1", capacity = "2097152";
  unsigned long long jobId = 7;
  int pollMilliseconds = 5000;
};

_HuaweiLUNInfo lunIn(const _HuaweiStoragePoolInfo& pool, const std::string& name, const std::string& capacity) {
  _HuaweiLUNInfo lun;
  lun.name = name;
  lun.capacity = capacity;
  lun.allocType = HuaweiApiValue::ALLOC_TYPE_THIN;
  lun.parentId = pool.id;
  lun.owningController = "0A";
  return lun;
}

void runJob(const JobSettings& settings, const ExampleArray& target) {
  ZrManageHuawei array(settings.jobId);
  array.setCredentials(target.user(), target.password(), target.host());  // the first operation logs in
  Cleanup cleanup;

  _HuaweiStoragePoolInfo pool;
  require(array.getStoragePoolInfoForName(pool, settings.pool), "finding pool " + settings.pool);
  std::cout << "pool " << pool.name << " (" << pool.id << ")\n";

  const std::string prefix = "clone-job-" + std::to_string(settings.jobId) + "-";
  std::string sourceId, copyId, cloneId;
  require(array.createLUN(sourceId, lunIn(pool, prefix + "source", settings.capacity)), "creating the source LUN");
  cleanup.push("source LUN " + sourceId, [&] { return array.deleteLun(sourceId, "-12345"); });
  require(array.createLUN(copyId, lunIn(pool, prefix + "copy", settings.capacity)), "creating the copy LUN");
  cleanup.push("copy LUN " + copyId, [&] { return array.deleteLun(copyId, "-12345"); });
  std::cout << "LUNs " << sourceId << " (source) and " << copyId << " (copy)\n";

  _HuaweiCloneInfo clone;
  clone.name = prefix + "clone";
  clone.priLunId = sourceId;
  require(array.createClone(cloneId, clone), "creating the clone");
  cleanup.push("clone " + cloneId, [&] { return array.deleteClone(cloneId); });

  _HuaweiCloneSecondaryLUN secondary;
  secondary.id = copyId;
  secondary.parentId = cloneId;
  secondary.speed = HuaweiApiValue::COPY_SPEED_HIGH;
  secondary.resumePolicy = HuaweiApiValue::RESUME_POLICY_AUTOMATIC;
  require(array.addCloneSecondaryLun(secondary, HuaweiApiValue::FIRST_SYNC_YES), "adding the copy to the clone");
  cleanup.push("secondary LUN " + copyId, [&] { return array.removeCloneSecondaryLun(copyId, cloneId); });

  // The library never waits: the job reads the pair until the array reports it normal.
  for (;;) {
    std::list<_HuaweiCloneSecondaryLUN> pairs;
    require(array.getCloneSecondaryLuns(pairs, cloneId), "reading the pair");
    if (pairs.empty()) throw JobFailure("the clone lost its secondary LUN");
    const auto& pair = pairs.front();
    std::cout << "synchronising: " << pair.process << "%\n";
    if (pair.runningStatus.getValue() == HuaweiApiValue::CLONE_SEC_LUN_RUNNING_STATUS_NORM.getValue()) break;
    if (pair.runningStatus.getValue() != HuaweiApiValue::CLONE_SEC_LUN_RUNNING_STATUS_SYNC.getValue()) {
      throw JobFailure("the pair stopped in state " + pair.runningStatus.getValue());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(settings.pollMilliseconds));
  }
  require(array.splitCloneSecondaryLun(copyId, cloneId), "splitting the copy off");
  std::cout << "copy " << copyId << " split off clone " << cloneId << "\n";

  if (!cleanup.run()) throw JobFailure("the clean-up left objects behind");
  std::cout << "job done\n";
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"A clone job on a Huawei array: a LUN, its clone, a synchronised copy, split off, then cleaned up."};
  ExampleArray target;
  JobSettings settings;
  target.addOptions(app, ExampleArray::SimulatorOnRequest);
  app.add_option("--pool", settings.pool, "Storage pool of the two LUNs")->capture_default_str();
  app.add_option("--capacity", settings.capacity, "Capacity of each LUN, in the array's unit")->capture_default_str();
  app.add_option("--poll-interval", settings.pollMilliseconds, "Milliseconds between two reads of the pair")
      ->capture_default_str();
  CLI11_PARSE(app, argc, argv);

  tklog::SetMaxLevel(0);  // the operations' request and success lines, and every error
  try {
    target.connect(arraysim::SimulatorOptions());
    nlohmann::json before;
    if (auto* simulator = target.simulator()) {
      settings.pollMilliseconds = 0;  // it synchronises a step per read
      simulator->store().insert("storagepool", {{"ID", "0"}, {"NAME", settings.pool}, {"PARENTID", "0"}});
      before = simulator->store().dump();
    }
    runJob(settings, target);
    if (target.simulator() && target.simulator()->store().dump() != before) {
      throw JobFailure("the array holds objects the job made");
    }
  } catch (const std::exception& error) {
    std::cerr << "clone_job: " << error.what() << std::endl;
    return 1;
  }
  return 0;
}
