#include "sample/settings_scripts.h"

#include "core/text.h"
#include "data/level_script_texts.h"
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

)";

constexpr std::string_view kWhySunStandsThere = R"(beginrem
The sun stands where it stood when the ground was painted, so that its
light and the shadows in the surface textures agree.
endrem
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

std::string SpawnCameraLine(int team, const Point& at, float height) {
  return FormatText("game.setBeforeSpawnCameraPosition %i %.2f/%.2f/%.2f\n", team,
                    static_cast<double>(at.x), static_cast<double>(height),
                    static_cast<double>(at.z));
}

std::string WaterText(const Level& level) {
  float height1 = 0, height2 = 0;
  const Point camera1 = CameraOf(level, 1, height1), camera2 = CameraOf(level, 2, height2);
  const Environment& e = level.environment;
  return "rem *** Water ***\n" +
         LevelWaterText({.texture1 = e.waterTexture,
                         .texture2 = e.waterTexture + 1,
                         .tileLayer2 = "0.25",
                         .lightDirection = Vector(level.land.sunDirection),
                         .colour = Vector(e.waterColour),
                         .deepColour = Vector(e.deepWaterColour),
                         .alphaDepth = 4}) +
         "run Sounds/Environment\n\n" + SpawnCameraLine(1, camera1, height1) +
         SpawnCameraLine(2, camera2, height2);
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
                    std::string(kFlagsTeamsAndKits) + "\nrun Init/SkyAndSun\nrun Init/Terrain\n\n" +
                    WaterText(level));
}

std::string TerrainScript(const Level& level) {
  const int worldSize = static_cast<int>(level.land.height.WorldSize());
  return WithHeader(LevelGroundText(std::string(level.name), level.land.height.Side(), worldSize,
                                    FormatText("%g", static_cast<double>(level.heightScale)),
                                    FormatText("%g", static_cast<double>(level.land.waterLevel))) +
                    "rem *** Shadows on the ground ***\n" + std::string(kShadowsOnGround));
}

std::string SkyScript(const Level& level) {
  const Environment& e = level.environment;
  return WithHeader("TextureManager.mipmaps 0\n\n" + std::string(kWhySunStandsThere) +
                    std::string(kSun) +
                    LevelSkyText(std::string(e.skyMesh), e.skyHeight, e.skyAngle,
                                 Vector(level.land.sunDirection)));
}

std::string MenuScript() { return WithHeader(LevelMenuText("varnhold")); }

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
