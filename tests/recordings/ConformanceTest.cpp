// Each recording of this folder replayed, its family's scenario run through the library against
// it: the operations answer as they did when it was recorded, with the recorded requests in
// recorded order, none left over and none the recording lacks.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "ArraySimulator.h"
#include "Scenario.h"
#include "ZRLibCurlOptions.h"
#include "replay/ReplayServer.h"

namespace {

const char kAddress[] = "127.0.0.63";

std::string ReadFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

class Conformance : public ::testing::TestWithParam<std::string> {};

TEST_P(Conformance, ReplayAnswersAsRecorded) {
  const auto& scenario = conformance::FindScenario(GetParam());
  const std::string stem = std::string(ZR_RECORDINGS_DIR) + "/" + scenario.family;
  const std::string recording = ReadFile(stem + ".jsonl");
  ASSERT_FALSE(recording.empty()) << stem << ".jsonl is missing: run record-all";
  // What the simulator would have let out if the recorder leaked it.
  EXPECT_EQ(recording.find(arraysim::SimulatorOptions::kDefaultPassword), std::string::npos);
  EXPECT_EQ(recording.find(arraysim::SimulatorOptions().deviceId), std::string::npos);

  arraysim::SimulatorOptions options;
  options.address = kAddress;
  options.threads = 2;
  std::ostringstream diagnostics;
  std::istringstream lines(recording);
  arraysim::ReplayServer replay(options, arraysim::ParseRecording(lines), diagnostics);
  replay.start();
  ZRLibCurlOptions tls;
  tls.caBundlePath = replay.caCertPath();
  ZRLibCurlSetOptions(tls);
  const auto results = conformance::RunScenario(scenario, kAddress, replay.deviceId());
  ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections before the replay stops

  EXPECT_EQ(nlohmann::json::parse(results.dump()), nlohmann::json::parse(ReadFile(stem + ".results.json")));
  const auto summary = replay.summary();
  EXPECT_TRUE(summary.complete() && summary.inOrder) << arraysim::DescribeReplay(summary);
  EXPECT_EQ(diagnostics.str(), "");
}

INSTANTIATE_TEST_SUITE_P(Families, Conformance,
                         ::testing::Values("inventory", "shares", "lun-presentation", "provisioning"),
                         [](const auto& family) {
                           std::string name = family.param;
                           for (char& c : name) c = c == '-' ? '_' : c;
                           return name;
                         });

}  // namespace
