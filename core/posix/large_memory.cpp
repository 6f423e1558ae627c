#include "core/large_memory.h"

#include <cstdint>
#include <new>
#include <sys/mman.h>

namespace mw {
namespace {

constexpr std::size_t kLargePage = std::size_t{2} << 20;

std::size_t WholePages(std::size_t bytes) { return (bytes + kLargePage - 1) & ~(kLargePage - 1); }

}  // namespace

void FreeLargeMemory::operator()(void* memory) const { munmap(memory, WholePages(bytes)); }

// Straight from the system, which gives zeroes, and at the beginning of a large page: what lies
// before and behind it is given back. A system without large pages gives small ones.
void* ZeroedLargeMemory(std::size_t bytes) {
  const std::size_t whole = WholePages(bytes);
  void* const mapped =
      mmap(nullptr, whole + kLargePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (mapped == MAP_FAILED) throw std::bad_alloc();
  const std::size_t before = -reinterpret_cast<std::uintptr_t>(mapped) % kLargePage;
  auto* const memory = static_cast<std::uint8_t*>(mapped) + before;
  if (before != 0) munmap(mapped, before);
  munmap(memory + whole, kLargePage - before);
  madvise(memory, whole, MADV_HUGEPAGE);
  return memory;
}

}  // namespace mw
