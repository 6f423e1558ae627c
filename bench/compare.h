// Two ways to do the same work, timed in the same run. Used by the benchmarks that draw.
#pragma once

#include <GL/gl.h>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

namespace mw {

// How long the work takes until GL has finished it.
template <typename Work>
double Seconds(Work work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  glFinish();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

// Runs the two ways in turns, so that whatever else the machine does meets both.
template <typename Ours, typename Plain>
void Compare(benchmark::State& state, Ours ours, Plain plain) {
  std::vector<double> ourTimes, plainTimes;
  for ([[maybe_unused]] auto _ : state) {
    ourTimes.push_back(ours());
    plainTimes.push_back(plain());
    state.SetIterationTime(ourTimes.back());
  }
  state.counters["ours_ms"] = Median(ourTimes) * 1e3;
  state.counters["plain_ms"] = Median(plainTimes) * 1e3;
  state.counters["ratio"] = Median(plainTimes) / Median(ourTimes);
}

}  // namespace mw
