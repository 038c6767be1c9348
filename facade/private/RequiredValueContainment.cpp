#include "RequiredValueContainment.h"

#include "ZrLibrarySettings.h"

namespace RequiredValueContainment {
namespace {

// An operation runs on one thread from its first frame to its last.
struct Operation {
  int depth = 0;
  bool failed = false;
  std::string text;
};
thread_local Operation current;

}  // namespace

bool chosen() {
  return ZrLibraryGetSettings().missingRequiredValue == ZrLibrarySettings::MissingValue::FailOperation;
}

OperationScope::OperationScope() {
  if (current.depth++ == 0) current.failed = false;
}

OperationScope::~OperationScope() {
  if (--current.depth == 0) current.failed = false;
}

bool failed() { return current.failed; }

const std::string& failureText() { return current.text; }

std::string textOf(const char* what) { return std::string("The array's answer lacks a required value: ") + what; }

void recordFailure(const char* what) {
  current.failed = true;
  current.text = textOf(what);
}

}  // namespace RequiredValueContainment
