// A recording served over HTTPS on the simulator's options: address, port, certificates and
// worker threads as an ArraySimulator takes them; its accounts, seed and page size do not apply.
//
//   arraysim::ReplayServer replay(options, arraysim::LoadRecording("inventory.jsonl"), std::cerr);
//   replay.start();
//   ... a client logs in at replay.address():8088 trusting replay.caCertPath() ...
//   if (!replay.summary().complete()) ...
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "ArraySimulator.h"
#include "replay/ReplayEndpoint.h"

namespace arraysim {

class ReplayServer {
 public:
  ReplayServer(SimulatorOptions options, Recording recording, std::ostream& diagnostics,
               std::function<void()> onUnmatched = {});
  ~ReplayServer();
  ReplayServer(const ReplayServer&) = delete;
  ReplayServer& operator=(const ReplayServer&) = delete;

  // Makes or loads the certificates and listens; throws std::runtime_error as ArraySimulator does.
  void start();
  void stop();

  const std::string& address() const { return options_.address; }
  int port() const { return port_; }
  const std::string& caCertPath() const { return caCertPath_; }
  const std::string& deviceId() const { return endpoint_.deviceId(); }
  ReplaySummary summary() const { return endpoint_.summary(); }

 private:
  SimulatorOptions options_;
  ReplayEndpoint endpoint_;
  std::unique_ptr<HttpsServer> server_;
  std::string ownedDirectory_;  // removed with the server
  std::string caCertPath_;
  int port_ = 0;
};

}  // namespace arraysim
