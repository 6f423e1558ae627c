#include "core/large_memory.h"

#include <cstdlib>
#include <new>

namespace mw {

void FreeLargeMemory::operator()(void* memory) const { std::free(memory); }

// On Windows large pages need a right that users do not have.
void* ZeroedLargeMemory(std::size_t bytes) {
  void* const memory = std::calloc(bytes, 1);
  if (!memory) throw std::bad_alloc();
  return memory;
}

}  // namespace mw
