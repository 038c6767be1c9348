#include "replay/ReplayServer.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "LocalCertificates.h"
#include "http/HttpsServer.h"

namespace arraysim {

ReplayServer::ReplayServer(SimulatorOptions options, Recording recording, std::ostream& diagnostics,
                           std::function<void()> onUnmatched)
    : options_(std::move(options)), endpoint_(std::move(recording), diagnostics, std::move(onUnmatched)) {}

ReplayServer::~ReplayServer() {
  stop();
  if (!ownedDirectory_.empty()) {
    std::error_code ignored;
    std::filesystem::remove_all(ownedDirectory_, ignored);
  }
}

void ReplayServer::start() {
  if (server_) return;
  CertificateFiles files{"", options_.caCertPath, options_.serverCertPath, options_.serverKeyPath};
  if (files.caCertPath.empty() || files.serverCertPath.empty() || files.serverKeyPath.empty()) {
    auto directory = options_.certificateDirectory;
    if (directory.empty()) {
      std::string pattern = (std::filesystem::temp_directory_path() / "arraysim-XXXXXX").string();
      if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a directory for certificates");
      directory = ownedDirectory_ = pattern;
    }
    files = MakeCertificates(directory, options_.address);
  }
  caCertPath_ = files.caCertPath;
  auto server =
      std::make_unique<HttpsServer>(files.serverCertPath, files.serverKeyPath, options_.threads,
                                    [this](const IncomingRequest& request) { return endpoint_.handle(request); });
  port_ = server->start(options_.address, options_.port);
  server_ = std::move(server);
}

void ReplayServer::stop() {
  if (!server_) return;
  server_->stop();
  server_.reset();
}

}  // namespace arraysim
