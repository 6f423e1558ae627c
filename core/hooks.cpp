#include "core/hooks.h"

namespace mw {

Hooks hooks;

}  // namespace mw
