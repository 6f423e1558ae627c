// The scripts that every new level has, whatever its game rules.
#include "app/level_skeleton.h"
#include "app/skeleton_scripts.h"
#include "core/editor_state.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "data/mods.h"

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

constexpr std::string_view kFlagsAndTeams = R"(shadow.shadowColor 0.55

Game.setViewDistance 400
Game.spawnPlayers 1
renderer.fogstart 0
renderer.fogend 400

ObjectTemplate.create Flag BlueFlag
ObjectTemplate.team 1
ObjectTemplate.networkableInfo FlagBodyInfo
ObjectTemplate.radius 5
ObjectTemplate.TimeToReSpawn 10
ObjectTemplate.addTemplate AnimatedGeFlag

ObjectTemplate.create Flag RedFlag
ObjectTemplate.team 2
ObjectTemplate.networkableInfo FlagBodyInfo
ObjectTemplate.radius 5
ObjectTemplate.TimeToReSpawn 10
ObjectTemplate.addTemplate AnimatedUSFlag

game.setTeamSkin 1 GermanSoldier
game.setKit 1 0 German_Scout
game.setKit 1 1 German_Assault
game.setKit 1 2 German_AT
game.setKit 1 3 German_Medic
game.setKit 1 4 German_Engineer

game.setTeamSkin 2 USSoldier
game.setKit 2 0 US_Scout
game.setKit 2 1 US_Assault
game.setKit 2 2 US_AT
game.setKit 2 3 US_Medic
game.setKit 2 4 US_Engineer
game.setLevelCheck 1357913579
)";

constexpr std::string_view kShaderAndScripts =
    R"(shaderManager.setDefaultShaderSolidColor 0.2/0.2/0.2

run Init/SkyAndSun
run Init/Terrain

game.assaultTeam 2

)";

constexpr std::string_view kWater = R"(water.specularEnable 1
water.texLayer1 texture/water05
water.texLayer2 texture/water06
water.normalMap texture/normalMap01
water.scrollDirectionNormalmap 1/0
water.scrollDirection1 1/-0.5
water.scrollDirection2 1/0.5
water.specularColor 0.65/0.55/0.4
water.scrollLayer1 0.02
water.scrollLayer2 0.02
water.scrollNormalmap 0.02
water.specularStreakFactor 0.001
water.tileLayer1 0.5
water.tileLayer2 0.5
water.tileNormalmap 1
water.lightDirection -0.3/0.5/-0.65
water.color 1/1/1
water.deepColor 1/1/1
water.waterAlphaDepth 0
water.waterShallowAlpha 0.5

)";

constexpr const char* kTerrain = R"(GeometryTemplate.create PatchTerrain patchGeometry
GeometryTemplate.file varnhold\levels\%s\Heightmap
GeometryTemplate.materialMap varnhold\levels\%s\Materialmap
GeometryTemplate.materialSize %i
GeometryTemplate.targetTriCount 5000
GeometryTemplate.worldSize %i
GeometryTemplate.yScale %f
GeometryTemplate.texBaseName varnhold\levels\%s\Textures\Tx
GeometryTemplate.texOffsetX 0
GeometryTemplate.texOffsetY 0
GeometryTemplate.detailTexName varnhold\levels\%s\Textures\Detail
GeometryTemplate.waterLevel %i
GeometryTemplate.seaFloorLevel 0
GeometryTemplate.lodDistance 350

ObjectTemplate.create SimpleObject terrainObject
ObjectTemplate.geometry patchGeometry
objectTemplate.createNotInGrid 1

Object.create terrainObject
Object.setName track
Object.absolutePosition 0/0/0
Object.rotation 0/0/0

Console.worldSize %i

Terrain.ShadowAmbient 80/80/90
Terrain.ShadowBorderFadeTime 0.25
Terrain.ShadowSamplingCullY 15

)";

constexpr std::string_view kSkyAndSun = R"(TextureManager.mipmaps 0

ObjectTemplate.create LensFlare TSun
ObjectTemplate.setLensFlareCount 5
ObjectTemplate.setBackFlareCount 0
ObjectTemplate.setCoronaCount 2
ObjectTemplate.initLensFlares
ObjectTemplate.setVisibilityAngleDeg 360

Object.create TSun
Object.isSaveable 0
Object.name sun
ObjectTemplate.setflarefadeall 0.1
ObjectTemplate.setcoronafadeall 0.3

GeometryTemplate.create StandardMesh SkyBox
GeometryTemplate.file Sky_Bocage_m1
Sky.initSky

Sky.addCloud
Cloud.setName cloud_0
Cloud.setSrcBlend BMSourceAlpha
Cloud.setDstBlend BMInvSourceAlpha
Cloud.setTexScale 8
Cloud.setSpeed -0.03 0.015
Cloud.setHeight 3500

Sky.changeOfsCloudHeight 2500
Sky.changeOfsCloudDist 333
Sky.setCloudFog 0

Sky.setSun sun
sky.changeOfsSkyHeight 150
Sky.setRotAngle 180
sky.sunLightDirectionVec -0.191/.45/-0.873
TextureManager.mipmaps 1

)";

constexpr std::string_view kWaterShader = R"(subshader "WaterElala" "PatchTerrain/Water"
{
}
)";

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
  text += kFlagsAndTeams;
  text += FormatText("game.setActiveCombatArea 0 0 %i %i\n\n", modConfig.WorldSize,
                     modConfig.WorldSize);
  text += kShaderAndScripts;
  if (editor.levelHasWater) text += kWater;
  text += "run Sounds/Environment\n\n";
  text += SpawnCameraLine(1, kSpawnCameraBack1) + SpawnCameraLine(2, kSpawnCameraBack2);
  return text;
}

std::string TerrainText() {
  const char* const level = modConfig.LevelName.c_str();
  return FormatText(kTerrain, level, level, modConfig.MaterialSize, modConfig.WorldSize,
                    static_cast<double>(modConfig.HeightScale), level, level, kNewWaterLevel,
                    modConfig.WorldSize);
}

std::string MenuText() {
  return "Game.setLocalized 1\n\ngame.setLoadPicture Load/Eastern.tga\n\ngame.setMapId \"" +
         CurrentModName() + "\"";
}

bool WriteWaterShader() {
  auto file = GameFileOpen(editor.levelFolder.String() + "\\Watershader.rs", "w");
  if (!file) return false;
  GameFilePuts(kWaterShader, *file);
  return GameFileClose(std::move(file));
}

}  // namespace

bool WriteCommonScripts() {
  return WriteNewScript("StaticObjects.con", "") && WriteNewScript("Init.con", InitText()) &&
         WriteNewScript("Init\\Terrain.con", TerrainText()) &&
         WriteNewScript("Init\\SkyAndSun.con", kSkyAndSun) &&
         WriteNewScript("Menu\\Init.con", MenuText()) &&
         (!editor.levelHasWater || WriteWaterShader());
}

}  // namespace mw
