// The functions of the rules' table, one each: they list what the rule is about in the open level.
// The ones about a game mode look at those that can be played only.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "objects/entities.h"
#include "objects/level_rules.h"
#include "objects/static_object.h"

namespace mw {

// objects/entity_rules.cpp
RuleFinds SidesWithoutSpawns();
RuleFinds SpawnsWithoutGroup();
RuleFinds GroupsWithoutPoint();
RuleFinds SpawnIdsTwice();
RuleFinds PointsWithoutGroup();
RuleFinds PointsWithoutSpawns();
RuleFinds PointsOfOneGroup();
RuleFinds GroupsOfOtherTeam();
RuleFinds PointsWithoutRadius();
RuleFinds ObjectSpawnsWithoutPoint();
RuleFinds TemplatesWithoutObject();
RuleFinds TemplatesOfUnknownObject();
RuleFinds TemplatesWithTurnedDelays();
RuleFinds UnusedTemplates();

// objects/place_rules.cpp
RuleFinds EntitiesInNoMode();
RuleFinds EntitiesOutOfLevel();
RuleFinds EntitiesUnderGround();
RuleFinds EntitiesAboveGround();
RuleFinds EntitiesUnderWater();
RuleFinds EntitiesTwice();
RuleFinds UnknownObjects();
RuleFinds ObjectsOutOfLevel();
RuleFinds ObjectsUnderGround();
RuleFinds ObjectsAboveGround();
RuleFinds ObjectsTwice();
RuleFinds ObjectsWithoutSize();

// objects/ground_rules.cpp
RuleFinds GroundWithoutScale();
RuleFinds GroundUnderWater();
RuleFinds UnknownMaterials();
RuleFinds TilesWithoutTexture();
RuleFinds TilesNotMade();
RuleFinds LevelsWithoutDetail();
RuleFinds LevelsWithoutMap();

// objects/setting_rules.cpp
RuleFinds FogOfNoDepth();
RuleFinds SunsBelowHorizon();
RuleFinds UnknownSkies();
RuleFinds TeamsOfBothSides();
RuleFinds CombatAreasWithoutRoom();
RuleFinds SpawnCamerasOffGround();
RuleFinds SettingsScriptsNotRun();
RuleFinds ModesWithoutScript();
RuleFinds ModeScriptsNotRun();
RuleFinds SettingsWithoutPlace();
RuleFinds NearlyFullTables();

// What the rules share; objects/rule_tools.cpp.

RuleFind FindOf(const SpawnInstance& instance, std::string detail = {});
RuleFind FindOf(const StaticObject& object, std::string detail = {});
// Those that have files, one by one.
inline constexpr std::array kFileModes{kModeConquest, kModeCaptureTheFlag, kModeTeamDeathMatch};
// The modes that have a script of their own in the level, which is what makes the game offer them.
GameModeMask PlayedModes();
// The path of that script.
std::string ModeScriptPath(GameModeMask mode);
// "CQ, CTF"
std::string ModeList(GameModeMask modes);
// Whether an archive holds the file of the level, by its path from the level's folder.
bool LevelHasFile(std::string_view file);

// The ground around a place in level coordinates: the lowest and the highest of the four corners of
// its cell, world units. Nothing out of the level, and where there is no terrain.
struct GroundSpan {
  float lowest = 0, highest = 0;
};
std::optional<GroundSpan> GroundAround(const Vector3& place);
bool IsInLevel(const Vector3& place);

}  // namespace mw
