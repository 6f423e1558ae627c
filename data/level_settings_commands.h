// The commands of a level's settings scripts that the editor owns: one table that says how each is
// read into ModConfig and what its line becomes when the script is written again. For
// level_settings.cpp.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/text.h"
#include "data/mod_config.h"

namespace mw {

// What the lines before, and the script itself, mean for a line.
struct SettingsContext {
  bool skyScript = false;             // the script is init/skyandsun.con
  std::int32_t currentTeam = 0;       // the number in the last line about a team; 0 before any
  std::array<bool, 2> teamChanged{};  // the scripts name another team for side 1, 2
};

// A line of a settings script, taken apart.
struct SettingsLine {
  std::string_view command;
  Tokenizer arguments;  // as far as the line's first piece goes, which is what reading sees
  std::string_view allArguments;  // of the whole line

  // Nothing for a line without a token.
  static std::optional<SettingsLine> Of(std::string_view line);
};

struct SettingsCommand {
  std::string_view name;  // also the spelling of a rewritten line
  // Takes the arguments into ModConfig; null for a command that is only written.
  void (*read)(SettingsLine line, const SettingsContext& context);
  // The arguments that the line gets, or nothing to keep the line as it is.
  std::optional<std::string> (*write)(SettingsLine line, SettingsContext& context);
  // The setting as a text that is another one when the user changed the setting. Null for a command
  // whose line is never added.
  std::string (*value)(const ModConfig& config) = nullptr;
  // Whether the line goes; null for never.
  bool (*isObsolete)(SettingsLine line, const SettingsContext& context) = nullptr;
};

std::span<const SettingsCommand> SettingsCommands();
// The command of that name in any case, or null.
const SettingsCommand* FindSettingsCommand(std::string_view name);

inline constexpr std::string_view kSkyMeshCommand = "GeometryTemplate.file";
inline constexpr std::string_view kTeamSkinCommand = "game.setTeamSkin";
inline constexpr std::string_view kTeamKitCommand = "game.setKit";

// The sides are numbered from 1.
bool IsSide(std::int32_t team);
// The entry of the team table that was chosen for a side, or null.
const Team* ChosenTeam(std::int32_t side);

// What a line of kTeamSkinCommand chooses.
struct TeamChoice {
  std::int32_t side = 0;
  std::int32_t entry = 0;  // of the team table; none when it is beyond its end
  bool known = true;       // false: no entry has the skin, it is the side's own
  std::string skin;
};
// Nothing for a side other than 1 and 2, and for a line without a skin.
std::optional<TeamChoice> TeamChosenBy(SettingsLine line);
// Whether the entry is one of the team table.
bool HasTeamEntry(std::int32_t entry);

}  // namespace mw
