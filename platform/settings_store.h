// Settings that outlive the program: the machine's record of the installed game (organisation
// "Quorrin", application "Varnhold"), and the editor's own of its user ("Mapwright").
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mw {

inline constexpr std::size_t kMaxGameValueBytes = 31;
// A value of the game's record, or nothing when it is missing, too long or unreadable.
std::optional<std::string> ReadGameSetting(std::string_view name);

// Registers the game for this user, for one that came with the editor. False when it could not be
// written.
[[nodiscard]] bool WriteGameSetting(std::string_view name, std::string_view value);

// A value that the editor keeps for its user, or nothing. A slash in the name separates a group
// from what is in it.
std::optional<std::string> ReadEditorSetting(std::string_view name);
// False when it could not be written; what was there before stays.
[[nodiscard]] bool WriteEditorSetting(std::string_view name, std::string_view value);

}  // namespace mw
