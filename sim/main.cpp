// huawei-array-sim: the array simulator as a process of its own.
//
//   huawei-array-sim --address 127.0.0.5 --account admin:secret --generate-files 1000000
//
//   huawei-array-sim --address 127.0.0.5 --replay inventory.jsonl --strict
//
// Prints "ready <address>:<port> ca=<path>" on standard output once it listens, and runs
// until SIGINT or SIGTERM. A replay then says on standard error what it served and what it
// did not; under --strict its exit status is 3 when a request was unmatched (the first one ends
// it) or a recorded exchange was never requested.
#include <malloc.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include <CLI/CLI.hpp>

#include "ArraySimulator.h"
#include "Seed.h"
#include "replay/ReplayServer.h"

namespace {

arraysim::Account ParseAccount(const std::string& text) {
  const auto first = text.find(':');
  if (first == std::string::npos) throw CLI::ValidationError("--account", "expected user:password[:vstoreId]");
  const auto second = text.find(':', first + 1);
  arraysim::Account account;
  account.user = text.substr(0, first);
  account.password = text.substr(first + 1, second == std::string::npos ? std::string::npos : second - first - 1);
  if (second != std::string::npos) account.vstoreId = text.substr(second + 1);
  return account;
}

// SIGUSR1 is the strict replay's own: an unmatched request ends it.
constexpr int kUnmatchedSignal = SIGUSR1;
constexpr int kReplayMismatch = 3;

sigset_t StopSignals() {
  sigset_t stopSignals;
  sigemptyset(&stopSignals);
  sigaddset(&stopSignals, SIGINT);
  sigaddset(&stopSignals, SIGTERM);
  sigaddset(&stopSignals, kUnmatchedSignal);
  return stopSignals;
}

int WaitForStopSignal() {
  const sigset_t stopSignals = StopSignals();
  int received = 0;
  sigwait(&stopSignals, &received);
  return received;
}

int Replay(const arraysim::SimulatorOptions& options, const std::string& file, bool strict) {
  std::function<void()> onUnmatched;
  if (strict) onUnmatched = [] { kill(getpid(), kUnmatchedSignal); };
  arraysim::ReplayServer server(options, arraysim::LoadRecording(file), std::cerr, onUnmatched);
  server.start();
  std::cout << "ready " << server.address() << ":" << server.port() << " ca=" << server.caCertPath() << std::endl;
  const int signal = WaitForStopSignal();
  if (signal == kUnmatchedSignal) {
    // The signal comes as the error answer is handed to the server: let it reach the client,
    // which then fails with the answer's words, not with a broken connection.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
  } else {
    std::cerr << "stopping on signal " << signal << std::endl;
  }
  server.stop();
  const auto summary = server.summary();
  std::cerr << arraysim::DescribeReplay(summary) << std::flush;
  return strict && !summary.complete() ? kReplayMismatch : 0;
}

}  // namespace

int main(int argc, char** argv) {
  // Every change-list page is a few buffers of a quarter megabyte, made and dropped per answer:
  // kept on the heap, they are not mapped and cleared afresh each time.
  mallopt(M_MMAP_THRESHOLD, 64 << 20);
  mallopt(M_TRIM_THRESHOLD, 256 << 20);
  CLI::App app{"Simulates a Huawei storage array's management interface over HTTPS."};
  arraysim::SimulatorOptions options;
  std::vector<std::string> accounts;
  std::string seedFile;
  std::size_t generateFiles = 0;
  std::size_t generateChanges = 0;
  bool generateChangesGiven = false;
  app.add_option("--address", options.address, "Loopback address to listen on")->capture_default_str();
  app.add_option("--port", options.port, "Port (0: any free port)")->capture_default_str();
  app.add_option("--device-id", options.deviceId, "Device identifier of the array")->capture_default_str();
  app.add_option("--account", accounts, "user:password[:vstoreId], repeatable (default admin:Admin@storage1)");
  app.add_option("--seed", seedFile, "JSON file with the array's initial state")->check(CLI::ExistingFile);
  app.add_option("--cert-dir", options.certificateDirectory, "Where to write the CA and the server certificate");
  app.add_option("--page-size", options.changeListPageSize, "Entries per change-list page")->capture_default_str();
  app.add_option("--threads", options.threads, "Worker threads")->capture_default_str();
  app.add_option("--generate-files", generateFiles,
                 "Make a file system with this many files and a snapshot pair that differs in them");
  app.add_option_function<std::size_t>(
      "--generate-changes",
      [&](const std::size_t& count) {
        generateChanges = count;
        generateChangesGiven = true;
      },
      "Entries of the generated difference: half modified, a quarter created, a quarter deleted (default: all files)");
  app.add_flag("!--no-record", options.recordRequests, "Do not keep the requests (long benchmarks)");
  std::string replayFile;
  bool strict = false;
  auto* replay = app.add_option("--replay", replayFile, "Serve this recording instead of a simulated array")
                     ->check(CLI::ExistingFile)
                     ->excludes("--seed", "--generate-files", "--generate-changes", "--account", "--device-id",
                                "--page-size");
  app.add_flag("--strict", strict, "End the replay at the first request the recording does not hold")->needs(replay);
  CLI11_PARSE(app, argc, argv);

  // Block the stop signals before any thread starts, so that every thread inherits the mask
  // and sigwait() alone receives them.
  const sigset_t stopSignals = StopSignals();
  pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
  signal(SIGPIPE, SIG_IGN);

  try {
    if (!replayFile.empty()) return Replay(options, replayFile, strict);
    for (const auto& text : accounts) options.accounts.push_back(ParseAccount(text));
    if (!seedFile.empty()) options.seed = arraysim::LoadSeedFile(seedFile);
    arraysim::ArraySimulator simulator(options);

    if (generateFiles > 0) {
      const std::size_t changes = generateChangesGiven ? generateChanges : generateFiles;
      arraysim::GenerationPlan plan;
      plan.fileSystemName = "bench";
      plan.tree.files = generateFiles;
      plan.changes.modified = changes / 2;
      plan.changes.deleted = changes / 4;
      plan.changes.created = changes - plan.changes.modified - plan.changes.deleted;
      const auto pair = simulator.generateSnapshotPair(plan);
      std::cout << "generated fileSystem=" << pair.fileSystemId << " base=" << pair.baseSnapshotId
                << " incremental=" << pair.incrementalSnapshotId << " changes=" << pair.changeCount << std::endl;
    }

    simulator.start();
    std::cout << "ready " << simulator.address() << ":" << simulator.port() << " ca=" << simulator.caCertPath()
              << std::endl;
    const int signal = WaitForStopSignal();
    std::cerr << "stopping on signal " << signal << std::endl;
    simulator.stop();
  } catch (const std::exception& error) {
    std::cerr << "huawei-array-sim: " << error.what() << std::endl;
    return 1;
  }
  return 0;
}
