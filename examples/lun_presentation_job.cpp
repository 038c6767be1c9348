// Presents a LUN snapshot to a backup host and withdraws it again; on the bundled simulator the
// job also checks that the array ends exactly as it began.
//
//   lun_presentation_job [--address 127.0.0.1] [--record run.jsonl]
//   ZR_ARRAY_PASSWORD=... lun_presentation_job --host 10.0.0.5 --user admin --snapshot-lun-id 12 --host-group-id 3
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "ExampleArray.h"
#include "LunPresentation.h"

int main(int argc, char** argv) {
  CLI::App app("Present a LUN snapshot to a backup host and withdraw it");
  ExampleArray target;
  // The activated snapshot LUN and the backup host's group, as the job before this one left them.
  LunPresentation presentation;
  presentation.snapshotLunId = "12";
  presentation.hostGroupId = "3";
  presentation.name = "backup-nightly";
  target.addOptions(app);
  app.add_option("--snapshot-lun-id", presentation.snapshotLunId, "Activated snapshot LUN to present")
      ->capture_default_str();
  app.add_option("--host-group-id", presentation.hostGroupId, "Host group of the backup host")->capture_default_str();
  app.add_option("--name", presentation.name, "Name of the LUN group and mapping view made")->capture_default_str();
  CLI11_PARSE(app, argc, argv);

  try {
    target.connect(arraysim::SimulatorOptions());
  } catch (const std::exception& error) {
    std::cerr << "lun_presentation_job: " << error.what() << "\n";
    return 1;
  }
  nlohmann::json before;
  if (auto* simulator = target.simulator()) {
    simulator->store().insert("snapshot", {{"ID", presentation.snapshotLunId}, {"NAME", "nightly"}, {"PARENTID", "9"},
                                           {"PARENTNAME", "db"}, {"RUNNINGSTATUS", "43"}});
    simulator->store().insert("hostgroup", {{"ID", presentation.hostGroupId}, {"NAME", "backup-hosts"}});
    before = simulator->store().dump();
  }

  int status = 0;
  {
    ZrManageHuawei array(1);
    if (!array.createSession(target.user(), target.password(), target.host())) {
      std::cerr << "login failed\n";
      return 1;
    }
    const CXoError result = presentAndWithdraw(array, presentation, [&] {
      std::cout << "presented snapshot LUN " << presentation.snapshotLunId << " to host group "
                << presentation.hostGroupId << " as " << presentation.name << "\n";
    });
    if (result.IsError()) {
      std::cerr << "presentation failed: " << result.AsString() << "\n";
      status = 1;
    }
  }
  if (target.simulator() && target.simulator()->store().dump() != before) {
    std::cerr << "the array's state differs after withdrawal:\n" << target.simulator()->store().dump().dump(2) << "\n";
    status = 1;
  }
  if (status == 0) std::cout << "withdrawn\n";
  return status;
}
