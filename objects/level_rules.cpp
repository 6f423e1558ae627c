#include "objects/level_rules.h"

#include <algorithm>
#include <array>

#include "objects/rules.h"

namespace mw {
namespace {

using enum Gravity;

constexpr auto kRules = std::to_array<LevelRule>({
    // What much else follows from.
    {"ground-flat", Error, "has no height scale: the ground is flat in the game",
     GroundWithoutScale},
    {"ground-under-water", Warning, "lies under water everywhere", GroundUnderWater},

    // Game modes, and who appears where.
    {"side-without-spawns", Error, "has no soldier spawn for one side: its players never appear",
     SidesWithoutSpawns},
    {"spawn-without-group", Error, "has a spawn group that does not exist: nobody appears there",
     SpawnsWithoutGroup},
    {"group-without-point", Warning,
     "has a spawn group that no control point has: nobody can win it or lose it",
     GroupsWithoutPoint},
    {"spawn-id-twice", Warning, "has the spawn id of another one", SpawnIdsTwice},
    {"point-without-group", Error, "has no spawn group: it belongs to nobody", PointsWithoutGroup},
    {"point-without-spawns", Warning, "has no soldier spawn: nobody appears there",
     PointsWithoutSpawns},
    {"points-of-one-group", Warning, "shares its spawn group with another control point",
     PointsOfOneGroup},
    {"group-of-other-team", Warning, "belongs to another team than its spawn group",
     GroupsOfOtherTeam},
    {"point-without-radius", Warning, "has no radius: nobody can take it", PointsWithoutRadius},
    {"object-spawn-without-point", Warning, "has an OsID that no control point has",
     ObjectSpawnsWithoutPoint},
    {"template-without-object", Error, "names no object for either team: nothing appears",
     TemplatesWithoutObject},
    {"template-of-unknown-object", Warning, "names an object that the mod's object list lacks",
     TemplatesOfUnknownObject},
    {"template-delays", Warning, "has a longest spawn delay that is below its shortest",
     TemplatesWithTurnedDelays},
    {"template-unused", Note, "is placed nowhere", UnusedTemplates},

    // Where entities and objects stand.
    {"entity-in-no-mode", Error, "belongs to no game mode: it is not saved", EntitiesInNoMode},
    {"entity-out-of-level", Error, "stands out of the level", EntitiesOutOfLevel},
    {"entity-under-ground", Error, "stands under the ground", EntitiesUnderGround},
    {"entity-above-ground", Warning, "stands far above the ground", EntitiesAboveGround},
    {"entity-under-water", Warning, "stands under water", EntitiesUnderWater},
    {"entity-twice", Warning, "stands where another one stands", EntitiesTwice},
    {"object-unknown", Warning, "is not in the mod's object list", UnknownObjects},
    {"object-out-of-level", Warning, "stands out of the level", ObjectsOutOfLevel},
    {"object-under-ground", Warning, "stands under the ground", ObjectsUnderGround},
    {"object-above-ground", Warning, "stands far above the ground", ObjectsAboveGround},
    {"object-twice", Warning, "stands where the same object stands already", ObjectsTwice},
    {"object-without-size", Warning, "is scaled to nothing", ObjectsWithoutSize},

    // Materials and pictures.
    {"ground-unknown-material", Warning, "has a material that the game does not know",
     UnknownMaterials},
    {"tile-without-texture", Warning, "has no texture and is not assigned", TilesWithoutTexture},
    {"tile-not-made", Warning, "is assigned, but has no texture: generate the surface maps",
     TilesNotMade},
    {"no-detail-texture", Warning, "has no detail texture", LevelsWithoutDetail},
    {"no-in-game-map", Warning, "has no in-game map: generate it", LevelsWithoutMap},

    // Settings and scripts.
    {"fog", Warning, "ends before it begins: nothing can be seen", FogOfNoDepth},
    {"sun", Warning, "stands below the horizon", SunsBelowHorizon},
    {"sky-unknown", Note, "is not among the mod's skies", UnknownSkies},
    {"one-team-twice", Warning, "fights on both sides", TeamsOfBothSides},
    {"combat-area", Error, "leaves no room to fight in", CombatAreasWithoutRoom},
    {"spawn-camera", Warning, "does not stand above the level's ground", SpawnCamerasOffGround},
    {"script-not-run", Error, "does not run one of the settings scripts: its settings do not count",
     SettingsScriptsNotRun},
    {"mode-script-missing", Note, "has entities, but no script: the game does not offer it",
     ModesWithoutScript},
    {"mode-script-not-run", Error,
     "does not run one of the mode's scripts: its entities are missing", ModeScriptsNotRun},
    {"setting-without-place", Warning,
     "was changed, but no script has a place for it: it is not saved", SettingsWithoutPlace},
    {"nearly-full", Note, "has room for hardly any more", NearlyFullTables},
});

std::string Sentence(const RuleFind& find, const LevelRule& rule) {
  std::string text = find.what + " " + rule.text;
  if (!find.detail.empty()) text += " (" + find.detail + ")";
  return text;
}

}  // namespace

const char* NameOf(Gravity gravity) {
  return gravity == Error ? "error" : gravity == Warning ? "warning" : "note";
}

std::span<const LevelRule> LevelRules() { return kRules; }

std::vector<LevelFind> CheckRules() {
  std::vector<LevelFind> finds;
  for (const LevelRule& rule : kRules) {
    for (const RuleFind& find : rule.find()) {
      finds.push_back({&rule, Sentence(find, rule), find.item, find.place});
    }
  }
  std::ranges::stable_sort(finds, {}, [](const LevelFind& find) { return find.rule->gravity; });
  return finds;
}

}  // namespace mw
