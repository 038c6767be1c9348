// Answers that lack a value a reader requires, one row per reader family: the end-to-end suites
// run each row in both of the embedder's modes (the process ends; only the operation fails).
#pragma once

#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "ArraySimulator.h"
#include "ZrManageHuawei.h"

namespace zrtest {

// What an operation left behind.
struct MissingValueOutcome {
  bool failed = false;       // it answered its generation's failure
  bool carriesText = false;  // the result carries a text (CXoError, ResultStatus)
  std::string text;
  bool outputsKept = false;  // the caller's outputs are as they were before the call
};

struct MissingValueRow {
  const char* name;
  // Puts the simulator in the state whose answer lacks the value.
  std::function<void(arraysim::ArraySimulator&)> arrange;
  // Runs the operation, on a facade that has logged in unless the row is the login itself.
  std::function<MissingValueOutcome(ZrManageHuawei&)> act;
  // What the document model reports, e.g. key "data", expected an array.
  std::string what;
  // "METHOD resource" of what the operation sends, up to and including the faulty answer.
  std::vector<std::string> requests;
  bool isLogin = false;
};

const std::vector<MissingValueRow>& MissingValueRows();

inline void PrintTo(const MissingValueRow& row, std::ostream* out) { *out << row.name; }

}  // namespace zrtest
