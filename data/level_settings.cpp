#include "data/level_settings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "data/level_settings_commands.h"
#include "data/level_settings_lines.h"
#include "data/script.h"

namespace mw {
namespace {

// Calls act(script) in the order in which they are read, with the context set for it.
template <typename Act>
void ForEachScript(SettingsContext& context, Act act) {
  for (std::size_t i = 0; i < kSettingsScripts; ++i) {
    const auto script = static_cast<SettingsScript>(i);
    context.skyScript = script == SettingsScript::Sky;
    act(script);
  }
}

void ReadLine(std::string_view text, const SettingsContext& context) {
  const std::optional<SettingsLine> line = SettingsLine::Of(text);
  const SettingsCommand* const command = line ? FindSettingsCommand(line->command) : nullptr;
  if (command && command->read) command->read(*line, context);
}

// The new text of an owned line; empty for one that goes, nothing for one that stays as it is.
std::optional<std::string> RebuiltLine(std::string_view text, SettingsContext& context) {
  const std::optional<SettingsLine> line = SettingsLine::Of(text);
  const SettingsCommand* const command = line ? FindSettingsCommand(line->command) : nullptr;
  if (!command) return std::nullopt;
  if (command->isObsolete && command->isObsolete(*line, context)) return std::string();
  const std::optional<std::string> arguments = command->write(*line, context);
  if (!arguments) return std::nullopt;
  return std::string(command->name) + " " + *arguments + "\n";
}

}  // namespace

void ReadLevelSettings() {
  RememberSettingsDefaults();
  SettingsContext context;
  ForEachScript(context, [&context](SettingsScript script) {
    ReadScript(PathOf(script), kSettingsLineBuffer,
               [&context](std::string_view line) { ReadLine(line, context); });
  });
}

void WriteLevelSettings() {
  const SettingsPlaces places = FindSettingsPlaces();
  const auto added = MissingSettingsLines(places);
  SettingsContext context;
  for (const std::int32_t side : {1, 2}) {
    context.teamChanged[static_cast<std::size_t>(side - 1)] = IsTeamChanged(places, side);
  }
  ForEachScript(context, [&](SettingsScript script) {
    RewriteScript(
        PathOf(script), [&context](std::string_view line) { return RebuiltLine(line, context); },
        added[static_cast<std::size_t>(script)]);
  });
}

}  // namespace mw
