// One subcommand of zrarray: its group and name, the arguments an operator types, and the one call
// of the library it makes with how the answer is printed. The tables of rows live in the
// *Commands.cpp files; a new operation of the library is one row there.
#pragma once

#include <functional>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "CXoError.h"
#include "HuaweiApiResultStatus.h"
#include "RecordJson.h"
#include "ZrManageHuawei.h"

namespace zrarray {

struct GlobalOptions;

// An argument as the operator types it: `--file-system-id 7`, `--no-snapdiff`, `--id 4 --id 5`.
struct Argument {
  enum class Kind { Text, Number, Flag, List };
  std::string name;  // without the dashes
  std::string help;
  Kind kind = Kind::Text;
  bool required = true;
  // Words the operator may type, each with the array's value that the library is given for it.
  std::map<std::string, std::string> words;
  // The array's own value, as digits, is taken as well: it may know values the words do not name.
  bool codesToo = false;
  // The word taken when the argument is not given; empty for none.
  std::string fallback;
};

inline Argument text(std::string name, std::string help, Argument::Kind kind = Argument::Kind::Text,
                     bool required = true) {
  Argument argument;
  argument.name = std::move(name);
  argument.help = std::move(help);
  argument.kind = kind;
  argument.required = required;
  return argument;
}
inline Argument optionalText(std::string name, std::string help) {
  return text(std::move(name), std::move(help), Argument::Kind::Text, false);
}
// Digits only: an identifier that the library takes as an integer.
inline Argument number(std::string name, std::string help) {
  return text(std::move(name), std::move(help), Argument::Kind::Number);
}
inline Argument flag(std::string name, std::string help) {
  return text(std::move(name), std::move(help), Argument::Kind::Flag, false);
}
// Given once or more, or as one comma-separated list.
inline Argument texts(std::string name, std::string help) {
  return text(std::move(name), std::move(help), Argument::Kind::List);
}
// One of `words`; the library gets the array's value of the word.
inline Argument oneOf(std::string name, std::string help, std::map<std::string, std::string> words) {
  Argument argument = text(std::move(name), std::move(help));
  argument.words = std::move(words);
  return argument;
}
// One of `words`, or the array's value itself.
inline Argument wordOrCode(std::string name, std::string help, std::map<std::string, std::string> words) {
  Argument argument = oneOf(std::move(name), std::move(help), std::move(words));
  argument.codesToo = true;
  return argument;
}
// The argument made optional, taking `fallback` when it is not given.
inline Argument orElse(Argument argument, std::string fallback) {
  argument.required = false;
  argument.fallback = std::move(fallback);
  return argument;
}

// The objects that the rows of more than one group name, each named and described once.
inline Argument LunIdArgument() { return text("lun-id", "LUN identifier"); }
inline Argument SnapshotLunIdArgument() { return text("snapshot-id", "Snapshot LUN identifier"); }
inline Argument HostGroupIdArgument() { return text("host-group-id", "Host group identifier"); }

// The array's four speeds of copying and rolling back, as words.
std::map<std::string, std::string> SpeedWords();
// The array's values of a CIFS grant's permission and of an NFS client grant's settings, as words.
std::map<std::string, std::string> CifsPermissionWords();
std::map<std::string, std::string> NfsAccessWords();
std::map<std::string, std::string> NfsSyncWords();
std::map<std::string, std::string> SquashWords(const std::string& squash);

// The values given on the command line, by argument name. CLI11 writes into the slots.
class Arguments {
 public:
  const std::string& operator[](const std::string& name) const;
  unsigned long long number(const std::string& name) const;
  bool flag(const std::string& name) const;
  bool given(const std::string& name) const;
  const std::vector<std::string>& list(const std::string& name) const;

  std::string& textSlot(const std::string& name) { return texts_[name]; }
  bool& flagSlot(const std::string& name) { return flags_[name]; }
  std::vector<std::string>& listSlot(const std::string& name) { return lists_[name]; }

 private:
  std::map<std::string, std::string> texts_;
  std::map<std::string, bool> flags_;
  std::map<std::string, std::vector<std::string>> lists_;
};

// What a row's call gets: the logged-in array, its arguments, and the vStore to pass.
struct Call {
  ZrManageHuawei& array;
  const Arguments& args;
  // --vstore when given, else the login's vStore ("-12345" for none).
  std::string vstore;
  const GlobalOptions& options;

  const std::string& operator[](const std::string& name) const { return args[name]; }
};

// How an operation ended. The three generations of the library answer bool, CXoError or
// ResultStatus; each becomes an Outcome. What a bool does not carry, the tool reads from the log.
struct Outcome {
  bool ok = true;
  std::string reason;        // the operation's own text
  std::string cause;         // what the HTTPS client said of a failed exchange
  unsigned long long arrayCode = 0;
  std::string arrayDescription;  // the array's own words for its code
  // The array's answer had no "data": how it says that it found nothing.
  bool answeredNothing = false;

  static Outcome of(bool ok);
  static Outcome of(const CXoError& error);
  static Outcome of(const HuaweiApi::ResultStatus& status);
  static Outcome failure(std::string reason);
};

struct Result {
  Outcome outcome;
  // Printed on standard output when the operation succeeded; nothing for plain actions.
  std::optional<Json> value;
  // The value is printed after a failure too: it holds a flag that may tell why.
  bool shownOnFailure = false;
  // A list: an array that found nothing makes it empty, not a failure.
  bool list = false;
  // A lookup: what it looked for, as "host 'web1'"; an array that found nothing makes it "not found".
  std::string lookedFor = {};
};

// A list found empty, or a lookup that found nothing, as the operator reads it: the library
// reports both as failures, with its parse error or with no reason at all.
void ReadAbsence(Result& result);

using Runner = std::function<Result(Call&)>;

// A row's arguments and its runner, as calls() (Calls.h) makes them from one call of the library.
struct Bound {
  std::vector<Argument> arguments;
  Runner run;
};

struct Command {
  Command(std::string group, std::string name, std::string help, std::vector<Argument> arguments, Runner run)
      : group(std::move(group)), name(std::move(name)), help(std::move(help)), arguments(std::move(arguments)),
        run(std::move(run)) {}
  Command(std::string group, std::string name, std::string help, Bound bound)
      : Command(std::move(group), std::move(name), std::move(help), std::move(bound.arguments), std::move(bound.run)) {}

  std::string group;
  std::string name;
  std::string help;
  std::vector<Argument> arguments;
  Runner run;
};

// ---- How a row prints its answer, for rows that do more than one call (the others: Calls.h) ----

// The operation writes one string, such as the identifier of what it made: printed as {key: value}.
template <class Fn>
Runner value(const char* key, Fn fn) {
  return [key, fn](Call& call) {
    std::string written;
    const Outcome outcome = Outcome::of(fn(call, written));
    return Result{outcome, Json{{key, written}}};
  };
}

// A lookup of `what`, named by the argument `by`: when the array finds nothing, the failure says
// "not found: <what> '<value>'".
inline Runner lookup(std::string what, std::string by, Runner run) {
  return [what, by, run](Call& call) {
    Result result = run(call);
    result.lookedFor = what + " '" + call[by] + "'";
    return result;
  };
}

// The operation's boolean is the answer itself, never a failure: printed as {key: true|false}.
template <class Fn>
Runner answer(const char* key, Fn fn) {
  return [key, fn](Call& call) { return Result{Outcome{}, Json{{key, static_cast<bool>(fn(call))}}}; };
}

// The operation only acts: nothing is printed.
template <class Fn>
Runner action(Fn fn) {
  return [fn](Call& call) { return Result{Outcome::of(fn(call)), std::nullopt}; };
}

// The rows of each group of the library, and all of them.
std::vector<Command> InventoryCommands();
std::vector<Command> FileSystemSnapshotAndChangeListCommands();
std::vector<Command> ShareCommands();
std::vector<Command> ProvisioningAndLunSnapshotCommands();
std::vector<Command> HostCommands();
std::vector<Command> LunGroupAndMappingViewCommands();
std::vector<Command> CloneCommands();
std::vector<Command> AllCommands();
// One line of help for each group, in the order the groups are listed.
const std::vector<std::pair<std::string, std::string>>& CommandGroups();

}  // namespace zrarray
