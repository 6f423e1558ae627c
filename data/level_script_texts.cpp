#include "data/level_script_texts.h"

#include "core/text.h"

namespace mw {
namespace {

constexpr char kWaterFormat[] = R"(water.specularEnable 1
water.texLayer1 texture/water%02i
water.texLayer2 texture/water%02i
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
water.tileLayer2 %s
water.tileNormalmap 1
water.lightDirection %s
water.color %s
water.deepColor %s
water.waterAlphaDepth %i
water.waterShallowAlpha 0.5

)";

constexpr char kGroundFormat[] = R"(GeometryTemplate.create PatchTerrain patchGeometry
GeometryTemplate.file varnhold\levels\%s\Heightmap
GeometryTemplate.materialMap varnhold\levels\%s\Materialmap
GeometryTemplate.materialSize %i
GeometryTemplate.targetTriCount 5000
GeometryTemplate.worldSize %i
GeometryTemplate.yScale %s
GeometryTemplate.texBaseName varnhold\levels\%s\Textures\Tx
GeometryTemplate.texOffsetX 0
GeometryTemplate.texOffsetY 0
GeometryTemplate.detailTexName varnhold\levels\%s\Textures\Detail
GeometryTemplate.waterLevel %s
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

)";

constexpr char kSkyFormat[] = R"(GeometryTemplate.create StandardMesh SkyBox
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
sky.changeOfsSkyHeight %i
Sky.setRotAngle %i
sky.sunLightDirectionVec %s
TextureManager.mipmaps 1
)";

}  // namespace

const std::string_view kFlagsTeamsAndKits = R"(ObjectTemplate.create Flag BlueFlag
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
)";

const std::string_view kShadowsOnGround = R"(Terrain.ShadowAmbient 80/80/90
Terrain.ShadowBorderFadeTime 0.25
Terrain.ShadowSamplingCullY 15
)";

const std::string_view kSun = R"(ObjectTemplate.create LensFlare TSun
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

)";

std::string LevelWaterText(const WaterLook& look) {
  return FormatText(kWaterFormat, look.texture1, look.texture2, look.tileLayer2.c_str(),
                    look.lightDirection.c_str(), look.colour.c_str(), look.deepColour.c_str(),
                    look.alphaDepth);
}

std::string LevelGroundText(const std::string& level, int samples, int worldSize,
                            const std::string& heightScale, const std::string& waterLevel) {
  const char* const name = level.c_str();
  return FormatText(kGroundFormat, name, name, samples, worldSize, heightScale.c_str(), name, name,
                    waterLevel.c_str(), worldSize);
}

std::string LevelSkyText(const std::string& mesh, int height, int angle,
                         const std::string& sunDirection) {
  return FormatText(kSkyFormat, mesh.c_str(), height, angle, sunDirection.c_str());
}

std::string LevelMenuText(const std::string& mod) {
  return "Game.setLocalized 1\n\ngame.setLoadPicture Load/Eastern.tga\n\ngame.setMapId \"" + mod +
         "\"";
}

}  // namespace mw
