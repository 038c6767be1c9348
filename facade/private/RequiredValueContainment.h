// What an answer without a required value costs, as the embedder chose (ZrLibrarySettings): the
// whole process, as always, or only the operation that read it. In the second mode the document
// model throws where it would end the process, the frame that reads the answer turns that into its
// generation's failure, and the rest of the operation sends nothing more.
#pragma once

#include <string>
#include <utility>

#include "jsonxx.h"

namespace RequiredValueContainment {

// Whether the embedder chose to contain such failures to the operation.
bool chosen();

// Held by every operation frame, and by the few operations that send without one. The outermost
// scope of a thread is one operation: a contained failure is remembered until it ends, so that
// the operations it calls in turn send nothing more.
class OperationScope {
 public:
  OperationScope();
  ~OperationScope();
  OperationScope(const OperationScope&) = delete;
  OperationScope& operator=(const OperationScope&) = delete;
};

// Whether the current operation of this thread failed on a missing required value.
bool failed();
// "The array's answer lacks a required value: key "data", expected an array", of that failure.
const std::string& failureText();
// The text of the failure, told the way the process-ending path tells it.
std::string textOf(const char* what);

// Marks the current operation as failed on what the document model reported.
void recordFailure(const char* what);

// Runs `read` (parsing an answer; it answers whether it could). When the failures are contained,
// a required value that the read misses answers false instead of ending the process, and
// failed() then holds. The read must leave nothing of the caller's half-written.
template <typename Read>
bool read(Read&& read) {
  if (!chosen()) return std::forward<Read>(read)();
  jsonxx::ContainedReads contained;
  try {
    return std::forward<Read>(read)();
  } catch (const jsonxx::MissingRequiredValue& missing) {
    recordFailure(missing.what());
    return false;
  }
}

// The failure of an operation that empties its list output when it fails: the list is emptied,
// unless a missing required value failed the operation, which leaves the caller's outputs as they
// were. Answers false.
template <typename List>
bool failEmptying(List& list) {
  if (!failed()) list.clear();
  return false;
}

}  // namespace RequiredValueContainment
