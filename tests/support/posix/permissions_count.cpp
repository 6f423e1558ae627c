#include "support/permissions_count.h"

#include <cstdint>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace mw {
namespace {

constexpr std::uint32_t kWriteAnything = 1u << CAP_DAC_OVERRIDE;

bool SetRight(bool wanted) {
  __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
  __user_cap_data_struct rights[2] = {};
  syscall(SYS_capget, &header, rights);
  const bool had = (rights[0].effective & kWriteAnything) != 0;
  rights[0].effective &= ~kWriteAnything;
  if (wanted) rights[0].effective |= kWriteAnything;
  syscall(SYS_capset, &header, rights);
  return had;
}

bool hadRight = false;

}  // namespace

PermissionsCount::PermissionsCount() { hadRight = SetRight(false); }

PermissionsCount::~PermissionsCount() { SetRight(hadRight); }

}  // namespace mw
