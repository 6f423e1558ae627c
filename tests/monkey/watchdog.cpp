#include "tests/monkey/watchdog.h"

#include <csignal>
#include <cstdio>

namespace mw::monkey {

void Watchdog::run() {
  constexpr unsigned long kTick = 100;  // milliseconds
  constexpr int kTicksPerSecond = 10;
  while (!done_) {
    msleep(kTick);
    if (++quiet_ < seconds_ * kTicksPerSecond) continue;
    std::fprintf(stderr, "An event took more than %i s.\n", seconds_);
    pthread_kill(watched_,
                 SIGABRT);  // there, so that its stack is what a debugger or sanitizer shows
    return;
  }
}

}  // namespace mw::monkey
