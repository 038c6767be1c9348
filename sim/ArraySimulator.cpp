#include "ArraySimulator.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

#include "AdminApi.h"
#include "ArrayEndpoint.h"
#include "LocalCertificates.h"
#include "Seed.h"
#include "http/HttpsServer.h"
#include "http/Router.h"

namespace arraysim {

ArraySimulator::ArraySimulator(SimulatorOptions options)
    : options_(std::move(options)),
      model_(std::make_unique<ArrayModel>(options_.deviceId)),
      router_(std::make_unique<Router>()),
      sessions_(configuredAccounts()) {
  model_->registerRoutes(*router_);
  endpoint_ = std::make_unique<ArrayEndpoint>(
      ArrayEndpoint::Parts{options_.deviceId, log_, faults_, styles_, sessions_, *router_, model_->mutex()});
  admin_ = std::make_unique<AdminApi>(*this);
  reset();
}

ArraySimulator::~ArraySimulator() {
  stop();
  if (ownsCertificateDirectory_) {
    std::error_code ignored;
    std::filesystem::remove_all(certificates_.directory, ignored);
  }
}

std::vector<Account> ArraySimulator::configuredAccounts() const {
  if (!options_.accounts.empty()) return options_.accounts;
  return {Account{SimulatorOptions::kDefaultUser, SimulatorOptions::kDefaultPassword, ""}};
}

void ArraySimulator::start() {
  if (server_) return;
  if (certificates_.caCertPath.empty()) {
    if (!options_.caCertPath.empty() && !options_.serverCertPath.empty() && !options_.serverKeyPath.empty()) {
      certificates_ = {"", options_.caCertPath, options_.serverCertPath, options_.serverKeyPath};
    } else {
      auto directory = options_.certificateDirectory;
      if (directory.empty()) {
        std::string pattern = (std::filesystem::temp_directory_path() / "arraysim-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a directory for certificates");
        directory = pattern;
        ownsCertificateDirectory_ = true;
      }
      const auto files = MakeCertificates(directory, options_.address);
      certificates_ = {files.directory, files.caCertPath, files.serverCertPath, files.serverKeyPath};
    }
  }
  auto server = std::make_unique<HttpsServer>(
      certificates_.serverCertPath, certificates_.serverKeyPath, options_.threads,
      [this](const IncomingRequest& request) {
        return request.target.rfind(AdminApi::kRoot, 0) == 0 ? admin_->handle(request) : endpoint_->handle(request);
      });
  port_ = server->start(options_.address, options_.port);
  server_ = std::move(server);
}

void ArraySimulator::stop() {
  if (!server_) return;
  server_->stop();
  server_.reset();
}

bool ArraySimulator::running() const { return server_ != nullptr; }

std::string ArraySimulator::baseUrl() const { return "https://" + options_.address + ":" + std::to_string(port_); }

void ArraySimulator::seed(const nlohmann::json& description) { ApplySeed(*model_, description); }

GeneratedSnapshotPair ArraySimulator::generateSnapshotPair(const GenerationPlan& plan) {
  return GenerateSnapshotPair(*model_, plan);
}

void ArraySimulator::reset() {
  {
    std::lock_guard<std::recursive_mutex> lock(model_->mutex());
    model_->clear();
    model_->changeLists().setPageSize(options_.changeListPageSize);
    if (!options_.seed.is_null()) ApplySeed(*model_, options_.seed);
  }
  sessions_.closeAll();
  sessions_.replaceAccounts(configuredAccounts());
  log_.clear();
  log_.setEnabled(options_.recordRequests);
  faults_.clear();
  styles_.clear();
}

}  // namespace arraysim
