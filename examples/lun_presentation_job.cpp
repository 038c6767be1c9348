// Presents a LUN snapshot to a backup host on the bundled simulator and withdraws it again; the
// array ends exactly as it began.
//
//   lun_presentation_job [--address 127.0.0.1]
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "ArraySimulator.h"
#include "LunPresentation.h"
#include "ZRLibCurlOptions.h"

int main(int argc, char** argv) {
  CLI::App app("Present a LUN snapshot to a backup host and withdraw it, on the array simulator");
  std::string address = "127.0.0.1";
  app.add_option("--address", address, "Loopback address of the simulator (port 8088)")->capture_default_str();
  CLI11_PARSE(app, argc, argv);

  arraysim::SimulatorOptions options;
  options.address = address;
  arraysim::ArraySimulator simulator(options);
  simulator.start();
  ZRLibCurlOptions tls;  // certificate and host name are always verified
  tls.caBundlePath = simulator.caCertPath();
  ZRLibCurlSetOptions(tls);

  // The activated snapshot LUN and the backup host's group, as the job before this one left them.
  LunPresentation presentation;
  presentation.snapshotLunId = simulator.store().insert(
      "snapshot", {{"NAME", "nightly"}, {"PARENTID", "9"}, {"PARENTNAME", "db"}, {"RUNNINGSTATUS", "43"}});
  presentation.hostGroupId = simulator.store().insert("hostgroup", {{"NAME", "backup-hosts"}});
  presentation.name = "backup-nightly";
  const auto before = simulator.store().dump();

  int status = 0;
  {
    ZrManageHuawei array(1);
    if (!array.createSession(arraysim::SimulatorOptions::kDefaultUser, arraysim::SimulatorOptions::kDefaultPassword,
                             address)) {
      std::cerr << "login failed\n";
      return 1;
    }
    const CXoError result = presentAndWithdraw(array, presentation, [&] {
      std::cout << "presented: " << simulator.store().count("mappingview") << " mapping view, "
                << simulator.store().count("lungroup") << " LUN group\n";
    });
    if (result.IsError()) {
      std::cerr << "presentation failed: " << result.AsString() << "\n";
      status = 1;
    }
  }
  ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections before the simulator stops
  if (simulator.store().dump() != before) {
    std::cerr << "the array's state differs after withdrawal:\n" << simulator.store().dump().dump(2) << "\n";
    status = 1;
  }
  if (status == 0) std::cout << "withdrawn; the array is as it was\n";
  return status;
}
