// Records one family's scenario against the simulator: DIRECTORY/FAMILY.jsonl holds the
// exchanges, DIRECTORY/FAMILY.results.json what the operations answered. One family per process,
// since the recording file is a setting of the process. record-all runs every family.
//
//   record_family inventory tests/recordings
#include <fstream>
#include <iostream>

#include "ArraySimulator.h"
#include "Scenario.h"
#include "TkLogSink.h"
#include "ZRLibCurlOptions.h"
#include "ZrLibrarySettings.h"

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: record_family FAMILY DIRECTORY\n";
    return 2;
  }
  tklog::SetMaxLevel(-1);  // the library's errors only: some operations fail on purpose
  try {
    const auto& scenario = conformance::FindScenario(argv[1]);
    const std::string stem = std::string(argv[2]) + "/" + scenario.family;
    ZrLibrarySettings settings;
    settings.recordingFile = stem + ".jsonl";
    ZrLibrarySetSettings(settings);

    arraysim::SimulatorOptions options;
    options.address = "127.0.0.62";
    options.seed = scenario.seed;
    options.threads = 2;
    arraysim::ArraySimulator simulator(options);
    simulator.start();
    ZRLibCurlOptions tls;
    tls.caBundlePath = simulator.caCertPath();
    ZRLibCurlSetOptions(tls);

    const auto results = conformance::RunScenario(scenario, options.address, simulator.deviceId());
    ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections before the simulator stops
    std::ofstream(stem + ".results.json") << results.dump(2) << "\n";
    std::cout << scenario.family << ": " << results.size() << " operations, " << simulator.requests().all().size()
              << " requests\n";
    return results.at(0).at("ok").get<bool>() ? 0 : 1;
  } catch (const std::exception& error) {
    std::cerr << "record_family: " << error.what() << std::endl;
    return 1;
  }
}
