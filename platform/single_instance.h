// One running editor per user and desktop session.
#pragma once

#include <string_view>

namespace mw {

// Claims `name` until the program ends. False when another running program holds it.
bool ClaimSingleInstance(std::string_view name);

}  // namespace mw
