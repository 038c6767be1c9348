#include "DemoArray.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "ArraySimulator.h"

namespace zrarray {

namespace {

// File system 1 "projects" holds snapshots "monday" and "tuesday" with a few changes between
// them; small pages make the walk take several. Pool "pool0" holds LUN 1 "db-data".
nlohmann::json DemoSeed() {
  return nlohmann::json::parse(R"({
    "system": {"NAME": "demo-array", "PRODUCTVERSION": "V600R005C20"},
    "ndmp": [{"isEnabled": "true", "ip": "192.168.100.21", "port": "10000", "version": "4"}],
    "vstores": [{"ID": "1", "NAME": "tenant-a", "RUNNINGSTATUS": "1"}],
    "lifs": [{"NAME": "lif-ndmp", "IPV4ADDR": "192.168.100.21"},
             {"NAME": "lif-nfs", "IPV4ADDR": "192.168.100.22", "IPV6ADDR": "fd00::22"}],
    "filesystems": [
      {"NAME": "projects", "steps": [
        {"write": "/reports/2023.txt", "size": 1200}, {"write": "/reports/2024.txt", "size": 800},
        {"write": "/reports/draft.txt", "size": 10}, {"write": "/src/main.cpp", "size": 4000},
        {"mkdir": "/tmp"}, {"write": "/tmp/build.log", "size": 99},
        {"snapshot": "monday"},
        {"write": "/reports/2023.txt", "size": 1500}, {"remove": "/reports/draft.txt"},
        {"write": "/reports/plan (v2).txt", "size": 42}, {"mkdir": "/photos/summer"},
        {"write": "/photos/summer/beach.jpg", "size": 300000}, {"remove": "/tmp"},
        {"snapshot": "tuesday"}]},
      {"NAME": "home", "generate": {"files": 200, "filesPerDirectory": 50}}],
    "changeListPageSize": 3,
    "objects": {
      "storagepool": [{"ID": "0", "NAME": "pool0", "PARENTID": "0"}],
      "lun": [{"ID": "1", "NAME": "db-data", "PARENTID": "0", "RUNNINGSTATUS": "27", "CAPACITY": "2097152",
               "ALLOCTYPE": "1", "OWNINGCONTROLLER": "0A", "SPLITMIRRORIDS": "[]"}]}
  })");
}

// Why the address's port cannot be had, as the system says it, or empty when it can.
std::string WhyNotFree(const std::string& address, int port) {
  sockaddr_in where{};
  where.sin_family = AF_INET;
  where.sin_port = htons(static_cast<uint16_t>(port));
  if (inet_pton(AF_INET, address.c_str(), &where.sin_addr) != 1) return "not an IPv4 address";
  const int probe = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (probe < 0) return std::strerror(errno);
  const int one = 1;
  setsockopt(probe, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
  const bool bound = bind(probe, reinterpret_cast<const sockaddr*>(&where), sizeof where) == 0;
  const std::string reason = bound ? "" : std::strerror(errno);
  close(probe);
  return reason;
}

}  // namespace

DemoArray::DemoArray(const std::string& address, const std::string& certificateDirectory) {
  arraysim::SimulatorOptions options;
  options.address = address;
  options.certificateDirectory = certificateDirectory;
  options.seed = DemoSeed();
  options.threads = 2;
  simulator_ = std::make_unique<arraysim::ArraySimulator>(options);
  try {
    simulator_->start();
  } catch (const std::runtime_error& error) {
    const std::string why = WhyNotFree(address, options.port);
    if (why.empty()) throw;
    throw std::runtime_error("port " + std::to_string(options.port) + " of " + address + ": " + why +
                             " (another --simulator run? --simulator-address 127.0.0.2 takes another loopback "
                             "address)");
  }
}

DemoArray::~DemoArray() = default;

const std::string& DemoArray::address() const { return simulator_->address(); }
const std::string& DemoArray::caCertPath() const { return simulator_->caCertPath(); }
const char* DemoArray::user() { return arraysim::SimulatorOptions::kDefaultUser; }
const char* DemoArray::password() { return arraysim::SimulatorOptions::kDefaultPassword; }

}  // namespace zrarray
