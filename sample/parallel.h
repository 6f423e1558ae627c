// Spreads independent pieces of work over the processor's cores.
#pragma once

#include <functional>

namespace mw::sample {

// Calls `work` for 0 ... count - 1, in any order and at the same time, and returns when all are
// done.
void ParallelFor(int count, const std::function<void(int index)>& work);

}  // namespace mw::sample
