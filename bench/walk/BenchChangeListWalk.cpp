// A whole change-list walk over HTTPS through ZrManageHuawei::getSnapshotChangeList, page by page
// until the closing empty page at progress "100", against the array simulator running as a
// process of its own, so that this process holds the library's memory only.
//
//   bench_changelist_walk                       runs itself twice, for 100,000 and 1,000,000
//                                               entries, and compares peak memory
//   bench_changelist_walk --entries N [--rounds R] [--page-size P] [--names repaired|exact]
//                         [--record FILE [--anonymise]]
//                                               one simulator, R walks of about N entries, with
//                                               the names repaired (the default) or exact,
//                                               recorded to FILE when given
//
// Under callgrind with --collect-atstart=no only the walks are counted (bench/instr-count).
//
// Bytes received are what the simulator wrote to its sockets during the walk (wchar of
// /proc/<pid>/io; OpenSSL writes TLS records with write()): page bodies with their HTTP headers
// and TLS framing, counted without touching the library and with nothing else talking to that
// simulator. (This process's own rchar would not see them: libcurl receives with recv().)
// The simulator's CPU time comes from /proc/<pid>/stat, this process's from getrusage.
#include <signal.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "BenchClock.h"
#include "ChildProcess.h"
#include "MeasuredPart.h"
#include "TkLogSink.h"
#include "ZRLibCurlOptions.h"
#include "ZrLibrarySettings.h"
#include "ZrManageHuawei.h"

namespace {

// ZR_BENCH_ADDRESS moves it, so that two builds can measure at once.
const char* const kAddress = std::getenv("ZR_BENCH_ADDRESS") ? std::getenv("ZR_BENCH_ADDRESS") : "127.0.0.22";

unsigned long long BytesWritten(pid_t pid) {
  std::ifstream io("/proc/" + std::to_string(pid) + "/io");
  for (std::string key; io >> key;) {
    unsigned long long value = 0;
    io >> value;
    if (key == "wchar:") return value;
  }
  throw std::runtime_error("cannot read /proc/" + std::to_string(pid) + "/io");
}

double CpuSeconds(pid_t pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  std::istringstream fields(text.substr(text.rfind(')') + 2));  // after "pid (name) "
  std::string field;
  unsigned long long user = 0, system = 0;
  for (int index = 3; fields >> field; ++index) {
    if (index == 14) user = std::stoull(field);
    if (index == 15) {
      system = std::stoull(field);
      break;
    }
  }
  return static_cast<double>(user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
}

long OwnPageFaults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt + usage.ru_majflt;
}

double OwnCpuSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
         static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

double Seconds(std::chrono::steady_clock::time_point since) {
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
}

struct Walk {
  bool ok = false;
  unsigned long long entries = 0, pages = 0, bytes = 0;
  double seconds = 0, clientCpu = 0, simulatorCpu = 0;
  long pageFaults = 0;
};

Walk WalkOnce(ZrManageHuawei& array, const std::string& fileSystem, const std::string& base,
              const std::string& incremental, pid_t simulator) {
  Walk walk;
  std::map<int, unsigned long long> byType;
  _HuaweiSnapshotChangeListInfo page;
  const unsigned long long bytesBefore = BytesWritten(simulator);
  const double clientCpuBefore = OwnCpuSeconds(), simulatorCpuBefore = CpuSeconds(simulator);
  const long faultsBefore = OwnPageFaults();
  const auto start = std::chrono::steady_clock::now();
  {
    zrbench::MeasuredPart measured;
    for (;;) {
      if (!array.getSnapshotChangeList(fileSystem, base, incremental, page)) return walk;
      if (page.changes.empty() && page.progress == "100") break;
      ++walk.pages;
      walk.entries += page.changes.size();
      for (const auto& change : page.changes) ++byType[change.changeType];
    }
  }
  walk.seconds = Seconds(start);
  walk.clientCpu = OwnCpuSeconds() - clientCpuBefore;
  walk.pageFaults = OwnPageFaults() - faultsBefore;
  walk.simulatorCpu = CpuSeconds(simulator) - simulatorCpuBefore;
  walk.bytes = BytesWritten(simulator) - bytesBefore;
  walk.ok = byType.size() == 3;  // created, modified and deleted entries all came through
  return walk;
}

int RunWalks(const std::string& simulatorPath, unsigned long long entries, int rounds, int pageSize) {
  tklog::SetMaxLevel(4);  // the default level; lines go to a sink that drops them
  tklog::SetSink([](const tklog::LogLine& line) {
    if (line.level < 0) std::fprintf(stderr, "%s: %s\n", line.name.c_str(), line.text.c_str());
  });

  const auto spawned = std::chrono::steady_clock::now();
  std::vector<std::string> arguments = {simulatorPath,
                                        "--address", kAddress,
                                        "--generate-files", std::to_string(entries),
                                        "--generate-changes", std::to_string(entries),
                                        "--no-record"};
  if (pageSize > 0) arguments.insert(arguments.end(), {"--page-size", std::to_string(pageSize)});
  std::string fileSystem, base, incremental, expected;
  zrbench::SimulatorProcess simulator(arguments, [&](const std::string& line) {
    if (line.rfind("generated ", 0) != 0) return;
    fileSystem = zrbench::Field(line, "fileSystem");
    base = zrbench::Field(line, "base");
    incremental = zrbench::Field(line, "incremental");
    expected = zrbench::Field(line, "changes");
  });
  if (base.empty()) {
    std::fprintf(stderr, "the simulator generated no snapshots\n");
    return 1;
  }
  const double startup = Seconds(spawned);

  ZRLibCurlOptions tls;
  tls.caBundlePath = simulator.caPath();
  ZRLibCurlSetOptions(tls);
  int exitCode = 0;
  {
    ZrManageHuawei array(1);
    if (!array.createSession("admin", "Admin@storage1", kAddress)) {  // the simulator's default account
      std::fprintf(stderr, "login failed\n");
      return 1;
    }
    const double residentBefore = zrbench::peakResidentMiB();
    std::vector<double> seconds, clientCpu, simulatorCpu, megabytes, faultsPerPage;
    Walk last;
    for (int round = 0; round < rounds && exitCode == 0; ++round) {
      last = WalkOnce(array, fileSystem, base, incremental, simulator.pid());
      if (!last.ok || std::to_string(last.entries) != expected) {
        std::fprintf(stderr, "walk %d failed or incomplete: %llu entries, %s expected\n", round + 1, last.entries,
                     expected.c_str());
        exitCode = 1;
      }
      seconds.push_back(last.seconds);
      clientCpu.push_back(last.clientCpu);
      faultsPerPage.push_back(static_cast<double>(last.pageFaults) / static_cast<double>(last.pages + 1));
      simulatorCpu.push_back(last.simulatorCpu);
      megabytes.push_back(static_cast<double>(last.bytes) / 1e6);
      std::printf("  walk %d: %.2f s\n", round + 1, last.seconds);
    }
    if (exitCode == 0) {
      const double walkSeconds = zrbench::median(seconds);
      std::printf("%llu entries in %llu pages (simulator start with generation %.1f s), median of %d walks:\n",
                  last.entries, last.pages, startup, rounds);
      const auto spread = std::minmax_element(seconds.begin(), seconds.end());
      const auto cpuSpread = std::minmax_element(clientCpu.begin(), clientCpu.end());
      std::printf("  wall %.2f s (walks %.2f-%.2f s)   %.0f entries/s   %.1f MB received, %.1f MB/s\n", walkSeconds,
                  *spread.first, *spread.second, static_cast<double>(last.entries) / walkSeconds,
                  zrbench::median(megabytes), zrbench::median(megabytes) / walkSeconds);
      std::printf("  page faults of this process: %.1f per page\n", zrbench::median(faultsPerPage));
      std::printf("  CPU: benchmark process (library) %.2f s (walks %.2f-%.2f s), simulator %.2f s; %ld cores\n",
                  zrbench::median(clientCpu), *cpuSpread.first, *cpuSpread.second, zrbench::median(simulatorCpu),
                  sysconf(_SC_NPROCESSORS_ONLN));
      std::printf("  peak RSS of this process: %.1f MiB (%.1f MiB after login, before the walks)\n",
                  zrbench::peakResidentMiB(), residentBefore);
      std::printf("RESULT entries=%llu seconds=%.3f rss=%.1f\n", last.entries, walkSeconds,
                  zrbench::peakResidentMiB());
    }
  }
  std::fflush(stdout);
  ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections before the simulator stops
  simulator.stop();
  return exitCode;
}

// Runs this program once per size: peak RSS only grows, so each size needs a process of its own.
int Drive(int rounds, const std::vector<std::string>& passed) {
  const std::string self = zrbench::SelfPath();
  struct Row {
    std::string entries, seconds, rss;
  };
  std::vector<Row> rows;
  for (const char* entries : {"100000", "1000000"}) {
    std::printf("== %s entries\n", entries);
    std::fflush(stdout);
    std::vector<std::string> arguments = {self, "--entries", entries, "--rounds", std::to_string(rounds)};
    arguments.insert(arguments.end(), passed.begin(), passed.end());
    zrbench::Child run(arguments);
    std::string line;
    Row row;
    while (run.readLine(line)) {
      if (line.rfind("RESULT ", 0) == 0) {
        row = {zrbench::Field(line, "entries"), zrbench::Field(line, "seconds"), zrbench::Field(line, "rss")};
      } else {
        std::printf("%s\n", line.c_str());
      }
    }
    if (run.stop(0) != 0 || row.rss.empty()) return 1;
    rows.push_back(row);
  }
  std::printf("\n%12s %10s %14s\n", "entries", "walk s", "peak RSS MiB");
  for (const Row& row : rows) {
    std::printf("%12s %10s %14s\n", row.entries.c_str(), row.seconds.c_str(), row.rss.c_str());
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  unsigned long long entries = 0;
  int rounds = 3, pageSize = 0;
  ZrLibrarySettings settings;
  std::vector<std::string> passed;  // to the runs of each size
  for (int i = 1; i < argc; ++i) {
    const bool hasValue = i + 1 < argc;
    if (hasValue && !std::strcmp(argv[i], "--entries")) {
      entries = std::strtoull(argv[++i], nullptr, 10);
    } else if (hasValue && !std::strcmp(argv[i], "--rounds")) {
      rounds = std::atoi(argv[++i]);
    } else if (hasValue && !std::strcmp(argv[i], "--page-size")) {
      pageSize = std::atoi(argv[++i]);
    } else if (hasValue && !std::strcmp(argv[i], "--record")) {
      settings.recordingFile = argv[++i];  // the cost of recording the walks
    } else if (!std::strcmp(argv[i], "--anonymise")) {
      settings.recordingAnonymised = true;
    } else if (hasValue && !std::strcmp(argv[i], "--names") &&
               (!std::strcmp(argv[i + 1], "exact") || !std::strcmp(argv[i + 1], "repaired"))) {
      passed = {argv[i], argv[i + 1]};  // the runs of each size read names the same way
      if (!std::strcmp(argv[++i], "exact")) settings.changeListNames = ZrLibrarySettings::ChangeListNames::Exact;
    } else {
      std::fprintf(stderr, "usage: %s [--entries N [--page-size P] [--names repaired|exact]] [--rounds R] [--record FILE [--anonymise]]\n",
                   argv[0]);
      return 2;
    }
  }
  if (rounds <= 0) return 2;
  ZrLibrarySetSettings(settings);
  signal(SIGPIPE, SIG_IGN);
  try {
    return entries ? RunWalks(ZR_ARRAY_SIMULATOR, entries, rounds, pageSize) : Drive(rounds, passed);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_changelist_walk: %s\n", error.what());
    return 1;
  }
}
