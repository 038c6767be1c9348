// The examples' way to run against the bundled array simulator instead of a real array.
#pragma once

#include <iostream>
#include <memory>
#include <string>

#include "ArraySimulator.h"
#include "ZRLibCurlOptions.h"

// Starts the simulator at options.address and points the job at it: the TLS settings trust its
// CA (verification stays on) and the credentials are its default account.
inline std::unique_ptr<arraysim::ArraySimulator> startBundledSimulator(const arraysim::SimulatorOptions& options,
                                                                       ZRLibCurlOptions& tls, std::string& host,
                                                                       std::string& user, std::string& password) {
  auto simulator = std::make_unique<arraysim::ArraySimulator>(options);
  simulator->start();
  std::cout << "array simulator listening on " << simulator->baseUrl() << "\n";
  tls.caBundlePath = simulator->caCertPath();
  host = options.address;
  user = arraysim::SimulatorOptions::kDefaultUser;
  password = arraysim::SimulatorOptions::kDefaultPassword;
  return simulator;
}
