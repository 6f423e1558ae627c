// Tests of files that may not be written also have to tell something when root runs them.
#pragma once

namespace mw {

// Takes from this thread, while it lives, the right to write what a file's permissions forbid.
class PermissionsCount {
 public:
  PermissionsCount();
  ~PermissionsCount();
  PermissionsCount(const PermissionsCount&) = delete;
  PermissionsCount& operator=(const PermissionsCount&) = delete;
};

}  // namespace mw
