#include "DemoArray.h"

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

}  // namespace

DemoArray::DemoArray(const std::string& address, const std::string& certificateDirectory) {
  arraysim::SimulatorOptions options;
  options.address = address;
  options.certificateDirectory = certificateDirectory;
  options.seed = DemoSeed();
  options.threads = 2;
  simulator_ = std::make_unique<arraysim::ArraySimulator>(options);
  simulator_->start();
}

DemoArray::~DemoArray() = default;

const std::string& DemoArray::address() const { return simulator_->address(); }
const std::string& DemoArray::caCertPath() const { return simulator_->caCertPath(); }
const char* DemoArray::user() { return arraysim::SimulatorOptions::kDefaultUser; }
const char* DemoArray::password() { return arraysim::SimulatorOptions::kDefaultPassword; }

}  // namespace zrarray
