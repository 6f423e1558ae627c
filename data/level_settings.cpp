#include "data/level_settings.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "core/editor_state.h"
#include "data/level_settings_commands.h"
#include "data/script.h"

namespace mw {
namespace {

constexpr std::string_view kSkyScript = "init/skyandsun.con";
constexpr std::array<std::string_view, 3> kScripts = {"init.con", "init/terrain.con", kSkyScript};

std::string ScriptPath(std::string_view script) {
  return editor.levelFolder.String() + "/" + std::string(script);
}

void ReadLine(std::string_view text, const SettingsContext& context) {
  const std::optional<SettingsLine> line = SettingsLine::Of(text);
  const SettingsCommand* const command = line ? FindSettingsCommand(line->command) : nullptr;
  if (command && command->read) command->read(*line, context);
}

std::optional<std::string> RebuiltLine(std::string_view text, SettingsContext& context) {
  const std::optional<SettingsLine> line = SettingsLine::Of(text);
  const SettingsCommand* const command = line ? FindSettingsCommand(line->command) : nullptr;
  if (!command) return std::nullopt;
  const std::optional<std::string> arguments = command->write(*line, context);
  if (!arguments) return std::nullopt;
  return std::string(command->name) + " " + *arguments + "\n";
}

}  // namespace

void ReadLevelSettings() {
  SettingsContext context;
  for (const std::string_view script : kScripts) {
    context.skyScript = script == kSkyScript;
    ReadScript(ScriptPath(script), kSettingsLineBuffer,
               [&](std::string_view line) { ReadLine(line, context); });
  }
}

void WriteLevelSettings() {
  SettingsContext context;
  for (const std::string_view script : kScripts) {
    context.skyScript = script == kSkyScript;
    RewriteScript(ScriptPath(script),
                  [&](std::string_view line) { return RebuiltLine(line, context); });
  }
}

}  // namespace mw
