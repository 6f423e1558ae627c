#include "core/parallel.h"

#include <algorithm>
#include <atomic>
#include <sched.h>
#include <system_error>
#include <thread>
#include <vector>

namespace mw {

std::size_t UsableCores() {
  cpu_set_t cores;
  if (sched_getaffinity(0, sizeof cores, &cores) == 0) {
    return static_cast<std::size_t>(std::max(1, CPU_COUNT(&cores)));
  }
  return std::max(1u, std::thread::hardware_concurrency());  // more than the set has room for
}

void SpreadOverCores(std::size_t count, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next = 0;
  const auto takeWork = [&] {
    for (std::size_t i = next++; i < count; i = next++) work(i);
  };
  const std::size_t threads = std::min(count, UsableCores());
  std::vector<std::jthread> helpers;
  try {
    while (helpers.size() + 1 < threads) helpers.emplace_back(takeWork);
  } catch (const std::system_error&) {
    // The threads that there are do the work.
  }
  takeWork();
}

}  // namespace mw
