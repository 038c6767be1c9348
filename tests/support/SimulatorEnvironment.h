// The array simulator as a GoogleTest global environment: one simulator per test binary, on a
// loopback address of the binary's own (127.0.0.2, 127.0.0.3, ...) and the array's port 8088,
// so that binaries run side by side under `ctest -j`.
//
// Install it once per binary, before RUN_ALL_TESTS, either by compiling the binary with
// ZR_SIMULATOR_ADDRESS="127.0.0.5" (this header then installs it by itself), or by calling
// zrtest::SimulatorEnvironment::Install("127.0.0.5"). Environments set up in the order they
// were installed, so one installed later can rely on caCertPath() in its SetUp().
//
// Register each such binary with one add_test(), not gtest_discover_tests(): tests of one
// binary running as parallel processes would all claim the same address.
#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "ArraySimulator.h"

namespace zrtest {

class SimulatorEnvironment : public ::testing::Environment {
 public:
  explicit SimulatorEnvironment(arraysim::SimulatorOptions options);

  // Starts the simulator; a failure to start fails every test of the binary.
  void SetUp() override;
  void TearDown() override;

  arraysim::ArraySimulator& simulator();
  const std::string& caCertPath();
  const std::string& address() const { return options_.address; }
  // State back to the options' seed; sessions, recordings and faults dropped.
  void reset();

  // Registers a new environment with GoogleTest, which owns it.
  static SimulatorEnvironment* Install(arraysim::SimulatorOptions options);
  static SimulatorEnvironment* Install(const std::string& address);
  // The installed environment; fails the calling test when there is none.
  static SimulatorEnvironment& Current();

 private:
  arraysim::SimulatorOptions options_;
  std::unique_ptr<arraysim::ArraySimulator> simulator_;
};

// Fixture base for tests against the simulator: each test starts from a reset simulator.
class SimulatorTest : public ::testing::Test {
 protected:
  void SetUp() override { SimulatorEnvironment::Current().reset(); }
  arraysim::ArraySimulator& sim() { return SimulatorEnvironment::Current().simulator(); }
};

#ifdef ZR_SIMULATOR_ADDRESS
inline SimulatorEnvironment* const kInstalledSimulatorEnvironment = SimulatorEnvironment::Install(ZR_SIMULATOR_ADDRESS);
#endif

}  // namespace zrtest
