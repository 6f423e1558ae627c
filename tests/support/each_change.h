// A save tried with every one of its changes of the disk going wrong, one after the other.
#pragma once

#include <cstddef>
#include <functional>
#include <gtest/gtest.h>
#include <string>

#include "support/disk_faults.h"

namespace mw {

// Prepares a fresh state and saves while change 0, 1, 2 ... goes wrong in this way, until a save is
// over before that change; `check` sees each result when the disk is in good health again, and
// whether the fault was met. Fails when the save makes no change at all.
inline void EachChange(FaultKind kind, const std::function<void()>& prepare,
                       const std::function<bool()>& save,
                       const std::function<void(bool saved, bool hit)>& check) {
  std::size_t change = 0;
  for (bool hit = true; hit && !::testing::Test::HasFatalFailure(); ++change) {
    SCOPED_TRACE("change " + std::to_string(change));
    prepare();
    bool saved = false;
    {
      const DiskFaults faults(kind, change);
      saved = save();
      hit = faults.Hit();
    }
    check(saved, hit);
  }
  EXPECT_GT(change, 1u) << "nothing was written";
}

}  // namespace mw
