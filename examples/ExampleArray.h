// Where an example's job runs: the bundled array simulator, started in the process, or the array
// that --host names. Either way the run can be recorded, and the recording served again by
// `huawei-array-sim --replay`, which the job then takes for an array like any other:
//
//   lun_backup_job --record run.jsonl                              (the bundled simulator)
//   huawei-array-sim --address 127.0.0.2 --replay run.jsonl --strict --cert-dir replay-ca &
//   ZR_ARRAY_PASSWORD=any lun_backup_job --host 127.0.0.2 --user admin --ca-bundle replay-ca/ca.pem
//
// What the job prints on standard output is what it found on the array; what only the bundled
// simulator does (its address, the files it changes) goes to standard error, so that both runs
// print the same.
#pragma once

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "ArraySimulator.h"

class ExampleArray {
 public:
  ExampleArray() = default;
  // Drops pooled connections before the simulator stops.
  ~ExampleArray();
  ExampleArray(const ExampleArray&) = delete;
  ExampleArray& operator=(const ExampleArray&) = delete;

  // Whether the bundled simulator runs without --host, or only when --with-simulator asks for it.
  enum Simulator { SimulatorByDefault, SimulatorOnRequest };

  // --address (the simulator's), --host, --user, --ca-bundle, --record, --anonymise, and
  // --with-simulator when the simulator runs on request.
  void addOptions(CLI::App& app, Simulator simulator = SimulatorByDefault);

  bool simulated() const { return host_.empty(); }
  // Turns recording on when asked, then trusts the array's CA and, when simulated, starts the
  // simulator on `options` (its address is --address). The password comes from
  // ZR_ARRAY_PASSWORD or a prompt. Throws std::runtime_error with the reason, also when neither
  // --host nor a requested simulator names the array.
  void connect(arraysim::SimulatorOptions options);

  // The started simulator; nullptr against another array.
  arraysim::ArraySimulator* simulator() const { return simulator_.get(); }
  const std::string& host() const { return simulated() ? address_ : host_; }
  const std::string& user() const { return user_; }
  const std::string& password() const { return password_; }

 private:
  std::string address_ = "127.0.0.1";
  std::string host_;
  std::string user_;
  std::string caBundle_;
  std::string recordFile_;
  bool anonymise_ = false;
  bool simulatorOnRequest_ = false;
  bool withSimulator_ = false;
  std::string password_;
  std::unique_ptr<arraysim::ArraySimulator> simulator_;
};
