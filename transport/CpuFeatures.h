// What the processor we run on offers, asked once per process, for the vector paths of the
// recorder's text work. Only meaningful on x86-64; elsewhere the scalar paths run.
#pragma once

#if defined(__x86_64__)
namespace cpu {

inline bool hasSsse3() {
  static const bool supported = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("ssse3") != 0;
  }();
  return supported;
}

inline bool hasAvx2() {
  static const bool supported = [] {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
  }();
  return supported;
}

}  // namespace cpu
#endif
