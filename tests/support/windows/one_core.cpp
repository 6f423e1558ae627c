#include "support/one_core.h"

#include <windows.h>

namespace mw {

struct OnOneCore::Cores {
  DWORD_PTR own = 0, all = 0;
};

// The threads of a process are counted by the cores of the process.
OnOneCore::OnOneCore() : before_(std::make_unique<Cores>()) {
  GetProcessAffinityMask(GetCurrentProcess(), &before_->own, &before_->all);
  SetProcessAffinityMask(GetCurrentProcess(), before_->own & (~before_->own + 1));
}

OnOneCore::~OnOneCore() { SetProcessAffinityMask(GetCurrentProcess(), before_->own); }

}  // namespace mw
