// Work that is spread over the cores also has to be right where there is only one.
#pragma once

#include <cstddef>
#include <sched.h>

namespace mw {

// This thread stays on the first core that it may run on while this lives.
class OnOneCore {
 public:
  OnOneCore() {
    sched_getaffinity(0, sizeof before_, &before_);
    cpu_set_t one;
    CPU_ZERO(&one);
    std::size_t core = 0;
    while (!CPU_ISSET(core, &before_)) ++core;
    CPU_SET(core, &one);
    sched_setaffinity(0, sizeof one, &one);
  }
  ~OnOneCore() { sched_setaffinity(0, sizeof before_, &before_); }
  OnOneCore(const OnOneCore&) = delete;
  OnOneCore& operator=(const OnOneCore&) = delete;

 private:
  cpu_set_t before_{};
};

}  // namespace mw
