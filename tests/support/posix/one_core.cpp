#include "support/one_core.h"

#include <cstddef>
#include <sched.h>

namespace mw {

struct OnOneCore::Cores {
  cpu_set_t set{};
};

OnOneCore::OnOneCore() : before_(std::make_unique<Cores>()) {
  sched_getaffinity(0, sizeof before_->set, &before_->set);
  std::size_t core = 0;
  while (!CPU_ISSET(core, &before_->set)) ++core;
  cpu_set_t one;
  CPU_ZERO(&one);
  CPU_SET(core, &one);
  sched_setaffinity(0, sizeof one, &one);
}

OnOneCore::~OnOneCore() { sched_setaffinity(0, sizeof before_->set, &before_->set); }

}  // namespace mw
