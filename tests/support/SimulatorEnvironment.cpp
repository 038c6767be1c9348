#include "SimulatorEnvironment.h"

#include <stdexcept>

namespace zrtest {
namespace {

SimulatorEnvironment* installed = nullptr;

}  // namespace

SimulatorEnvironment::SimulatorEnvironment(arraysim::SimulatorOptions options) : options_(std::move(options)) {}

void SimulatorEnvironment::SetUp() {
  try {
    simulator_ = std::make_unique<arraysim::ArraySimulator>(options_);
    simulator_->start();
  } catch (const std::exception& error) {
    simulator_.reset();
    FAIL() << "the array simulator did not start on " << options_.address << ":" << options_.port << ": "
           << error.what();
  }
}

void SimulatorEnvironment::TearDown() { simulator_.reset(); }

arraysim::ArraySimulator& SimulatorEnvironment::simulator() {
  if (!simulator_) throw std::logic_error("the array simulator is not running");
  return *simulator_;
}

const std::string& SimulatorEnvironment::caCertPath() { return simulator().caCertPath(); }

void SimulatorEnvironment::reset() { simulator().reset(); }

SimulatorEnvironment* SimulatorEnvironment::Install(arraysim::SimulatorOptions options) {
  installed = new SimulatorEnvironment(std::move(options));
  ::testing::AddGlobalTestEnvironment(installed);
  return installed;
}

SimulatorEnvironment* SimulatorEnvironment::Install(const std::string& address) {
  arraysim::SimulatorOptions options;
  options.address = address;
  return Install(std::move(options));
}

SimulatorEnvironment& SimulatorEnvironment::Current() {
  if (installed == nullptr) throw std::logic_error("no SimulatorEnvironment was installed in this test binary");
  return *installed;
}

}  // namespace zrtest
