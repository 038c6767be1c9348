// One operation as a row of the shape table (OperationShape.h): its call, its requests and its
// texts for the cases that all operations share, whatever their generation:
//
//   ShapeRow("getVStoreNameFromId", calling(&ZrManageHuawei::getVStoreNameFromId, "3", out),
//            {"GET vstore/3"}, "getVStoreNameFromId", "Unable to get the VStoreName from VStoreId [3]")
//       .emptyArgumentSays(0, "The input parameter [VStoreID] is empty")
//       .failsByError()
#pragma once

#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ArraySimulator.h"
#include "CXoError.h"
#include "HuaweiApiResultStatus.h"
#include "ZrManageHuawei.h"

namespace zrtest {

// Identifiers of the objects that the scene made, by name; "{name}" in a row's texts and request
// lines stands for them.
using ShapeScene = std::map<std::string, std::string>;

enum class Generation { First, Second, Third };

// An operation's answer in the terms of its generation.
struct Outcome {
  Generation generation;
  bool ok;
  std::string text;             // the failure text the answer carries (second and third)
  unsigned long long code = 0;  // the status code (third)
};

Outcome FirstGeneration(bool answer);
Outcome SecondGeneration(const CXoError& error);
Outcome ThirdGeneration(const HuaweiApi::ResultStatus& status);

using Invocation = std::function<Outcome(ZrManageHuawei&, const ShapeScene&)>;

// A call that knows its arguments (calling() in ShapeCall.h): it can also be made with one of
// them empty.
struct Calling {
  Invocation call;
  std::function<Invocation(std::size_t)> emptying;
};

struct ShapeRow {
  ShapeRow(std::string name, Invocation call, std::vector<std::string> sends, std::string logName,
           std::string requestFailed)
      : name(std::move(name)), call(std::move(call)), sends(std::move(sends)), logName(std::move(logName)),
        requestFailed(std::move(requestFailed)) {}
  ShapeRow(std::string name, Calling calling, std::vector<std::string> sends, std::string logName,
           std::string requestFailed)
      : ShapeRow(std::move(name), calling.call, std::move(sends), std::move(logName), std::move(requestFailed)) {
    emptying = std::move(calling.emptying);
  }
  ShapeRow& emptyResponseSays(std::string text) { return emptyResponse = std::move(text), *this; }
  ShapeRow& emptyArgumentSays(Invocation withEmpty, std::string text) {
    emptyArgumentCall = std::move(withEmpty);
    return emptyArgument = std::move(text), *this;
  }
  // The call with its argument `index` empty (counted from 0), for a row made by calling().
  ShapeRow& emptyArgumentSays(std::size_t index, std::string text) {
    return emptyArgumentSays(emptying(index), std::move(text));
  }
  ShapeRow& guardNames(std::string operation) { return guardOperation = std::move(operation), *this; }
  ShapeRow& failsByError() { return byError = true, *this; }
  // First generation: guard texts behind a prefix such as "[ERROR] ".
  ShapeRow& guardPrefixed(std::string prefix) { return guardPrefix = std::move(prefix), *this; }
  // First generation: a refused answer told at this level instead of as a failure line.
  ShapeRow& refusalAt(int level) { return refusalLevel = level, *this; }
  // First generation: a refused answer ends the call without a line of the operation.
  ShapeRow& refusalUnlogged() { return refusalSilent = true, *this; }
  // Second-generation guards that go without the "[ERROR] " prefix.
  ShapeRow& guardsBare() { return bareGuard = true, *this; }
  // An operation without a guard of its own that words the inner guard's failure itself.
  ShapeRow& closedSessionSays(std::string text) { return closedSession = std::move(text), *this; }
  // A level 0 line, beginning so, that the operation writes before it sends.
  ShapeRow& logsBeforeSending(std::string start) { return loggedBeforeSending = std::move(start), *this; }
  // A third-generation operation that never reads the answer.
  ShapeRow& answerNotRead() { return readsAnswer = false, *this; }

  std::string name;
  Invocation call;
  // "METHOD resource" of each request of a successful call, in order. Faults spoil the last, or
  // the one marked with a leading '*'.
  std::vector<std::string> sends;
  // Log name under which the first generation tells its failures.
  std::string logName;
  // Text of a refused or unreadable answer; "{status}" stands for the status text (third).
  std::string requestFailed;
  std::string emptyResponse = "Empty response from the array";
  // The call with its required argument empty, and what it says; unset when it has none.
  Invocation emptyArgumentCall;
  std::function<Invocation(std::size_t)> emptying;
  std::string emptyArgument;
  // The operation that the guard names, when it is not the row's own.
  std::string guardOperation;
  // First-generation failures written by Error(), which carries no job identifier.
  bool byError = false;
  std::string guardPrefix;
  int refusalLevel = -1;
  bool refusalSilent = false;
  bool bareGuard = false;
  std::string closedSession;
  std::string loggedBeforeSending;
  // False for a third-generation request whose answer says nothing but its error object: an
  // empty answer then counts as success.
  bool readsAnswer = true;
};

inline void PrintTo(const ShapeRow& row, std::ostream* out) { *out << row.name; }
inline std::string RowName(const testing::TestParamInfo<ShapeRow>& info) { return info.param.name; }

// "{name}" replaced by the scene's identifiers.
std::string Fill(std::string text, const ShapeScene& scene);
// The guard's text of the first two generations.
std::string GuardText(Generation generation, const std::string& operation, bool bare = false);

// Defined by each binary: makes the scene on the simulator; `array` is logged in.
ShapeScene ArrangeShapeScene(arraysim::ArraySimulator& sim, ZrManageHuawei& array);

}  // namespace zrtest
