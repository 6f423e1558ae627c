// Work that is spread over the cores also has to be right where there is only one.
#pragma once

#include <memory>

namespace mw {

// This thread stays on the first core that it may run on while this lives.
class OnOneCore {
 public:
  OnOneCore();
  ~OnOneCore();
  OnOneCore(const OnOneCore&) = delete;
  OnOneCore& operator=(const OnOneCore&) = delete;

 private:
  struct Cores;
  std::unique_ptr<Cores> before_;
};

}  // namespace mw
