// Fixture of the end-to-end suites: a reset simulator, the platform trusting its CA (never
// switching verification off), and facades pointed at it.
//
//   class SnapshotOperations : public zrtest::ArrayClientTest {};
//   TEST_F(SnapshotOperations, ...) {
//     auto array = loggedInFacade();
//     ... array->createFileSystemSnapshot(...) ...
//     EXPECT_EQ(lastRequest().target, "/deviceManager/rest/<dev>/fssnapshot");
//   }
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "SimulatorEnvironment.h"
#include "ZrManageHuawei.h"

namespace zrtest {

// A file system for a scene: its identifier, its vStore ("" for none) and its health status.
inline arraysim::FileSystemInfo FileSystemOf(const std::string& id, const std::string& vstoreId = "",
                                             const std::string& health = "1") {
  arraysim::FileSystemInfo info;
  info.id = id;
  info.vstoreId = vstoreId;
  info.healthStatus = health;
  return info;
}

// A LUN for pool "0", complete but for what a test takes away.
inline _HuaweiLUNInfo NewLun(const std::string& name) {
  _HuaweiLUNInfo lun;
  lun.name = name;
  lun.capacity = "2097152";
  lun.allocType = HuaweiApiValue::ALLOC_TYPE_THIN;
  lun.parentId = "0";
  lun.owningController = "0A";
  return lun;
}

class ArrayClientTest : public SimulatorTest {
 protected:
  static constexpr unsigned long long kJobId = 4242;

  void SetUp() override;

  // The simulator's address, as the facade's control host.
  std::string host();
  // A facade with the simulator's default account set but no session.
  std::unique_ptr<ZrManageHuawei> facade(unsigned long long jobId = kJobId);
  // A facade that has logged in; the recordings are cleared after the login, so that requests()
  // holds only what the test sends.
  std::unique_ptr<ZrManageHuawei> loggedInFacade(unsigned long long jobId = kJobId);

  // What reached the simulator since the last clear, in order.
  std::vector<arraysim::RecordedRequest> requests();
  arraysim::RecordedRequest lastRequest();
  // "METHOD resource" of each request, the resource as after the device identifier.
  std::vector<std::string> requestLines();
  // The path prefix of every request after login: "/deviceManager/rest/<device id>/".
  std::string devicePath();
};

}  // namespace zrtest
