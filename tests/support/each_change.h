// Failures of the disk one after the other: change 0, 1, 2 ... of an action is the one that goes
// wrong.
#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <utility>

#include "support/disk_faults.h"

namespace mw {

inline constexpr FaultKind kFailures[] = {FaultKind::Stop, FaultKind::Fail, FaultKind::Full};

// Calls attempt(change) until it answers that all was over before that change. An action that made
// fewer than `atLeast` changes fails the test: it did not do its work.
template <typename Attempt>
void EachChange(std::size_t atLeast, Attempt attempt) {
  std::size_t change = 0;
  for (bool hit = true; hit && !testing::Test::HasFatalFailure(); ++change) {
    SCOPED_TRACE("change " + std::to_string(change));
    hit = attempt(change);
  }
  EXPECT_GE(change, atLeast) << "the action made hardly any changes";
}

// Does something on a disk that fails at this change. Whether that change was reached.
template <typename Act>
bool HitWhile(FaultKind kind, std::size_t change, Act act) {
  const DiskFaults faults(kind, change);
  act();
  return faults.Hit();
}

// Cuts the power at change 0, 1, 2 ... of the files in a folder, four times at each, with other
// sectors lost each time. `attempt` prepares the folder and lets cut(action) do the work, after
// which the folder is as the power cut left it; cut answers whether that change was reached.
template <typename Attempt>
void EachPowerCut(const char* folder, std::size_t atLeast, Attempt attempt) {
  for (std::uint32_t seed = 0; seed < 4; ++seed) {
    EachChange(atLeast, [&](std::size_t change) {
      bool hit = false;
      attempt([&](auto act) {
        PowerCut cut(folder, change, seed);
        act();
        cut.Restart();
        return hit = cut.Hit();
      });
      return hit;
    });
  }
}

}  // namespace mw
