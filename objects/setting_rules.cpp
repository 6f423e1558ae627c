// Rules about the level's settings, its scripts, and how much of the editor's room it takes.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/text.h"
#include "data/level_settings_lines.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "data/script.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "objects/rules.h"

namespace mw {
namespace {

constexpr double kNearlyFull = 0.95;

RuleFinds FindWhen(bool isWrong, const char* what, std::string detail = {}, TreeItem item = 0) {
  if (!isWrong) return {};
  return {{what, std::move(detail), item, {}}};
}

// The scripts that this one runs: lower case, with `/`, without an extension.
std::vector<std::string> ScriptsRunBy(const std::string& script) {
  std::vector<std::string> run;
  const std::string path = openLevel.folder.String() + "/" + script;
  ReadScript(path, kSettingsLineBuffer, [&run](std::string_view line) {
    Tokenizer words(line);
    const auto command = words.Next(" \t");
    if (!command || !EqualNoCase(*command, "run")) return;
    std::string name = LowerCase(words.Next(" \t\r\n").value_or(""));
    std::ranges::replace(name, '\\', '/');
    if (name.ends_with(".con")) name.resize(name.size() - std::string_view(".con").size());
    run.push_back(std::move(name));
  });
  return run;
}

bool Runs(const std::vector<std::string>& run, std::string_view script) {
  return std::ranges::find(run, script) != run.end();
}

template <typename Records>
bool HasOfMode(const Records& records, GameModeMask mode) {
  return std::ranges::any_of(records, [mode](const auto& each) { return each->modes & mode; });
}

bool HasEntities(GameModeMask mode) {
  return std::ranges::any_of(entities.tables, [mode](const EntityTables& tables) {
    return HasOfMode(tables.instances, mode);
  });
}

// The scripts of the mode that hold something, in lower case.
std::vector<std::string> FilledScripts(GameModeMask mode) {
  constexpr std::array<std::array<const char*, 2>, kEntityKinds.size()> kNames{
      {{"soldierspawntemplates", "soldierspawns"},
       {"objectspawntemplates", "objectspawns"},
       {"controlpointtemplates", "controlpoints"}}};
  std::vector<std::string> filled;
  for (const EntityKind kind : kEntityKinds) {
    if (!HasOfMode(entities.Of(kind).instances, mode)) continue;
    for (const char* const name : kNames[static_cast<std::size_t>(kind)]) filled.emplace_back(name);
  }
  const bool hasGroups = std::ranges::any_of(
      entities.spawnGroups, [mode](const SpawnGroup& group) { return group.modes & mode; });
  if (hasGroups) filled.emplace_back("spawnpointmanagersettings");
  return filled;
}

void AddWhenNearlyFull(RuleFinds& finds, const char* what, std::size_t used, std::size_t room) {
  if (static_cast<double>(used) < kNearlyFull * static_cast<double>(room)) return;
  finds.push_back({what, FormatText("%zu of %zu", used, room), 0, {}});
}

}  // namespace

RuleFinds FogOfNoDepth() {
  return FindWhen(modConfig.VertexFogEnable != 0 && modConfig.fogEnd <= modConfig.fogStart,
                  "The fog", FormatText("from %i to %i", modConfig.fogStart, modConfig.fogEnd),
                  levelTree.fixed.fog);
}

// Where no script gives a direction, the game has one.
RuleFinds SunsBelowHorizon() {
  const Floats3& direction = modConfig.currentSky.sunDirection;
  return FindWhen(direction != Floats3{} && !(direction[1] > 0), "The sun", {},
                  levelTree.fixed.lighting);
}

RuleFinds UnknownSkies() {
  const auto count = static_cast<std::size_t>(std::clamp(modConfig.skyCount, 0, kMaxSkies));
  const auto skies = std::span(modConfig.skies).first(count);
  const bool isKnown = std::ranges::any_of(skies, [](const Sky& sky) {
    return EqualNoCase(sky.settings.mesh, modConfig.currentSky.mesh);
  });
  return FindWhen(count > 0 && !isKnown, "The sky", modConfig.currentSky.mesh.String(),
                  levelTree.fixed.lighting);
}

RuleFinds TeamsOfBothSides() {
  const std::int32_t team = modConfig.chosenTeam[0];
  if (team != modConfig.chosenTeam[1] || team < 0 || team >= modConfig.teamCount) return {};
  const std::string name = modConfig.teams[static_cast<std::size_t>(team)].name.String();
  return FindWhen(true, "One team", name, levelTree.fixed.teams);
}

// Without a line for it the game takes the whole level.
RuleFinds CombatAreasWithoutRoom() {
  const auto& area = modConfig.combatArea;
  const bool isGiven = std::ranges::any_of(area, [](std::int32_t part) { return part != 0; });
  const bool isWrong = area[0] >= modConfig.WorldSize || area[1] >= modConfig.WorldSize ||
                       area[2] <= 0 || area[3] <= 0;
  return FindWhen(isGiven && isWrong, "The active combat area",
                  FormatText("%i %i %i %i", area[0], area[1], area[2], area[3]));
}

RuleFinds SpawnCamerasOffGround() {
  RuleFinds finds;
  for (std::size_t side = 0; side < modConfig.beforeSpawnCamera.size(); ++side) {
    const Floats3& from = modConfig.beforeSpawnCamera[side];
    if (from == Floats3{}) continue;  // no script has a line for it
    const Vector3 place{from[0], from[1], from[2]};
    const auto ground = GroundAround(place);
    if (IsInLevel(place) && !(ground && place.y < ground->lowest)) continue;
    finds.push_back({FormatText("The camera before spawning of side %zu", side + 1), {}, 0, place});
  }
  return finds;
}

RuleFinds SettingsScriptsNotRun() {
  if (!LevelHasFile("init.con")) return {};
  RuleFinds finds;
  const std::vector<std::string> run = ScriptsRunBy("init.con");
  for (const char* const script : {"init/terrain", "init/skyandsun"}) {
    if (!Runs(run, script)) finds.push_back({"The script init.con", script, 0, {}});
  }
  return finds;
}

RuleFinds ModesWithoutScript() {
  RuleFinds finds;
  const GameModeMask played = PlayedModes();
  for (const GameModeMask mode : kFileModes) {
    if ((played & mode) || !HasEntities(mode)) continue;
    finds.push_back({"Game mode " + ModeList(mode), ModeScriptPath(mode), 0, {}});
  }
  return finds;
}

RuleFinds ModeScriptsNotRun() {
  RuleFinds finds;
  const GameModeMask played = PlayedModes();
  for (const GameModeMask mode : kFileModes) {
    if (!(played & mode)) continue;
    const std::string script = ModeScriptPath(mode);
    const std::string folder = script.substr(0, script.find('.'));
    const std::vector<std::string> run = ScriptsRunBy(script);
    for (const std::string& filled : FilledScripts(mode)) {
      const std::string needed = folder + "/" + filled;
      if (!Runs(run, needed)) finds.push_back({"The script " + script, needed, 0, {}});
    }
  }
  return finds;
}

RuleFinds SettingsWithoutPlace() {
  RuleFinds finds;
  if (openLevel.settingsDefaults.empty()) return finds;
  for (const std::string& command : FindMissingLines(FindSettingsPlaces()).withoutPlace) {
    finds.push_back({"The setting " + command, {}, levelTree.fixed.world, {}});
  }
  return finds;
}

RuleFinds NearlyFullTables() {
  RuleFinds finds;
  AddWhenNearlyFull(finds, "The table of objects", objectStore.objects.size(), kMaxStaticObjects);
  AddWhenNearlyFull(finds, "The table of spawn groups", entities.spawnGroups.size(),
                    kMaxSpawnGroups);
  struct Named {
    EntityKind kind;
    const char *templates, *instances;
    std::size_t templateRoom;
  };
  constexpr std::array kTables{
      Named{EntityKind::SoldierSpawn, "The table of soldier spawn templates",
            "The table of soldier spawns", kMaxTemplates},
      Named{EntityKind::ObjectSpawn, "The table of object spawn templates",
            "The table of object spawns", kMaxTemplates},
      Named{EntityKind::ControlPoint, "The table of control points", "The table of placed flags",
            kMaxControlPointTemplates}};
  for (const Named& table : kTables) {
    const EntityTables& tables = entities.Of(table.kind);
    AddWhenNearlyFull(finds, table.templates, tables.templates.size(), table.templateRoom);
    AddWhenNearlyFull(finds, table.instances, tables.instances.size(), kMaxInstances);
  }
  return finds;
}

}  // namespace mw
