// Timing helpers for the benchmarks: the median of several timed rounds, and peak memory.
#pragma once

#include <sys/resource.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <vector>

namespace zrbench {

// Runs `body` `iterations` times per round and gives the median seconds per iteration.
inline double medianSecondsPerIteration(const std::function<void()>& body, int iterations, int rounds = 5) {
  std::vector<double> samples;
  for (int round = 0; round < rounds; ++round) {
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < iterations; ++i) body();
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    samples.push_back(elapsed.count() / iterations);
  }
  std::sort(samples.begin(), samples.end());
  return samples[samples.size() / 2];
}

// Times several bodies in alternating rounds (A, B, A, B, ...), so that a slow phase of a shared
// machine falls on all of them alike. Answers, per body, the seconds per iteration of each round;
// samples of the same round index are neighbours in time, so their ratio is a paired comparison.
inline std::vector<std::vector<double>> interleavedSecondsPerIteration(const std::vector<std::function<void()>>& bodies,
                                                                       int iterations, int rounds) {
  std::vector<std::vector<double>> samples(bodies.size());
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t which = 0; which < bodies.size(); ++which) {
      const auto start = std::chrono::steady_clock::now();
      for (int i = 0; i < iterations; ++i) bodies[which]();
      const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
      samples[which].push_back(elapsed.count() / iterations);
    }
  }
  return samples;
}

// The median of some samples (the upper one of the middle two for an even count).
inline double median(std::vector<double> samples) {
  if (samples.empty()) return 0.0;
  std::sort(samples.begin(), samples.end());
  return samples[samples.size() / 2];
}

// Peak resident set of this process so far, in MiB.
inline double peakResidentMiB() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024.0;
}

}  // namespace zrbench
