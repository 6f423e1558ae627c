#include "support/permissions_count.h"

namespace mw {

// A file that is write-protected is so for everybody on Windows.
PermissionsCount::PermissionsCount() = default;
PermissionsCount::~PermissionsCount() = default;

}  // namespace mw
