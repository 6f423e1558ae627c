#include "data/level_settings.h"

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/editor_state.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/level_settings_commands.h"
#include "data/level_size.h"
#include "data/load_report.h"
#include "data/script.h"

namespace mw {
namespace {

struct SettingsScript {
  std::string_view file;
  LevelPart part;
};
constexpr std::array<SettingsScript, 3> kScripts = {
    SettingsScript{"init.con", LevelPart::InitScript},
    SettingsScript{"init/terrain.con", LevelPart::TerrainScript},
    SettingsScript{"init/skyandsun.con", LevelPart::SkyScript}};

std::string ScriptPath(const SettingsScript& script) {
  return editor.levelFolder.String() + "/" + std::string(script.file);
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
bool ReadSettingsScript(const SettingsScript& script, const SettingsContext& context,
                        SizeLines& sizeLines) {
  const std::unique_ptr<GameFile> file = GameFileOpen(ScriptPath(script), "r");
  if (!file) {
    NoteDamagedFile(FormatText("The %s is missing.", NameOf(script.part)));
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
  NoteDamagedPart(script.part,
                  FormatText("The %s is damaged: it could be read to line %zu. It is kept as it "
                             "is.",
                             NameOf(script.part), lines),
                  DamagedPart::Keep);
  return false;
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
  SizeLines sizeLines;
  bool terrainScriptIsWhole = false;
  for (const SettingsScript& script : kScripts) {
    context.skyScript = script.part == LevelPart::SkyScript;
    const bool whole = ReadSettingsScript(script, context, sizeLines);
    if (script.part == LevelPart::TerrainScript) terrainScriptIsWhole = whole;
  }
  CheckTerrainSize(sizeLines, terrainScriptIsWhole);
}

void WriteLevelSettings() {
  SettingsContext context;
  for (const SettingsScript& script : kScripts) {
    if (!MayWrite(script.part)) continue;
    context.skyScript = script.part == LevelPart::SkyScript;
    RewriteScript(ScriptPath(script),
                  [&](std::string_view line) { return RebuiltLine(line, context); });
  }
}

}  // namespace mw
