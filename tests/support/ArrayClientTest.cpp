#include "ArrayClientTest.h"

#include <gtest/gtest.h>

#include "ZRLibCurlOptions.h"

namespace zrtest {

void ArrayClientTest::SetUp() {
  SimulatorTest::SetUp();
  // Trust the simulator's own CA; a change of options starts a fresh connection pool, so it is
  // made only when the CA differs.
  ZRLibCurlOptions options = ZRLibCurlGetOptions();
  const std::string& ca = SimulatorEnvironment::Current().caCertPath();
  if (options.caBundlePath != ca) {
    options.caBundlePath = ca;
    ZRLibCurlSetOptions(options);
  }
}

std::string ArrayClientTest::host() { return SimulatorEnvironment::Current().address(); }

std::unique_ptr<ZrManageHuawei> ArrayClientTest::facade(unsigned long long jobId) {
  auto array = std::make_unique<ZrManageHuawei>(jobId);
  array->setCredentials(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword,
                        host());
  return array;
}

std::unique_ptr<ZrManageHuawei> ArrayClientTest::loggedInFacade(unsigned long long jobId) {
  auto array = facade(jobId);
  EXPECT_TRUE(array->createSession()) << "login to the simulator failed";
  sim().requests().clear();
  return array;
}

std::vector<arraysim::RecordedRequest> ArrayClientTest::requests() { return sim().requests().all(); }

arraysim::RecordedRequest ArrayClientTest::lastRequest() {
  const auto all = requests();
  if (all.empty()) {
    ADD_FAILURE() << "no request reached the simulator";
    return arraysim::RecordedRequest();
  }
  return all.back();
}

std::vector<std::string> ArrayClientTest::requestLines() {
  std::vector<std::string> lines;
  for (const auto& request : requests()) lines.push_back(request.method + " " + request.resource);
  return lines;
}

std::string ArrayClientTest::devicePath() { return "/deviceManager/rest/" + sim().deviceId() + "/"; }

}  // namespace zrtest
