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

// An argument as the operator types it: `--file-system-id 7`, `--no-snapdiff`.
struct Argument {
  enum class Kind { Text, Number, Flag };
  std::string name;  // without the dashes
  std::string help;
  Kind kind = Kind::Text;
  bool required = true;
};

inline Argument text(std::string name, std::string help) { return {std::move(name), std::move(help)}; }
inline Argument optionalText(std::string name, std::string help) {
  return {std::move(name), std::move(help), Argument::Kind::Text, false};
}
// Digits only: an identifier that the library takes as an integer.
inline Argument number(std::string name, std::string help) {
  return {std::move(name), std::move(help), Argument::Kind::Number};
}
inline Argument flag(std::string name, std::string help) {
  return {std::move(name), std::move(help), Argument::Kind::Flag, false};
}

// The values given on the command line, by argument name. CLI11 writes into the slots.
class Arguments {
 public:
  const std::string& operator[](const std::string& name) const;
  unsigned long long number(const std::string& name) const;
  bool flag(const std::string& name) const;
  bool given(const std::string& name) const;

  std::string& textSlot(const std::string& name) { return texts_[name]; }
  bool& flagSlot(const std::string& name) { return flags_[name]; }

 private:
  std::map<std::string, std::string> texts_;
  std::map<std::string, bool> flags_;
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
  std::string reason;
  unsigned long long arrayCode = 0;
  std::string arrayDescription;

  static Outcome of(bool ok);
  static Outcome of(const CXoError& error);
  static Outcome of(const HuaweiApi::ResultStatus& status);
  static Outcome failure(std::string reason);
};

struct Result {
  Outcome outcome;
  // Printed on standard output when the operation succeeded; nothing for plain actions.
  std::optional<Json> value;
};

using Runner = std::function<Result(Call&)>;

struct Command {
  std::string group;
  std::string name;
  std::string help;
  std::vector<Argument> arguments;
  Runner run;
};

// ---- How a row prints its answer ----

// The operation fills one record: printed as an object.
template <class Record, class Fn>
Runner record(Fn fn) {
  return [fn](Call& call) {
    Record filled;
    const Outcome outcome = Outcome::of(fn(call, filled));
    return Result{outcome, Json(filled)};
  };
}

// The operation fills a list of records: printed as an array.
template <class Record, class Fn>
Runner listOf(Fn fn) {
  return [fn](Call& call) {
    std::list<Record> filled;
    const Outcome outcome = Outcome::of(fn(call, filled));
    return Result{outcome, Json(filled)};
  };
}

// The operation writes one string, such as the identifier of what it made: printed as {key: value}.
template <class Fn>
Runner value(const char* key, Fn fn) {
  return [key, fn](Call& call) {
    std::string written;
    const Outcome outcome = Outcome::of(fn(call, written));
    return Result{outcome, Json{{key, written}}};
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

// Anything else: the row fills the printed object itself.
template <class Fn>
Runner fields(Fn fn) {
  return [fn](Call& call) {
    Json filled = Json::object();
    const Outcome outcome = Outcome::of(fn(call, filled));
    return Result{outcome, filled};
  };
}

// The rows of each group of the library, and all of them.
std::vector<Command> InventoryCommands();
std::vector<Command> SnapshotCommands();
std::vector<Command> AllCommands();
// One line of help for each group, in the order the groups are listed.
const std::vector<std::pair<std::string, std::string>>& CommandGroups();

}  // namespace zrarray
