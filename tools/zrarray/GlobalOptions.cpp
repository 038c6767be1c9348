#include "GlobalOptions.h"

#include <cstdlib>

namespace zrarray {

namespace {

long Milliseconds(double seconds) { return static_cast<long>(seconds * 1000.0); }

// A time-out: more than nothing, at most a day (beyond that a hung array is never noticed).
CLI::Validator Seconds() {
  return CLI::Validator(
      [](const std::string& text) {
        double seconds = 0;
        const bool number = CLI::detail::lexical_cast(text, seconds);
        return number && seconds >= 0.001 && seconds <= 86400
                   ? std::string()
                   : "'" + text + "' is not a number of seconds from 0.001 to 86400, such as 10 or 0.5";
      },
      "SECONDS");
}

void FromEnvironment(std::string& value, const char* name) {
  const char* given = std::getenv(name);
  if (value.empty() && given != nullptr) value = given;
}

}  // namespace

void GlobalOptions::addTo(CLI::App& app) {
  const char* const kArray = "Array";
  app.add_option("-a,--address", address, "Management address of the array (port 8088); or ZRARRAY_ADDRESS")
      ->group(kArray);
  app.add_option("-u,--user", user, "User name; or ZRARRAY_USER")->group(kArray);
  app.add_option("--vstore", vstore, "vStore identifier for the operations (default: the login's)")->group(kArray);

  const char* const kPassword = "Password (one of, never on the command line)";
  app.add_option("--password-file", passwordFile, "File holding the password; mode 0600 or stricter")
      ->check(CLI::ExistingFile)
      ->group(kPassword);
  app.add_flag("--password-stdin", passwordStdin, "Read the password from the first line of standard input")
      ->group(kPassword);
  app.add_option("--password-env", passwordEnv, "Name of the environment variable holding the password")
      ->group(kPassword);
  app.get_option("--password-file")->excludes("--password-stdin")->excludes("--password-env");
  app.get_option("--password-stdin")->excludes("--password-env");

  const char* const kTls = "Connection";
  app.add_option("--ca-bundle", caBundle,
                 "PEM file of the CA that signed the array's certificate (default: the system's); or "
                 "ZRARRAY_CA_BUNDLE")
      ->check(CLI::ExistingFile)
      ->group(kTls);
  app.add_option("--pin", pin, "Public-key pin of the array: sha256//<base64>[;sha256//...] or a key file")
      ->group(kTls);
  app.add_flag("--insecure", insecure, "Do not verify the array's certificate (labs only; logged as a warning)")
      ->excludes("--ca-bundle")
      ->group(kTls);
  app.add_option("--connect-timeout", connectTimeoutSeconds, "Seconds to wait for a connection")
      ->check(Seconds())
      ->capture_default_str()
      ->group(kTls);
  app.add_option("--timeout", timeoutSeconds, "Seconds one request may take")
      ->check(Seconds())
      ->capture_default_str()
      ->group(kTls);

  const char* const kOutput = "Output";
  app.add_option("--log-level", logLevel,
                 "Also the library's own log lines on standard error, up to this level: -1 errors, 0 progress, "
                 "3-4 detail, 5 requests (default: none, one line of the tool's per failure)")
      ->check(CLI::Range(-1, 7))
      ->group(kOutput);
  app.add_option_function<std::string>(
         "--format", [this](const std::string& name) { format = name == "table" ? Format::Table : Format::Json; },
         "json (for programs, default) or table (for people)")
      ->check(CLI::IsMember({"json", "table"}))
      ->group(kOutput);
  app.add_option("--record", recordFile,
                 "Record every exchange with the array to this new file, one JSON line each (mode 0600; "
                 "never the password, tokens or cookies)")
      ->check(CLI::NonexistentPath)
      ->group(kOutput);
  app.add_flag("--anonymise", anonymise,
               "With --record: serial numbers, WWNs, IP addresses, IQNs, host and user names replaced by "
               "stand-ins, the same value by the same stand-in")
      ->needs("--record")
      ->group(kOutput);

  const char* const kTrying = "Trying the tool";
  app.add_flag("--simulator", simulator,
               "Start the bundled array simulator in this process and talk to it (ZRARRAY_* are not used)")
      ->excludes("--address")
      ->group(kTrying);
  app.add_option("--simulator-address", simulatorAddress, "Loopback address for --simulator")
      ->capture_default_str()
      ->group(kTrying);
}

void GlobalOptions::readEnvironment() {
  if (simulator) return;
  FromEnvironment(address, "ZRARRAY_ADDRESS");
  FromEnvironment(user, "ZRARRAY_USER");
  FromEnvironment(caBundle, "ZRARRAY_CA_BUNDLE");
}

ZRLibCurlOptions GlobalOptions::transport() const {
  ZRLibCurlOptions options;
  options.caBundlePath = caBundle;
  options.pinnedPublicKey = pin;
  options.verifyPeer = !insecure;
  options.connectTimeoutMs = Milliseconds(connectTimeoutSeconds);
  options.totalTimeoutMs = Milliseconds(timeoutSeconds);
  return options;
}

}  // namespace zrarray
