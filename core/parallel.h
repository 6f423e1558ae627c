// Pure work spread over the processor's cores: compressing, encoding, painting.
#pragma once

#include <cstddef>
#include <functional>

namespace mw {

// How many of the processor's cores this thread may run on, at least 1.
std::size_t UsableCores();

// Calls work(0) ... work(count - 1), each once, in any order and on any thread, and returns when
// all are done. The calls must not touch the same data. When one throws, no further ones begin, and
// as soon as those under way have ended the first exception goes on to the caller. The threads that
// can be started do the work, at the least the caller's own.
void SpreadOverCores(std::size_t count, const std::function<void(std::size_t)>& work);

// The same on at most so many threads, for work that needs room of its own: calls with the same
// `worker`, 0 ... `workers` - 1, come one after the other.
void SpreadOverWorkers(std::size_t count, std::size_t workers,
                       const std::function<void(std::size_t task, std::size_t worker)>& work);

}  // namespace mw
