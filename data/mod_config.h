// `ModConfig`: the configuration record of the current mod and the open level, read by the whole
// editor. It is filled from the mod's .cfg file, then from the level's settings scripts; dialogs
// edit it.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/fixed_string.h"

namespace mw {

inline constexpr int kMaxTheatres = 8, kMaxTeams = 32, kMaxKits = 8, kMaxSkies = 32;
inline constexpr int kMaxMaterialSize = 1024;  // samples per side that the editor's grids hold
inline constexpr std::string_view kBaseModFolder = "Mods\\varnhold\\";
inline constexpr std::string_view kLevelsFolder = "varnhold\\levels\\";

using Floats2 = std::array<float, 2>;
using Floats3 = std::array<float, 3>;

struct Team {
  NameText name, templateName, skin;
  std::array<NameText, kMaxKits> kits;
};

struct SkySettings {
  NameText mesh;
  std::int32_t heightOffset = 0;
  std::int32_t rotationAngle = 0;  // degrees
  Floats3 sunDirection{};
};

struct Sky {
  NameText name;
  SkySettings settings;
};

// Fields that have a configuration key are named by it.
struct ModConfig {
  PathText LevelName;
  PathText GamePath;      // ends with `\`
  PathText modFolder;     // Mods\<mod name>\ .
  PathText levelsFolder;  // varnhold\levels\ .
  PathText ObjectsPath, StandardMeshPath, TreeMeshPath, TexturePath;
  PathText ObjectsList;
  PathText configurationName;  // the mod name whose file was parsed last

  std::int32_t MaterialSize = 0;                // samples per side; scripts may name any number
  std::int32_t WorldSize = 0;                   // world units per side
  float HeightScale = 0;                        // world units per height unit
  std::int32_t TexOffsetX = 0, TexOffsetY = 0;  // surface tiles
  float WaterLevel = 0;                         // world units

  std::int32_t theatreCount = 0;
  std::array<NameText, kMaxTheatres> theatres;

  std::uint8_t VertexFogEnable = 0;
  Floats3 FogColor{};
  std::int32_t fogStart = 0, fogEnd = 0;
  Floats3 GlobalAmbientColor{}, AmbientColor{}, DiffuseColor{}, SpecularColor{};
  FixedString<128> AlternativePath;
  float ShadowColor = 0;
  std::array<std::uint8_t, 3> terrainShadowAmbient{};
  std::int32_t terrainShadowSamplingCull = 0;
  std::array<std::int32_t, 4> combatArea{};

  std::array<Team, kMaxTeams> teams;
  std::int32_t teamCount = 0;
  std::array<std::int32_t, 2> chosenTeam{};  // index into teams, for sides 1 and 2

  std::array<Sky, kMaxSkies> skies;
  std::int32_t skyCount = 0;
  SkySettings currentSky;
  std::array<Floats3, 2> beforeSpawnCamera{};

  bool WaterSpecularEnable = false;
  Floats3 WaterColor{}, WaterDeepColor{};
  float WaterAlphaDepth = 0, WaterShallowAlpha = 0;
  Floats3 WaterSpecularColor{};
  PathText WaterTexLayer1, WaterTexLayer2, WaterNormalMap;
  Floats2 WaterScrollDirectionNormalmap{}, WaterScrollDirection1{}, WaterScrollDirection2{};
  float WaterScrollLayer1 = 0, WaterScrollLayer2 = 0, WaterScrollNormalmap = 0;
  float WaterSpecularStreakFactor = 0;
  float WaterTileLayer1 = 0, WaterTileLayer2 = 0, WaterTileNormalMap = 0;
  Floats3 WaterLightDirection{};
};

extern ModConfig modConfig;

// Folder of a mod relative to the game folder: Mods\<name, cut at its last dot>\ .
std::string ModFolderOf(std::string_view modName);

// Reads `<mod name>.cfg` of the working folder into the record. Keys that the file lacks leave
// their fields as they were. Shows "Can't load %s" or "Error in format of cfg file"; false when the
// file cannot be read.
bool ParseModConfig(std::string_view modName, ModConfig& config);

}  // namespace mw
