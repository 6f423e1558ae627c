#include <algorithm>
#include <bit>
#include <thread>
#include <windows.h>

#include "core/parallel.h"

namespace mw {

std::size_t UsableCores() {
  DWORD_PTR own = 0, all = 0;
  if (GetProcessAffinityMask(GetCurrentProcess(), &own, &all) && own != 0) {
    return static_cast<std::size_t>(std::popcount(own));
  }
  return std::max(1u, std::thread::hardware_concurrency());  // in several groups of processors
}

}  // namespace mw
