// The machine's record of the installed game (organisation "Quorrin", application "Varnhold").
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mw {

// A value of the game's record, or nothing when it is missing or unreadable.
std::optional<std::string> ReadGameSetting(std::string_view name);

}  // namespace mw
