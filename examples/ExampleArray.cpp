#include "ExampleArray.h"

#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include "ZRLibCurlOptions.h"
#include "ZrLibrarySettings.h"

namespace {

std::string readPassword() {
  if (const char* fromEnvironment = std::getenv("ZR_ARRAY_PASSWORD")) return fromEnvironment;
  std::string password;
  termios saved{};
  const bool terminal = isatty(STDIN_FILENO) && tcgetattr(STDIN_FILENO, &saved) == 0;
  if (terminal) {
    termios silent = saved;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(STDIN_FILENO, TCSANOW, &silent);
  }
  std::cerr << "Password: " << std::flush;
  std::getline(std::cin, password);
  if (terminal) {
    tcsetattr(STDIN_FILENO, TCSANOW, &saved);
    std::cerr << "\n";
  }
  if (password.empty()) throw std::runtime_error("no password (set ZR_ARRAY_PASSWORD or type it at the prompt)");
  return password;
}

}  // namespace

ExampleArray::~ExampleArray() { ZRLibCurlSetOptions(ZRLibCurlOptions()); }

void ExampleArray::addOptions(CLI::App& app, Simulator simulator) {
  app.add_option("--address", address_, "Loopback address of the bundled simulator (port 8088)")
      ->capture_default_str();
  auto* host = app.add_option("--host", host_, "Management address of an array to run against instead");
  app.add_option("--user", user_, "User name on that array (the password comes from ZR_ARRAY_PASSWORD or a prompt)")
      ->needs(host);
  app.add_option("--ca-bundle", caBundle_, "PEM file with the CA that signed that array's certificate")->needs(host);
  auto* record = app.add_option("--record", recordFile_, "Record every exchange with the array to this new file");
  app.add_flag("--anonymise", anonymise_, "Replace what identifies the array and its site in the recording")
      ->needs(record);
  simulatorOnRequest_ = simulator == SimulatorOnRequest;
  if (simulatorOnRequest_) {
    app.add_flag("--with-simulator", withSimulator_, "Run against the bundled array simulator, started here")
        ->excludes(host);
  }
}

void ExampleArray::connect(arraysim::SimulatorOptions options) {
  if (simulatorOnRequest_ && simulated() && !withSimulator_) {
    throw std::runtime_error("give --host and --user, or --with-simulator");
  }
  if (!recordFile_.empty()) {
    ZrLibrarySettings settings;
    settings.recordingFile = recordFile_;
    settings.recordingAnonymised = anonymise_;
    ZrLibrarySetSettings(settings);  // the file is made at the first login, which fails if it cannot be
  }
  ZRLibCurlOptions tls;  // certificate and host name are always verified
  if (simulated()) {
    options.address = address_;
    simulator_ = std::make_unique<arraysim::ArraySimulator>(options);
    simulator_->start();
    std::cerr << "array simulator listening on " << simulator_->baseUrl() << "\n";
    tls.caBundlePath = simulator_->caCertPath();
    user_ = arraysim::SimulatorOptions::kDefaultUser;
    password_ = arraysim::SimulatorOptions::kDefaultPassword;
  } else {
    if (user_.empty()) throw std::runtime_error("give --user with --host");
    tls.caBundlePath = caBundle_;  // empty: the system's CA store
    password_ = readPassword();
  }
  ZRLibCurlSetOptions(tls);
}
