// The commands of a level's settings scripts that the editor owns: one table that says how each is
// read into ModConfig and what its line becomes when the script is written again. For
// level_settings.cpp.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/text.h"

namespace mw {

// What the lines before, and the script itself, mean for a line.
struct SettingsContext {
  bool skyScript = false;        // the script is init/skyandsun.con
  std::int32_t currentTeam = 0;  // the number in the last line about a team; 0 before any
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
};

// The command of that name in any case, or null.
const SettingsCommand* FindSettingsCommand(std::string_view name);

}  // namespace mw
