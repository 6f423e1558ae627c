#include "data/level_settings.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/text.h"
#include "data/game_file.h"
#include "data/level_settings_commands.h"
#include "data/level_settings_lines.h"
#include "data/level_size.h"
#include "data/load_report.h"
#include "data/mod_config.h"
#include "data/open_level.h"
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

void ReadLine(std::string_view text, const SettingsContext& context, SizeLines& sizeLines) {
  const std::optional<SettingsLine> line = SettingsLine::Of(text);
  const SettingsCommand* const command = line ? FindSettingsCommand(line->command) : nullptr;
  if (!command || !command->read) return;
  command->read(*line, context);
  sizeLines.materialSize |= EqualNoCase(command->name, "GeometryTemplate.materialSize");
  sizeLines.worldSize |= EqualNoCase(command->name, "GeometryTemplate.worldSize");
}

// False, noted in the load report, when the script is missing or damaged.
bool ReadSettingsScript(SettingsScript script, const SettingsContext& context,
                        SizeLines& sizeLines) {
  const LevelPart part = PartOf(script);
  const std::unique_ptr<GameFile> file = GameFileOpen(PathOf(script), "r");
  if (!file) {
    NoteDamagedFile(FormatText("The %s is missing.", NameOf(part)));
    return false;
  }
  std::size_t lines = 0;
  bool gap = false;
  ForEachLine(*file, kSettingsLineBuffer, [&](std::string_view line) {
    gap = gap || IsGap(line);
    if (!gap) ++lines;
    ReadLine(line, context, sizeLines);
  });
  if (IsWhole(*file)) return true;
  NoteDamagedPart(part,
                  FormatText("The %s is damaged: it could be read to line %zu. It is kept as it "
                             "is.",
                             NameOf(part), lines),
                  DamagedPart::Keep);
  return false;
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
  SizeLines sizeLines;
  bool terrainScriptIsWhole = false;
  ForEachScript(context, [&](SettingsScript script) {
    const bool whole = ReadSettingsScript(script, context, sizeLines);
    if (script == SettingsScript::Terrain) terrainScriptIsWhole = whole;
  });
  const ModConfig asRead = modConfig;
  CheckTerrainSize(sizeLines, terrainScriptIsWhole);
  AdoptSettingsDefaults(asRead);  // nobody has edited what was taken from the height map
}

const std::vector<std::string>& SettingsNotSaved() { return openLevel.settingsNotSaved; }

bool WriteLevelSettings() {
  const SettingsPlaces places = FindSettingsPlaces();
  MissingLines missing = FindMissingLines(places);
  openLevel.settingsNotSaved = std::move(missing.withoutPlace);
  SettingsContext context;
  for (const std::int32_t side : {1, 2}) {
    context.teamChanged[static_cast<std::size_t>(side - 1)] = IsTeamChanged(places, side);
  }
  bool written = true;
  ForEachScript(context, [&](SettingsScript script) {
    if (!places[script].exists || !MayWrite(PartOf(script))) return;
    written &= RewriteScript(
        PathOf(script), [&context](std::string_view line) { return RebuiltLine(line, context); },
        missing.added[static_cast<std::size_t>(script)]);
  });
  return written;
}

}  // namespace mw
