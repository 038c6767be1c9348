#include "Tool.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <csignal>
#include <cstdio>
#include <deque>
#include <memory>
#include <stdexcept>

#include <CLI/CLI.hpp>

#include "Command.h"
#include "Completion.h"
#include "DemoArray.h"
#include "GlobalOptions.h"
#include "LogRelay.h"
#include "PasswordSource.h"
#include "ZrManageHuaweiVersion.h"
#include "RunDirectory.h"
#include "StopSignals.h"
#include "ZrLibrarySettings.h"

namespace zrarray {

namespace {

enum ExitStatus { kSuccess = 0, kFailed = 1, kUsage = 2 };

struct Chosen {
  const Command* command = nullptr;
  const Arguments* arguments = nullptr;
};

bool IsDigits(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
}

// An identifier the library takes as a 64-bit unsigned integer.
CLI::Validator Digits() {
  return CLI::Validator(
      [](std::string& text) {
        static const std::string kLargest = "18446744073709551615";
        const bool digits = IsDigits(text);
        const bool fits = text.size() < kLargest.size() || (text.size() == kLargest.size() && text <= kLargest);
        return digits && fits ? std::string() : "'" + text + "' is not a number";
      },
      "NUMBER");
}

// One of the words, replaced by the array's value for it; with `codesToo` the array's value as well.
CLI::Validator Words(const std::map<std::string, std::string>& words, bool codesToo) {
  std::string listed;
  for (const auto& entry : words) listed += (listed.empty() ? "" : "|") + entry.first;
  return CLI::Validator(
      [words, listed, codesToo](std::string& text) {
        const auto found = words.find(text);
        if (found != words.end()) {
          text = found->second;
          return std::string();
        }
        if (codesToo && IsDigits(text)) return std::string();
        return "'" + text + "' is not one of " + listed + (codesToo ? " nor the array's number" : "");
      },
      codesToo ? listed + "|NUMBER" : listed);
}

// The help of an argument whose words stand for the array's numbers: which number each one is.
std::string HelpWithCodes(const Argument& argument) {
  std::string help = argument.help + " (";
  for (const auto& [word, code] : argument.words) help += word + " = " + code + ", ";
  return help + "or the array's number)";
}

void AddArgument(CLI::App& command, const Argument& argument, Arguments& values) {
  const std::string option = "--" + argument.name;
  if (argument.kind == Argument::Kind::Flag) {
    command.add_flag(option, values.flagSlot(argument.name), argument.help);
    return;
  }
  const std::string help = argument.codesToo ? HelpWithCodes(argument) : argument.help;
  CLI::Option* added = argument.kind == Argument::Kind::List
                           ? command.add_option(option, values.listSlot(argument.name), help)->delimiter(',')
                           : command.add_option(option, values.textSlot(argument.name), help);
  if (argument.required) added->required();
  if (argument.kind == Argument::Kind::Number) added->check(Digits());
  if (!argument.words.empty()) added->transform(Words(argument.words, argument.codesToo));
  if (!argument.fallback.empty()) added->run_callback_for_default()->default_val(argument.fallback);
}

// One subcommand per group of the library, one below it per row; `values` keeps their arguments.
void AddCommands(CLI::App& app, const std::vector<Command>& commands, std::deque<Arguments>& values, Chosen& chosen) {
  for (const auto& [group, help] : CommandGroups()) {
    CLI::App* groupCommand = nullptr;
    for (const Command& command : commands) {
      if (command.group != group) continue;
      if (groupCommand == nullptr) {
        groupCommand = app.add_subcommand(group, help);
        groupCommand->require_subcommand(1);
        groupCommand->fallthrough();  // global options may follow the subcommand
      }
      Arguments& arguments = values.emplace_back();
      CLI::App* added = groupCommand->add_subcommand(command.name, command.help);
      added->fallthrough();
      for (const Argument& argument : command.arguments) AddArgument(*added, argument, arguments);
      added->callback([&chosen, &command, &arguments] { chosen = {&command, &arguments}; });
    }
  }
}

std::string ReadPassword(const GlobalOptions& options) {
  if (!options.passwordFile.empty()) return PasswordFromFile(options.passwordFile);
  if (options.passwordStdin) return PasswordFromStandardInput();
  if (!options.passwordEnv.empty()) return PasswordFromEnvironment(options.passwordEnv);
  throw UsageError(
      "no password: give --password-file FILE (mode 0600), --password-stdin, or --password-env VARIABLE "
      "(a password on the command line would be visible to other users)");
}

// Texts of the array and of the caller may hold control characters: shown, never obeyed.
std::string Visible(const std::string& text) {
  std::string shown;
  for (const unsigned char c : text) {
    if (c >= 0x20 && c != 0x7f) {
      shown += static_cast<char>(c);
    } else {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02x", c);
      shown += escaped;
    }
  }
  return shown;
}

// One line that says what failed and why: the operation's text, the connection's cause, and the
// array's code with its own words in quotes.
void Report(const std::string& what, const Outcome& outcome) {
  std::string line = "zrarray: " + what + " failed";
  if (!outcome.reason.empty()) line += ": " + outcome.reason;
  if (!outcome.cause.empty()) line += ": " + outcome.cause;
  if (outcome.arrayCode != 0) {
    line += " (array code " + std::to_string(outcome.arrayCode);
    if (!outcome.arrayDescription.empty()) line += ": \"" + outcome.arrayDescription + "\"";
    line += ")";
  }
  if (outcome.reason.empty() && outcome.cause.empty() && outcome.arrayCode == 0) {
    line += " (the library said no more; --log-level 4 shows its lines)";
  }
  std::fprintf(stderr, "%s\n", Visible(line).c_str());
}

// A group given without one of its subcommands, as "<group>: no subcommand '<word>'" or
// "<group>: a subcommand is needed"; empty for any other mistake, which CLI11 words well enough.
std::string GroupWithoutSubcommand(const CLI::App& app) {
  for (const CLI::App* group : app.get_subcommands()) {
    if (!group->get_subcommands().empty() || group->get_require_subcommand_min() == 0) continue;
    // A word the group did not know may have fallen through to the top.
    std::vector<std::string> words = group->remaining();
    for (const std::string& word : app.remaining()) words.push_back(word);
    if (words.empty()) return group->get_name() + ": a subcommand is needed";
    // An unknown option: CLI11 names it.
    if (words.front().empty() || words.front().front() == '-') return "";
    return group->get_name() + ": no subcommand '" + words.front() + "'";
  }
  return "";
}

// The words of the options that take words, for the completion script.
OptionWords WordsOf(const std::vector<Command>& commands) {
  OptionWords words = {{"--format", {"json", "table"}}, {"completion", {"bash"}}};
  for (const Command& command : commands) {
    for (const Argument& argument : command.arguments) {
      if (argument.words.empty()) continue;
      std::vector<std::string>& listed = words[command.group + " " + command.name + " --" + argument.name];
      for (const auto& entry : argument.words) listed.push_back(entry.first);
    }
  }
  return words;
}

struct Login {
  std::string address;
  std::string user;
  std::string password;
};

// Logs in, runs the operation, prints its answer. The facade logs out when it goes.
int Perform(const Command& command, const Arguments& arguments, const GlobalOptions& options, const Login& login,
            LogRelay& relay) {
  // The process identifier as job identifier keeps the session files of parallel runs apart.
  ZrManageHuawei array(static_cast<unsigned long long>(getpid()));
  relay.startOperation();
  if (!array.createSession(login.user, login.password, login.address)) {
    unsigned long long code = 0;
    std::string text;
    array.GetErrorInfo(code, text);
    Outcome outcome = Outcome::of(HuaweiApi::ResultStatus(code, text));
    outcome.ok = false;
    relay.explain(outcome);
    Report("login to " + login.address + " as " + login.user, outcome);
    return kFailed;
  }

  Call call{array, arguments, options.vstore.empty() ? array.getvStoreId() : options.vstore, options};
  relay.startOperation();
  Result result = command.run(call);
  relay.explain(result.outcome);
  ReadAbsence(result);
  const std::string what = command.group + " " + command.name;
  if (!result.outcome.ok) {
    Report(what, result.outcome);
    if (result.shownOnFailure && result.value) Print(stdout, *result.value, options.format);
    return kFailed;
  }
  if (result.value && !Print(stdout, *result.value, options.format)) {
    Report(what, Outcome::failure("writing the answer to standard output"));
    return kFailed;
  }
  return kSuccess;
}

int Execute(const Command& command, const Arguments& arguments, const GlobalOptions& options) {
  LogRelay relay(options.logLevel);
  Login login{options.address, options.user, std::string()};
  if (!options.simulator && login.address.empty()) {
    throw UsageError("give the array's address with --address (or ZRARRAY_ADDRESS), or try --simulator");
  }
  if (!options.simulator && login.user.empty()) throw UsageError("give the user with --user (or ZRARRAY_USER)");
  if (!options.simulator || options.passwordSourceGiven()) login.password = ReadPassword(options);
  std::unique_ptr<RunDirectory> directory;
  try {
    directory = std::make_unique<RunDirectory>();
  } catch (const std::exception& error) {
    Report(command.group + " " + command.name, Outcome::failure(error.what()));
    return kFailed;
  }
  ZrLibrarySettings settings = ZrLibraryGetSettings();
  settings.cookieDirectory = directory->path();
  // One odd answer or file name ends the command with a reason, never the process or a file's name.
  settings.missingRequiredValue = ZrLibrarySettings::MissingValue::FailOperation;
  settings.changeListNames = ZrLibrarySettings::ChangeListNames::Exact;
  settings.recordingFile = options.recordFile;
  settings.recordingAnonymised = options.anonymise;
  ZrLibrarySetSettings(settings);
  // From here a stop signal lets the command end by itself: the session and the run's directory
  // go the ordinary way.
  const StopSignals::Session session([&directory] { directory->remove(); });

  ZRLibCurlOptions transport = options.transport();
  std::unique_ptr<DemoArray> demo;
  if (options.simulator) {
    try {
      demo = std::make_unique<DemoArray>(options.simulatorAddress, directory->path() + "/simulator");
    } catch (const std::exception& error) {
      Report("starting the simulator on " + options.simulatorAddress, Outcome::failure(error.what()));
      return kFailed;
    }
    login.address = demo->address();
    if (login.user.empty()) login.user = DemoArray::user();
    if (login.password.empty()) login.password = DemoArray::password();
    if (transport.caBundlePath.empty()) transport.caBundlePath = demo->caCertPath();
  }
  if (options.insecure) {
    std::fprintf(stderr,
                 "zrarray: WARNING: --insecure: the array's certificate is NOT verified; anyone on the path can "
                 "pose as %s and read the password\n",
                 login.address.c_str());
  }

  ZRLibCurlSetOptions(transport);
  const int status = Perform(command, arguments, options, login, relay);
  ZRLibCurlSetOptions(ZRLibCurlOptions());  // closes pooled connections while the simulator still runs
  return status;
}

}  // namespace

int RunTool(int argc, char** argv) {
  // A closed pipe (`zrarray ... | head`) shows as a failed write, so a walk can still close its session.
  std::signal(SIGPIPE, SIG_IGN);
  StopSignals::Install();

  CLI::App app("Drives a Huawei storage array: one subcommand per operation of the library, JSON on standard "
               "output, log lines on standard error.",
               "zrarray");
  GlobalOptions options;
  options.addTo(app);
  const std::vector<Command> commands = AllCommands();
  std::deque<Arguments> values;
  Chosen chosen;
  AddCommands(app, commands, values, chosen);
  std::string shell;
  CLI::App* completion = app.add_subcommand(
      "completion", "Print a completion script for the shell (the packages install the one for bash)");
  completion->add_option("shell", shell, "bash")->required()->check(
      CLI::Validator([](const std::string& given) { return given == "bash" ? "" : "'" + given + "' is not bash"; },
                     "bash"));
  app.require_subcommand(1);
  app.set_version_flag("--version", "zrarray " ZRMANAGEHUAWEI_VERSION);
  app.failure_message([](const CLI::App*, const CLI::Error& error) {
    return "zrarray: " + std::string(error.what()) + " (--help shows the usage)\n";
  });
  app.footer(
      "Exit status: 0 success, 1 the operation failed (reason on standard error), 2 usage error; ended by "
      "SIGINT, SIGTERM or SIGHUP after logging out.\n"
      "Files: the session's cookie file (and --simulator's keys) live in a private directory made for the run "
      "(mode 0700) under $XDG_RUNTIME_DIR, else $TMPDIR, else /tmp, and removed at exit: any user may run the "
      "tool.");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    // --help and --version come this way too, with status 0.
    const std::string group = error.get_exit_code() == 0 ? "" : GroupWithoutSubcommand(app);
    if (group.empty()) return app.exit(error) == 0 ? kSuccess : kUsage;
    std::fprintf(stderr, "zrarray: %s; `zrarray %s --help` lists them\n", group.c_str(),
                 group.substr(0, group.find(':')).c_str());
    return kUsage;
  }
  if (completion->parsed()) {
    std::fputs(BashCompletion(app, WordsOf(commands)).c_str(), stdout);
    return kSuccess;
  }
  options.readEnvironment();
  int status = kUsage;
  try {
    status = Execute(*chosen.command, *chosen.arguments, options);
  } catch (const UsageError& error) {
    std::fprintf(stderr, "zrarray: %s\n", error.what());
  }
  if (StopSignals::Requested()) {
    std::fprintf(stderr, "zrarray: %s %s stopped by %s; logged out, cookie file removed\n",
                 chosen.command->group.c_str(), chosen.command->name.c_str(),
                 StopSignals::Name(StopSignals::Received()));
    StopSignals::EndAsReceived();
  }
  return status;
}

}  // namespace zrarray
