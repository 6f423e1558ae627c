#include "core/parallel.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace mw {
namespace {

// The tasks that are still to be done, and the first exception of those that were.
class TaskQueue {
 public:
  explicit TaskQueue(std::size_t count) : count_(count) {}

  // Does tasks until there are none left. Nothing is thrown.
  template <typename Work>
  void TakeTasks(const Work& work) noexcept {
    try {
      for (std::size_t i = next_++; i < count_; i = next_++) work(i);
    } catch (...) {
      next_ = count_;
      const std::scoped_lock lock(mutex_);
      if (!failure_) failure_ = std::current_exception();
    }
  }

  void ThrowFailure() const {
    if (failure_) std::rethrow_exception(failure_);
  }

 private:
  const std::size_t count_;
  std::atomic<std::size_t> next_ = 0;
  std::mutex mutex_;
  std::exception_ptr failure_;
};

}  // namespace

void SpreadOverCores(std::size_t count, const std::function<void(std::size_t)>& work) {
  SpreadOverWorkers(count, UsableCores(), [&work](std::size_t task, std::size_t) { work(task); });
}

void SpreadOverWorkers(std::size_t count, std::size_t workers,
                       const std::function<void(std::size_t task, std::size_t worker)>& work) {
  TaskQueue tasks(count);
  const auto takeTasks = [&](std::size_t worker) {
    tasks.TakeTasks([&](std::size_t task) { work(task, worker); });
  };
  {
    const std::size_t threads = std::min(count, workers);
    std::vector<std::jthread> helpers;
    try {
      helpers.reserve(threads);
      while (helpers.size() + 1 < threads) helpers.emplace_back(takeTasks, helpers.size() + 1);
    } catch (const std::exception&) {
      // The system has no further thread or no memory for one: those that there are do the work.
    }
    takeTasks(0);
  }  // waits for the helpers
  tasks.ThrowFailure();
}

}  // namespace mw
