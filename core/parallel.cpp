#include "core/parallel.h"

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace mw {

void SpreadOverCores(std::size_t count, const std::function<void(std::size_t)>& work) {
  std::atomic<std::size_t> next = 0;
  const auto takeWork = [&] {
    for (std::size_t i = next++; i < count; i = next++) work(i);
  };
  const std::size_t cores = std::max(1u, std::thread::hardware_concurrency());
  const std::size_t threads = std::min(count, cores);
  std::vector<std::jthread> helpers;
  try {
    while (helpers.size() + 1 < threads) helpers.emplace_back(takeWork);
  } catch (const std::system_error&) {
    // The threads that there are do the work.
  }
  takeWork();
}

}  // namespace mw
