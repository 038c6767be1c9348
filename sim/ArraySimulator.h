// A Huawei storage array on a loopback address, for tests, examples and benchmarks: the JSON
// over HTTPS management interface under /deviceManager/rest/, with its session rules, error
// envelope and resources held in memory.
//
//   arraysim::SimulatorOptions options;
//   options.address = "127.0.0.3";
//   arraysim::ArraySimulator sim(options);
//   sim.start();                                   // listening when it returns
//   trust(sim.caCertPath());                       // the client verifies the server as usual
//   auto fs = sim.fileSystems().create("fs1");
//   sim.files(fs).writeFile("/a/b.txt", 10);
//   auto base = sim.fileSystemSnapshots().take(fs, "base");
//   sim.files(fs).remove("/a/b.txt");
//   auto incremental = sim.fileSystemSnapshots().take(fs, "incremental");
//   auto truth = sim.changeLists().difference(base, incremental);
//   sim.faults().add(arraysim::FaultRule::On("GET", "system/").htmlPage());
//   for (const auto& request : sim.requests().all()) ...
//
// All members are safe to call from a test while clients talk to the simulator.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "AnswerStyles.h"
#include "ArrayCodes.h"
#include "ArrayModel.h"
#include "Faults.h"
#include "Generation.h"
#include "RequestLog.h"
#include "Sessions.h"

namespace arraysim {

class ArrayEndpoint;
class AdminApi;
class HttpsServer;
class Router;

struct SimulatorOptions {
  std::string address = "127.0.0.1";
  int port = 8088;  // 0: any free port, see port()
  std::string deviceId = "2102353GTH10L8000007";
  // Empty: the one account kDefaultUser / kDefaultPassword.
  std::vector<Account> accounts;
  // Where the CA and the server certificate are written; empty: a fresh temporary directory,
  // removed when the simulator is destroyed.
  std::string certificateDirectory;
  // Given all three, these are served instead of making new ones.
  std::string caCertPath;
  std::string serverCertPath;
  std::string serverKeyPath;
  // Applied at construction and again at every reset(); see Seed.h for the format.
  nlohmann::json seed;
  std::size_t changeListPageSize = 1000;
  std::size_t threads = 16;
  bool recordRequests = true;

  static constexpr const char* kDefaultUser = "admin";
  static constexpr const char* kDefaultPassword = "Admin@storage1";
};

class ArraySimulator {
 public:
  explicit ArraySimulator(SimulatorOptions options = {});
  ~ArraySimulator();
  ArraySimulator(const ArraySimulator&) = delete;
  ArraySimulator& operator=(const ArraySimulator&) = delete;

  // Makes or loads the certificates and listens. Throws std::runtime_error when the address
  // cannot be bound or the certificates cannot be made.
  void start();
  void stop();
  bool running() const;

  const std::string& address() const { return options_.address; }
  int port() const { return port_; }
  std::string baseUrl() const;  // https://<address>:<port>
  const std::string& deviceId() const { return options_.deviceId; }
  const std::string& caCertPath() const { return certificates_.caCertPath; }
  const std::string& serverCertPath() const { return certificates_.serverCertPath; }

  // The array's state, one family of resources each.
  ArrayIdentityResources& system() { return model_->system(); }
  FileSystemResources& fileSystems() { return model_->fileSystems(); }
  InterfaceResources& interfaces() { return model_->interfaces(); }
  // Typed records and associations of the resources declared as rows (see ResourceTable.h):
  // seed with insert() and associate(), read with get(), list() and count(), and compare
  // whole states with dump().
  ObjectStore& store() { return model_->store(); }
  ResourceTable& resources() { return model_->resources(); }
  FileSystemSnapshotResources& fileSystemSnapshots() { return model_->fileSystemSnapshots(); }
  ChangeListResources& changeLists() { return model_->changeLists(); }
  LiveFiles files(const std::string& fileSystemId) { return model_->fileSystems().files(fileSystemId); }
  ArrayModel& model() { return *model_; }

  RequestLog& requests() { return log_; }
  FaultInjector& faults() { return faults_; }
  AnswerStyles& answerStyles() { return styles_; }
  SessionRegistry& sessions() { return sessions_; }

  // Adds what the description holds to the current state (Seed.h).
  void seed(const nlohmann::json& description);
  GeneratedSnapshotPair generateSnapshotPair(const GenerationPlan& plan);
  // Back to the state of construction: the options' seed and accounts, no sessions, no
  // recorded requests, no faults, default answer styles. The server keeps running.
  void reset();

 private:
  std::vector<Account> configuredAccounts() const;

  SimulatorOptions options_;
  std::unique_ptr<ArrayModel> model_;
  std::unique_ptr<Router> router_;
  RequestLog log_;
  FaultInjector faults_;
  AnswerStyles styles_;
  SessionRegistry sessions_;
  std::unique_ptr<ArrayEndpoint> endpoint_;
  std::unique_ptr<AdminApi> admin_;
  std::unique_ptr<HttpsServer> server_;
  struct Certificates {
    std::string directory;
    std::string caCertPath;
    std::string serverCertPath;
    std::string serverKeyPath;
  } certificates_;
  bool ownsCertificateDirectory_ = false;
  int port_ = 0;
};

}  // namespace arraysim
