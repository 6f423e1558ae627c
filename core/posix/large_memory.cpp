#include "core/large_memory.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <sys/mman.h>

namespace mw {

void FreeLargeMemory::operator()(void* memory) const { std::free(memory); }

void* ZeroedLargeMemory(std::size_t bytes) {
  constexpr std::size_t kLargePage = std::size_t{2} << 20;
  const std::size_t whole = (bytes + kLargePage - 1) / kLargePage * kLargePage;
  void* const memory = std::aligned_alloc(kLargePage, whole);
  if (!memory) throw std::bad_alloc();
  madvise(memory, whole, MADV_HUGEPAGE);  // a system without them gives small ones
  return std::memset(memory, 0, bytes);
}

}  // namespace mw
