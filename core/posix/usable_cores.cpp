#include <algorithm>
#include <sched.h>
#include <thread>

#include "core/parallel.h"

namespace mw {

std::size_t UsableCores() {
  cpu_set_t cores;
  if (sched_getaffinity(0, sizeof cores, &cores) == 0) {
    return static_cast<std::size_t>(std::max(1, CPU_COUNT(&cores)));
  }
  return std::max(1u, std::thread::hardware_concurrency());  // more than the set has room for
}

}  // namespace mw
