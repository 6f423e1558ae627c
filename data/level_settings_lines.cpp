#include "data/level_settings_lines.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "core/text.h"
#include "data/level_settings_commands.h"
#include "data/open_level.h"

namespace mw {

namespace {

constexpr std::array<std::string_view, kSettingsScripts> kFiles = {"init.con", "init/terrain.con",
                                                                   "init/skyandsun.con"};

constexpr std::string_view kTemplatePrefix = "GeometryTemplate.";
constexpr std::string_view kCreateTemplate = "GeometryTemplate.create";

// Where a command's line belongs.
struct Home {
  SettingsScript script = SettingsScript::Init;
  bool inTemplate = false;  // behind the template's own lines, else at the script's end
};

Home HomeOf(std::string_view command) {
  if (EqualNoCase(command, kSkyMeshCommand)) return {SettingsScript::Sky, true};
  if (StartsWithNoCase(command, kTemplatePrefix)) return {SettingsScript::Terrain, true};
  if (StartsWithNoCase(command, "Terrain.")) return {SettingsScript::Terrain};
  if (StartsWithNoCase(command, "sky.")) return {SettingsScript::Sky};
  return {};
}

// The kind of the template that the script's own settings belong to.
std::string_view TemplateKind(SettingsScript script) {
  return script == SettingsScript::Sky ? "StandardMesh" : "PatchTerrain";
}

std::string KeyWithNumbers(std::string_view command, std::initializer_list<std::int32_t> numbers) {
  std::string key = LowerCase(command);
  for (const std::int32_t number : numbers) key.append(" ").append(std::to_string(number));
  return key;
}

std::string KeyOf(const SettingsCommand& command, SettingsLine line) {
  const auto number = [&line] { return ParseInt(line.arguments.Next(kBlankOrSlash)); };
  if (command.name == kTeamSkinCommand) return KeyWithNumbers(command.name, {number()});
  if (command.name != kTeamKitCommand) return LowerCase(command.name);
  const std::int32_t side = number();
  return KeyWithNumbers(command.name, {side, number()});
}

// Looks at the lines of one script.
class ScriptSurvey {
 public:
  ScriptSurvey(SettingsScript script, SettingsPlaces& places)
      : kind_(script), script_(places.scripts[static_cast<std::size_t>(script)]), places_(places) {}

  void Look(std::string_view text) {
    ++script_.lineCount;
    const std::optional<SettingsLine> line = SettingsLine::Of(text);
    if (!line) return;
    LookForTemplate(*line);
    const SettingsCommand* const command = FindSettingsCommand(line->command);
    if (!command) return;
    // In other scripts it names other geometry.
    if (command->name == kSkyMeshCommand && kind_ != SettingsScript::Sky) return;
    places_.present.insert(KeyOf(*command, *line));
    if (command->name == kTeamSkinCommand) LookForTeam(*line);
  }

 private:
  // A block comment is no place for a line, though what it holds counts as mentioned.
  void LookForTemplate(SettingsLine line) {
    if (EqualNoCase(line.command, "beginrem")) inComment_ = true;
    if (EqualNoCase(line.command, "endrem")) inComment_ = false;
    if (inComment_ || !StartsWithNoCase(line.command, kTemplatePrefix)) return;
    if (EqualNoCase(line.command, kCreateTemplate)) {
      const bool isFirst = !script_.endOfTemplate;
      inTemplate_ = isFirst && EqualNoCase(line.arguments.Next(kBlankOrSlash).value_or(""),
                                           TemplateKind(kind_));
    }
    if (inTemplate_) script_.endOfTemplate = script_.lineCount;
  }

  void LookForTeam(const SettingsLine& line) {
    const std::optional<TeamChoice> choice = TeamChosenBy(line);
    if (choice && HasTeamEntry(choice->entry)) {
      places_.team[static_cast<std::size_t>(choice->side - 1)] = choice->entry;
    }
  }

  SettingsScript kind_;
  SettingsPlaces::Script& script_;
  SettingsPlaces& places_;
  bool inComment_ = false, inTemplate_ = false;
};

// A script that is damaged and kept. It may have a line of any command, which cannot be read.
std::optional<SettingsScript> KeptScript(const SettingsPlaces& places) {
  for (std::size_t i = 0; i < kSettingsScripts; ++i) {
    if (places.scripts[i].exists && !places.scripts[i].isWritten) {
      return static_cast<SettingsScript>(i);
    }
  }
  return std::nullopt;
}

// The place for a new line of the command, or nothing.
std::optional<std::size_t> PlaceFor(const SettingsPlaces& places, std::string_view command) {
  const Home home = HomeOf(command);
  const SettingsPlaces::Script& script = places[home.script];
  if (!script.isWritten || KeptScript(places)) return std::nullopt;
  return home.inTemplate ? script.endOfTemplate : std::optional(script.lineCount);
}

class LineCollector {
 public:
  explicit LineCollector(const SettingsPlaces& places) : places_(places) {}

  // Adds the line unless the command has one, or there is no place for it.
  void Add(const std::string& key, std::string_view command, const std::string& arguments) {
    if (places_.present.contains(key)) return;
    if (const std::optional<std::size_t> place = PlaceFor(places_, command)) {
      auto& lines = missing_.added[static_cast<std::size_t>(HomeOf(command).script)];
      lines.push_back({*place, std::string(command) + " " + arguments});
    } else if (!WhyNotKept(places_, command).empty()) {
      missing_.withoutPlace.emplace_back(command);
    }
  }

  MissingLines Take() {
    for (auto& lines : missing_.added) std::ranges::stable_sort(lines, {}, &AddedLine::place);
    return std::move(missing_);
  }

 private:
  const SettingsPlaces& places_;
  MissingLines missing_;
};

std::vector<std::string> ValuesOf(const ModConfig& config) {
  std::vector<std::string> values;
  for (const SettingsCommand& command : SettingsCommands()) {
    values.push_back(command.value ? command.value(config) : std::string());
  }
  return values;
}

void AddChangedSettings(LineCollector& lines) {
  const std::vector<std::string> values = ValuesOf(modConfig);
  SettingsContext context;
  context.skyScript = true;  // where the mesh of the sky is written
  for (std::size_t i = 0; i < values.size(); ++i) {
    if (values[i] == openLevel.settingsDefaults[i]) continue;
    const SettingsCommand& command = SettingsCommands()[i];
    const auto arguments = command.write(*SettingsLine::Of(command.name), context);
    if (arguments) lines.Add(LowerCase(command.name), command.name, *arguments);
  }
}

void AddTeam(std::int32_t side, LineCollector& lines) {
  const Team& team = *ChosenTeam(side);
  const std::string number = std::to_string(side) + " ";
  if (!team.skin.empty()) {
    lines.Add(KeyWithNumbers(kTeamSkinCommand, {side}), kTeamSkinCommand,
              number + team.skin.String());
  }
  for (std::int32_t kit = 0; kit < kMaxKits; ++kit) {
    const NameText& name = team.kits[static_cast<std::size_t>(kit)];
    if (name.empty()) continue;
    lines.Add(KeyWithNumbers(kTeamKitCommand, {side, kit}), kTeamKitCommand,
              number + std::to_string(kit) + " " + name.String());
  }
}

}  // namespace

std::string_view FileOf(SettingsScript script) { return kFiles[static_cast<std::size_t>(script)]; }

std::string PathOf(SettingsScript script) {
  return openLevel.folder.String() + "/" + std::string(FileOf(script));
}

LevelPart PartOf(SettingsScript script) {
  constexpr std::array kParts = {LevelPart::InitScript, LevelPart::TerrainScript,
                                 LevelPart::SkyScript};
  return kParts[static_cast<std::size_t>(script)];
}

SettingsPlaces FindSettingsPlaces() {
  SettingsPlaces places;
  for (std::size_t i = 0; i < kSettingsScripts; ++i) {
    const auto kind = static_cast<SettingsScript>(i);
    SettingsPlaces::Script& script = places.scripts[i];
    script.exists = GameFileOpen(PathOf(kind), "rb") != nullptr;
    ScriptSurvey survey(kind, places);
    script.isWritten =
        ReadStoredLines(PathOf(kind), [&survey](std::string_view line) { survey.Look(line); }) &&
        MayWrite(PartOf(kind));
  }
  return places;
}

bool IsTeamChanged(const SettingsPlaces& places, std::int32_t side) {
  if (openLevel.settingsDefaults.empty() || !ChosenTeam(side)) return false;
  const auto index = static_cast<std::size_t>(side - 1);
  return modConfig.chosenTeam[index] != places.team[index];
}

std::string WhyNotKept(const SettingsPlaces& places, std::string_view command) {
  const Home home = HomeOf(command);
  const SettingsPlaces::Script& script = places[home.script];
  const std::string file(FileOf(home.script));
  if (places.present.contains(LowerCase(command))) return {};
  if (!script.exists) return "The level has no script " + file + ", which would keep this value.";
  if (const std::optional<SettingsScript> kept = KeptScript(places)) {
    return "The level's script " + std::string(FileOf(*kept)) +
           " is damaged and kept as it is: it may have a line for this value.";
  }
  if (!home.inTemplate || script.endOfTemplate) return {};
  return "The level's script " + file + " creates no " + std::string(TemplateKind(home.script)) +
         " template that this value could be added to.";
}

void RememberSettingsDefaults() { openLevel.settingsDefaults = ValuesOf(modConfig); }

void AdoptSettingsDefaults(const ModConfig& before) {
  if (openLevel.settingsDefaults.empty()) return;
  const std::vector<std::string> old = ValuesOf(before), adopted = ValuesOf(modConfig);
  for (std::size_t i = 0; i < adopted.size(); ++i) {
    if (adopted[i] != old[i]) openLevel.settingsDefaults[i] = adopted[i];
  }
}

MissingLines FindMissingLines(const SettingsPlaces& places) {
  LineCollector lines(places);
  if (!openLevel.settingsDefaults.empty()) AddChangedSettings(lines);
  for (const std::int32_t side : {1, 2}) {
    if (IsTeamChanged(places, side)) AddTeam(side, lines);
  }
  return lines.Take();
}

}  // namespace mw
