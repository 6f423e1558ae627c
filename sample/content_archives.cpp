#include "sample/content_archives.h"

#include "core/parallel.h"
#include "core/text.h"
#include "sample/mesh_files.h"
#include "sample/object_textures.h"
#include "sample/objects.h"
#include "sample/settings_scripts.h"

namespace mw::sample {
namespace {

constexpr int kWaterTextures = 8, kWaveNormals = 2;
constexpr float kShade = 0.7f;  // of a face's picture away from sun and sky

Picture Shaded(Picture picture) {
  for (Colour& colour : picture.pixels) colour = colour * kShade;
  return picture;
}

// Both files of the mesh format's versions occur.
std::uint32_t VersionOf(const ObjectKind& object) { return object.category == "PROPS" ? 9 : 10; }

}  // namespace

std::vector<Member> ObjectMembers() {
  std::vector<Member> members;
  for (const ObjectKind& object : ObjectKinds()) {
    members.push_back(
        TextMember("objects/" + std::string(object.name) + "/Objects.con", ObjectScript(object)));
  }
  return members;
}

std::vector<Member> StandardMeshMembers() {
  std::vector<Member> members;
  for (const ObjectKind& object : ObjectKinds()) {
    if (object.tree) continue;
    const Mesh mesh = object.build();
    const std::string name = "standardMesh/" + std::string(object.mesh);
    members.push_back({name + ".sm", EncodeStandardMesh(mesh, VersionOf(object))});
    members.push_back(TextMember(name + ".rs", EncodeShader(mesh)));
  }
  return members;
}

std::vector<Member> TreeMeshMembers() {
  std::vector<Member> members;
  for (const ObjectKind& object : ObjectKinds()) {
    if (!object.tree) continue;
    members.push_back(
        {"treeMesh/" + std::string(object.mesh) + ".tm", EncodeTreeMesh(object.build())});
  }
  return members;
}

std::vector<Member> TextureMembers() {
  const std::vector<ObjectMaterial>& materials = ObjectMaterials();
  std::vector<Member> members(materials.size() * 2 + kWaterTextures + kWaveNormals);
  SpreadOverCores(materials.size(), [&](std::size_t k) {
    const std::string name = "texture/" + std::string(materials[k].name);
    const Picture picture = PaintMaterial(materials[k]);
    members[2 * k] = PictureMember(name + ".dds", picture, true);
    members[2 * k + 1] = PictureMember(name + "_shade.dds", Shaded(picture), true);
  });
  const std::size_t water = materials.size() * 2;
  SpreadOverCores(kWaterTextures, [&](std::size_t k) {
    const int number = static_cast<int>(k) + 1;
    members[water + k] =
        PictureMember(FormatText("texture/water%02d.dds", number), PaintWater(number), true);
  });
  SpreadOverCores(kWaveNormals, [&](std::size_t k) {
    const int number = static_cast<int>(k) + 1;
    members[water + kWaterTextures + k] = PictureMember(
        FormatText("texture/normalMap%02d.dds", number), PaintWaveNormals(number), true);
  });
  return members;
}

}  // namespace mw::sample
