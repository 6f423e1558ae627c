#include "sample/parallel.h"

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

namespace mw::sample {

void ParallelFor(int count, const std::function<void(int index)>& work) {
  std::atomic<int> next = 0;
  const auto run = [&] {
    for (int index = next++; index < count; index = next++) work(index);
  };
  std::vector<std::jthread> threads;
  for (unsigned k = 1; k < std::max(1u, std::thread::hardware_concurrency()); ++k) {
    threads.emplace_back(run);
  }
  run();
}

}  // namespace mw::sample
