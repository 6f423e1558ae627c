// Memory for arrays of many megabytes. A page that a program touches for the first time costs it
// far more than writing what is in it, so where the system has large pages such an array is made of
// them.
#pragma once

#include <cstddef>
#include <memory>

namespace mw {

struct FreeLargeMemory {
  std::size_t bytes = 0;
  void operator()(void* memory) const;
};

// Zeroed, and aligned for every type, to be given back by FreeLargeMemory with the same number of
// bytes, more than none; throws std::bad_alloc.
void* ZeroedLargeMemory(std::size_t bytes);

// For types that need no constructor and whose zeroes are meant.
template <typename T>
using LargeArray = std::unique_ptr<T[], FreeLargeMemory>;

template <typename T>
LargeArray<T> MakeZeroedArray(std::size_t count) {
  const std::size_t bytes = count * sizeof(T);
  return LargeArray<T>(static_cast<T*>(ZeroedLargeMemory(bytes)), FreeLargeMemory{bytes});
}

}  // namespace mw
