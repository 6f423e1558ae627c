#include "core/parallel.h"

#include <atomic>
#include <gtest/gtest.h>
#include <new>
#include <thread>
#include <vector>

#include "support/one_core.h"

namespace mw {
namespace {

TEST(Parallel, EveryCallIsMadeOnceOnHoweverManyCores) {
  std::vector<std::atomic<int>> calls(1000);
  SpreadOverCores(calls.size(), [&](std::size_t i) { ++calls[i]; });
  for (const auto& made : calls) ASSERT_EQ(made, 1);
  SpreadOverCores(0, [](std::size_t) { FAIL() << "there is nothing to do"; });
}

TEST(Parallel, AFailureInAWorkerIsTheCallers) {
  std::atomic<int> begun = 0;
  const auto work = [&](std::size_t) {
    ++begun;
    throw std::bad_alloc();
  };
  EXPECT_THROW(SpreadOverCores(10'000, work), std::bad_alloc);
  EXPECT_LE(begun, static_cast<int>(UsableCores())) << "none begins after a failure";
}

TEST(Parallel, AProgramThatMayUseOneCoreStartsNoThreads) {
  const OnOneCore one;
  EXPECT_EQ(UsableCores(), 1u);
  const auto self = std::this_thread::get_id();
  SpreadOverCores(50, [&](std::size_t) { EXPECT_EQ(std::this_thread::get_id(), self); });
}

}  // namespace
}  // namespace mw
