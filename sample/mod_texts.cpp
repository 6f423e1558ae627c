// Configuration and object list of the mod, and the scripts of its objects.
#include "core/text.h"
#include "data/script.h"
#include "sample/settings_scripts.h"

namespace mw::sample {
namespace {

constexpr char kModConfig[] = R"(// %s
//
// One key per line. Values are separated by a slash, so paths are written with backslashes. A line that
// begins with no key, such as this one, is ignored.

// The game's folder, and its content archives: folder and name below it, without extension.
GamePath=%s
ObjectsPath=Mods\varnhold\objects
StandardMeshPath=Mods\varnhold\standardMesh
TreeMeshPath=Mods\varnhold\treeMesh
TexturePath=Mods\varnhold\texture

// The objects that can be placed: an object list of the working folder.
ObjectsList=varnhold.lst

// The ground, until a level is opened: samples per side, world units per side, world units per height
// unit, offset of the surface tiles, height of the water.
LevelName=
MaterialSize=512
WorldSize=2048
HeightScale=0.6
TexOffsetX=0
TexOffsetY=0
WaterLevel=35

// Light and fog, red, green and blue from 0 to 1.
VertexFogEnable=1
FogColor=0.68/0.62/0.55
GlobalAmbientColor=0.1/0.1/0.1
AmbientColor=0.12/0.11/0.12
DiffuseColor=0.35/0.3/0.2
SpecularColor=0.3/0.3/0.3
ShadowColor=0.55

// Where the game looks first for a theatre's textures.
AlternativePath=Coast

// Teams: name, flag template and skin, then the kits in the order of their numbers.
Team=Germany/AnimatedGeFlag/GermanSoldier
TeamKit=German_Scout
TeamKit=German_Assault
TeamKit=German_AT
TeamKit=German_Medic
TeamKit=German_Engineer
Team=United States/AnimatedUSFlag/USSoldier
TeamKit=US_Scout
TeamKit=US_Assault
TeamKit=US_AT
TeamKit=US_Medic
TeamKit=US_Engineer
Team=Britain/AnimatedUKFlag/BritishSoldier
TeamKit=British_Scout
TeamKit=British_Assault
TeamKit=British_AT
TeamKit=British_Medic
TeamKit=British_Engineer

// Skies: name, mesh, then height offset, rotation angle and direction of the sun.
Sky=Bocage
SkyMesh=Sky_Bocage_m1
SkyDefaults=150/180/-0.191/0.45/-0.873
Sky=Coast
SkyMesh=Sky_Coast_m1
SkyDefaults=120/40/-0.52/0.56/-0.6
Sky=Highland
SkyMesh=Sky_Highland_m1
SkyDefaults=150/180/0.5/0.6/-0.55
Sky=Evening
SkyMesh=Sky_Evening_m1
SkyDefaults=90/250/-0.8/0.22/0.3

// Theatres that a new level can be set in, at most 8.
Theatre=Coast
Theatre=Highland
Theatre=Winter

// Water. Textures are a folder and a name.
WaterSpecularEnable=1
WaterTexLayer1=texture/water05
WaterTexLayer2=texture/water06
WaterNormalMap=texture/normalMap01
WaterScrollDirectionNormalmap=1/0
WaterScrollDirection1=1/-0.5
WaterScrollDirection2=1/0.5
WaterSpecularColor=0.65/0.55/0.4
WaterScrollLayer1=0.02
WaterScrollLayer2=0.02
WaterScrollNormalmap=0.02
WaterSpecularStreakFactor=0.001
WaterTileLayer1=0.5
WaterTileLayer2=0.5
WaterTileNormalMap=1
WaterLightDirection=-0.3/0.5/-0.65
WaterShallowColor=0.55/0.75/0.72
WaterDeepColor=0.12/0.28/0.36
WaterAlphaDepth=4
WaterShallowAlpha=0.5
)";

}  // namespace

std::string ModConfigText(std::string_view gamePath, std::string_view introduction) {
  return FormatText(kModConfig, std::string(introduction).c_str(), std::string(gamePath).c_str());
}

std::string ObjectListText() {
  std::string text =
      "/ Objects of the sample game: name=kind(mesh). A line in brackets starts a category.\n";
  std::string_view category;
  for (const ObjectKind& object : ObjectKinds()) {
    if (object.category != category) {
      category = object.category;
      text += "\n[" + std::string(category) + "]\n";
    }
    text += FormatText("%s=%s(%s)\n", std::string(object.name).c_str(),
                       object.tree ? "TreeMesh" : "StandardMesh", std::string(object.mesh).c_str());
  }
  return text;
}

std::string ObjectScript(const ObjectKind& object) {
  const std::string name(object.name), mesh(object.mesh);
  return std::string(ScriptHeader()) + FormatText(
                                           "GeometryTemplate.create %s %s\n"
                                           "GeometryTemplate.file %s\n\n"
                                           "ObjectTemplate.create SimpleObject %s\n"
                                           "ObjectTemplate.geometry %s\n"
                                           "ObjectTemplate.hasCollisionPhysics 1\n",
                                           object.tree ? "TreeMesh" : "StandardMesh", mesh.c_str(),
                                           mesh.c_str(), name.c_str(), mesh.c_str());
}

}  // namespace mw::sample
