#include "sample/settings_scripts.h"

#include "core/text.h"
#include "data/script.h"

namespace mw::sample {
namespace {

std::string WithHeader(const std::string& text) { return std::string(ScriptHeader()) + text; }

std::string Vector(const std::array<float, 3>& v) {
  return FormatText("%g/%g/%g", static_cast<double>(v[0]), static_cast<double>(v[1]),
                    static_cast<double>(v[2]));
}

constexpr char kLevelInit[] =
    R"(ShaderManager.setTextureParam envmap varnhold\levels\%s\Textures\ENVMAP_G_.rcm

rem *** Light and fog ***
renderer.globalLodPercent 1
renderer.globalAmbientColor .1/.1/.1
renderer.ambientColor %s
renderer.diffuseColor %s
renderer.specularColor %s
renderer.vertexFogEnable 1
renderer.fogColorVec %s
renderer.fogstart %d
renderer.fogend %d
renderer.animatedMeshAmbientColor 0.15
shadow.shadowColor 0.55
textureManager.alternativePath Texture/%s

rem *** Game ***
Game.setViewDistance %d
Game.spawnPlayers 1
game.setActiveCombatArea 0 0 %d %d
game.assaultTeam 2

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

run Init/SkyAndSun
run Init/Terrain

)";

constexpr char kWater[] = R"(rem *** Water ***
water.specularEnable 1
water.texLayer1 texture/water%02d
water.texLayer2 texture/water%02d
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
water.tileLayer2 0.25
water.tileNormalmap 1
water.lightDirection %s
water.color %s
water.deepColor %s
water.waterAlphaDepth 4
water.waterShallowAlpha 0.5

run Sounds/Environment

game.setBeforeSpawnCameraPosition 1 %.2f/%.2f/%.2f
game.setBeforeSpawnCameraPosition 2 %.2f/%.2f/%.2f
)";

constexpr char kTerrain[] = R"(GeometryTemplate.create PatchTerrain patchGeometry
GeometryTemplate.file varnhold\levels\%s\Heightmap
GeometryTemplate.materialMap varnhold\levels\%s\Materialmap
GeometryTemplate.materialSize %d
GeometryTemplate.targetTriCount 5000
GeometryTemplate.worldSize %d
GeometryTemplate.yScale %g
GeometryTemplate.texBaseName varnhold\levels\%s\Textures\Tx
GeometryTemplate.texOffsetX 0
GeometryTemplate.texOffsetY 0
GeometryTemplate.detailTexName varnhold\levels\%s\Textures\Detail
GeometryTemplate.waterLevel %g
GeometryTemplate.seaFloorLevel 0
GeometryTemplate.lodDistance 350

ObjectTemplate.create SimpleObject terrainObject
ObjectTemplate.geometry patchGeometry
objectTemplate.createNotInGrid 1

Object.create terrainObject
Object.setName track
Object.absolutePosition 0/0/0
Object.rotation 0/0/0

Console.worldSize %d

rem *** Shadows on the ground ***
Terrain.ShadowAmbient 80/80/90
Terrain.ShadowBorderFadeTime 0.25
Terrain.ShadowSamplingCullY 15
)";

constexpr char kSky[] = R"(TextureManager.mipmaps 0

beginrem
The sun stands where it stood when the ground was painted, so that its
light and the shadows in the surface textures agree.
endrem
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
GeometryTemplate.file %s
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
sky.changeOfsSkyHeight %d
Sky.setRotAngle %d
sky.sunLightDirectionVec %s
TextureManager.mipmaps 1
)";

// Where a team's players look from before they appear: behind and above its first control point.
Point CameraOf(const Level& level, int team, float& height) {
  for (const ControlPointPlan& plan : level.controlPoints) {
    if (plan.team != team) continue;
    height = level.land.height.Sample(plan.at) + 30;
    return plan.at;
  }
  height = level.land.waterLevel + 60;
  const float middle = level.land.height.WorldSize() / 2;
  return {middle, middle};
}

std::string WaterText(const Level& level) {
  float height1 = 0, height2 = 0;
  const Point camera1 = CameraOf(level, 1, height1), camera2 = CameraOf(level, 2, height2);
  const Environment& e = level.environment;
  return FormatText(
      kWater, e.waterTexture, e.waterTexture + 1, Vector(level.land.sunDirection).c_str(),
      Vector(e.waterColour).c_str(), Vector(e.deepWaterColour).c_str(),
      static_cast<double>(camera1.x), static_cast<double>(height1), static_cast<double>(camera1.z),
      static_cast<double>(camera2.x), static_cast<double>(height2), static_cast<double>(camera2.z));
}

}  // namespace

std::string LevelInitScript(const Level& level) {
  const Environment& e = level.environment;
  const int worldSize = static_cast<int>(level.land.height.WorldSize());
  const std::string name(level.name), theatre(e.theatre);
  return WithHeader(FormatText(kLevelInit, name.c_str(), Vector(e.ambient).c_str(),
                               Vector(e.diffuse).c_str(), Vector(e.specular).c_str(),
                               Vector(e.fogColour).c_str(), e.fogStart, e.fogEnd, theatre.c_str(),
                               e.fogEnd, worldSize, worldSize) +
                    WaterText(level));
}

std::string TerrainScript(const Level& level) {
  const std::string nameText(level.name);
  const char* name = nameText.c_str();
  const int worldSize = static_cast<int>(level.land.height.WorldSize());
  return WithHeader(FormatText(kTerrain, name, name, level.land.height.Side(), worldSize,
                               static_cast<double>(level.heightScale), name, name,
                               static_cast<double>(level.land.waterLevel), worldSize));
}

std::string SkyScript(const Level& level) {
  const Environment& e = level.environment;
  return WithHeader(FormatText(kSky, std::string(e.skyMesh).c_str(), e.skyHeight, e.skyAngle,
                               Vector(level.land.sunDirection).c_str()));
}

std::string MenuScript() {
  return WithHeader(
      "Game.setLocalized 1\n\n"
      "game.setLoadPicture Load/Eastern.tga\n\n"
      "game.setMapId \"varnhold\"");
}

std::string SoundScript() {
  return WithHeader("rem Wind over the whole level.\nsound.setAmbience wind_light 0.4\n");
}

std::string ModeScript(std::string_view folder, bool tickets) {
  std::string text;
  if (tickets) {
    text +=
        "Game.setNumberOfTickets 1 100\nGame.setNumberOfTickets 2 100\n"
        "Game.setTicketLostPerMin 1 10\nGame.setTicketLostPerMin 2 10\n";
  }
  const std::string name(folder);
  const auto run = [&](const char* script) { return "run " + name + "/" + script + "\n"; };
  text += "\n" + run("SpawnpointManagerSettings") + run("SoldierSpawnTemplates") +
          run("SoldierSpawns") + run("ObjectSpawnTemplates") + run("ControlPointTemplates") + "\n";
  text += "if v_arg1 == host\n" + run("ObjectSpawns") + run("ControlPoints") + "else\nendIf\n";
  return WithHeader(text);
}

std::string StaticObjectsScript(const Level& level) {
  std::string text = "rem StaticObjects created by Mapwright\n";
  for (const PlacedObject& object : level.objects) {
    text += FormatText(
        "rem\nrem ***  ***\nrem\n"
        "Object.create %s\n"
        "Object.absolutePosition %.4f/%.4f/%.4f\n"
        "Object.rotation %.4f/%.4f/%.4f\n",
        std::string(object.name).c_str(), static_cast<double>(object.at.x),
        static_cast<double>(object.height), static_cast<double>(object.at.z),
        static_cast<double>(object.heading), 0.0, 0.0);
    if (object.scale == 1) continue;
    const double scale = object.scale;
    text += FormatText("Object.geometry.scale %.4f/%.4f/%.4f\n", scale, scale, scale);
  }
  return text;
}

std::string CubeMapText(std::string_view levelName) {
  const std::string name(levelName);
  std::string text = "[CubeMap]\n";
  constexpr struct {
    const char* side;
    int picture;
  } kSides[] = {{"PositiveX", 4}, {"NegativeX", 2}, {"PositiveY", 5},
                {"NegativeY", 6}, {"PositiveZ", 3}, {"NegativeZ", 1}};
  for (const auto& [side, picture] : kSides) {
    text += FormatText("%s = varnhold\\levels\\%s\\Textures\\env_%s_0%i.dds\n", side, name.c_str(),
                       name.c_str(), picture);
  }
  return text;
}

}  // namespace mw::sample
