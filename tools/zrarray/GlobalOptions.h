// The options that come before (or after) any subcommand: where the array is, who logs in, how the
// connection is trusted, how long to wait, how much to log and how to print.
#pragma once

#include <string>

#include <CLI/CLI.hpp>

#include "Output.h"
#include "ZRLibCurlOptions.h"

namespace zrarray {

struct GlobalOptions {
  std::string address;
  std::string user;
  std::string vstore;  // empty: the login's
  // The password never comes from argv, which other users see in `ps`.
  std::string passwordFile;
  bool passwordStdin = false;
  std::string passwordEnv;

  std::string caBundle;
  std::string pin;
  bool insecure = false;
  double connectTimeoutSeconds = 10;
  double timeoutSeconds = 300;

  // Below -1: no line of the library at all; the tool's one line per failure says what and why.
  static constexpr int kNoLibraryLines = -2;
  int logLevel = kNoLibraryLines;
  Format format = Format::Json;
  std::string recordFile;  // empty: no recording
  bool anonymise = false;

  bool simulator = false;
  std::string simulatorAddress = "127.0.0.1";

  void addTo(CLI::App& app);
  // Address, user and CA bundle from ZRARRAY_ADDRESS, ZRARRAY_USER and ZRARRAY_CA_BUNDLE where the
  // command line gave none; not for --simulator, whose array is its own.
  void readEnvironment();
  ZRLibCurlOptions transport() const;
  bool passwordSourceGiven() const { return !passwordFile.empty() || passwordStdin || !passwordEnv.empty(); }
};

}  // namespace zrarray
