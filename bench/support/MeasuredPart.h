// Marks the part of a benchmark whose instructions are counted. Under callgrind started with
// --collect-atstart=no only what runs while a MeasuredPart lives is collected, so start-up, the
// simulator's launch and the warm-up stay out of the count. Outside valgrind it costs a few
// instructions. Not to be nested: callgrind's request toggles collection.
#pragma once

#if __has_include(<valgrind/callgrind.h>)
#include <valgrind/callgrind.h>
#define ZR_BENCH_TOGGLE_COLLECT() CALLGRIND_TOGGLE_COLLECT
#else
#define ZR_BENCH_TOGGLE_COLLECT() ((void)0)
#endif

namespace zrbench {

class MeasuredPart {
 public:
  MeasuredPart() { ZR_BENCH_TOGGLE_COLLECT(); }
  ~MeasuredPart() { ZR_BENCH_TOGGLE_COLLECT(); }
  MeasuredPart(const MeasuredPart&) = delete;
  MeasuredPart& operator=(const MeasuredPart&) = delete;
};

}  // namespace zrbench
