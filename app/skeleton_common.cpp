// The scripts that every new level has, whatever its game rules.
#include "app/level_skeleton.h"
#include "app/skeleton_scripts.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/level_script_texts.h"
#include "data/mod_config.h"
#include "data/mods.h"
#include "data/open_level.h"

namespace mw {
namespace {

constexpr int kSpawnCameraHeight = 60;  // world units
// How far before the level's middle the camera of each side stands while a player waits.
constexpr int kSpawnCameraBack1 = 130, kSpawnCameraBack2 = 10;

// The first fog line ends with a blank, as the game's own levels have it.
constexpr std::string_view kLightAndFog =
    R"(renderer.globalLodPercent 1
renderer.globalAmbientColor .1/.1/.1
renderer.ambientColor .12/.11/.12
renderer.diffuseColor .35/.3/.2
renderer.specularColor .3/.3/.3
)"
    "renderer.vertexFogEnable 1 \n"
    R"(renderer.fogColorVec 0.68/0.62/0.55
renderer.animatedMeshAmbientColor 0.15
)";

constexpr std::string_view kShadowsAndDistances = R"(shadow.shadowColor 0.55

Game.setViewDistance 400
Game.spawnPlayers 1
renderer.fogstart 0
renderer.fogend 400

)";

constexpr std::string_view kShaderAndScripts =
    R"(shaderManager.setDefaultShaderSolidColor 0.2/0.2/0.2

run Init/SkyAndSun
run Init/Terrain

game.assaultTeam 2

)";

constexpr std::string_view kWaterShader = R"(subshader "WaterElala" "PatchTerrain/Water"
{
}
)";

std::string WaterText() {
  return LevelWaterText({.texture1 = 5,
                         .texture2 = 6,
                         .tileLayer2 = "0.5",
                         .lightDirection = "-0.3/0.5/-0.65",
                         .colour = "1/1/1",
                         .deepColour = "1/1/1",
                         .alphaDepth = 0});
}

std::string SpawnCameraLine(int team, int distanceBack) {
  const int half = modConfig.WorldSize / 2;
  return FormatText("game.setBeforeSpawnCameraPosition %i ", team) +
         PositionText(half, kSpawnCameraHeight, half - distanceBack) + "\n";
}

std::string InitText() {
  std::string text = "ShaderManager.setTextureParam envmap varnhold\\levels\\" +
                     modConfig.LevelName.String() + "\\Textures\\ENVMAP_G_.rcm\n";
  text += kLightAndFog;
  text += "textureManager.alternativePath " + modConfig.AlternativePath.String() + "\n\n";
  text += kShadowsAndDistances;
  text += kFlagsTeamsAndKits;
  text += "game.setLevelCheck 1357913579\n";
  text += FormatText("game.setActiveCombatArea 0 0 %i %i\n\n", modConfig.WorldSize,
                     modConfig.WorldSize);
  text += kShaderAndScripts;
  if (editor.levelHasWater) text += WaterText();
  text += "run Sounds/Environment\n\n";
  text += SpawnCameraLine(1, kSpawnCameraBack1) + SpawnCameraLine(2, kSpawnCameraBack2);
  return text;
}

std::string TerrainText() {
  return LevelGroundText(modConfig.LevelName.String(), modConfig.MaterialSize, modConfig.WorldSize,
                         FormatText("%f", static_cast<double>(modConfig.HeightScale)),
                         FormatText("%i", kNewWaterLevel)) +
         std::string(kShadowsOnGround) + "\n";
}

std::string SkyText() {
  return "TextureManager.mipmaps 0\n\n" + std::string(kSun) +
         LevelSkyText("Sky_Bocage_m1", 150, 180, "-0.191/.45/-0.873") + "\n";
}

bool WriteWaterShader() {
  auto file = GameFileOpen(openLevel.folder.String() + "\\Watershader.rs", "w");
  if (!file) return false;
  GameFilePuts(kWaterShader, *file);
  return GameFileClose(std::move(file));
}

}  // namespace

bool WriteCommonScripts() {
  return WriteNewScript("StaticObjects.con", "") && WriteNewScript("Init.con", InitText()) &&
         WriteNewScript("Init\\Terrain.con", TerrainText()) &&
         WriteNewScript("Init\\SkyAndSun.con", SkyText()) &&
         WriteNewScript("Menu\\Init.con", LevelMenuText(CurrentModName())) &&
         (!editor.levelHasWater || WriteWaterShader());
}

}  // namespace mw
