// Pure work spread over the processor's cores: compressing, encoding, painting.
#pragma once

#include <cstddef>
#include <functional>

namespace mw {

// How many of the processor's cores this thread may run on, at least 1.
std::size_t UsableCores();

// Calls work(0) ... work(count - 1), each once, in any order and on any thread, and returns when
// all are done. The calls must not throw and must not touch the same data.
void SpreadOverCores(std::size_t count, const std::function<void(std::size_t)>& work);

}  // namespace mw
