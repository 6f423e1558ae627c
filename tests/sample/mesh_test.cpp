#include <algorithm>
#include <gtest/gtest.h>

#include "sample/content_archives.h"
#include "sample/mesh_files.h"
#include "sample/mesh_reader.h"
#include "sample/object_textures.h"
#include "sample/objects.h"

namespace mw::sample {
namespace {

// A material's texture is painted, as it is or as its darker sister.
bool IsPainted(std::string material) {
  if (material.ends_with("_shade")) material.resize(material.size() - 6);
  return std::ranges::any_of(ObjectMaterials(),
                             [&](const auto& painted) { return painted.name == material; });
}

void ReadStandardMesh(const Mesh& mesh, std::uint32_t version) {
  const std::vector<std::uint8_t> bytes = EncodeStandardMesh(mesh, version);
  const std::string shader = EncodeShader(mesh);
  MeshReader file(bytes);
  EXPECT_EQ(file.Number(), version);
  file.Skip(4);
  float box[6];
  for (float& value : box) value = file.Real();
  for (int k = 0; k < 3; ++k) EXPECT_LE(box[k], box[k + 3]);
  if (version == 10) file.Skip(1);
  const std::uint32_t collisions = file.Number();
  for (std::uint32_t k = 0; k < collisions && !file.failed; ++k) {
    const std::uint32_t size = file.Number();
    const std::size_t end = file.Position() + size;
    file.Skip(8);
    file.Collision();
    file.Skip(12);
    file.Skip(std::size_t{32} * file.Number());
    EXPECT_EQ(file.Position(), end);
  }
  EXPECT_EQ(file.Number(), 1u) << "levels of detail";
  struct Part {
    bool twoCoordinates;
    std::uint32_t vertices, indices;
  };
  std::vector<Part> parts(file.Number());
  for (Part& part : parts) {
    const std::string name = file.Name();
    EXPECT_TRUE(IsPainted(name)) << name;
    EXPECT_NE(shader.find("subshader \"" + name + "\""), std::string::npos) << name;
    file.Skip(16);
    part.twoCoordinates = (file.Number() & 1u << 13) != 0;
    file.Skip(4);
    part.vertices = file.Number();
    part.indices = file.Number();
    file.Skip(4);
  }
  for (const Part& part : parts) {
    file.Skip(std::size_t{part.twoCoordinates ? 40u : 32u} * part.vertices);
    EXPECT_EQ(part.indices % 3, 0u);
    file.Indices(part.indices, part.vertices);
  }
  EXPECT_FALSE(file.failed);
  EXPECT_TRUE(file.AtEnd());
}

void SkipSearchTree(MeshReader& file) {
  file.Skip(24);
  file.Skip(std::size_t{4} * file.Number());
  for (int child = 0; child < 2; ++child) {
    if (file.Byte() != 0) SkipSearchTree(file);
  }
}

void ReadTree(const Mesh& mesh) {
  const std::vector<std::uint8_t> bytes = EncodeTreeMesh(mesh);
  MeshReader file(bytes);
  EXPECT_EQ(file.Number(), 3u);
  file.Skip(8 + 24 + 24);
  std::uint32_t triangles = 0;
  for (int group = 0; group < 4; ++group) {
    const std::uint32_t items = file.Number();
    EXPECT_TRUE(items > 0 || group >= 2) << "leaves and trunk";
    for (std::uint32_t k = 0; k < items && !file.failed; ++k) {
      EXPECT_EQ(file.Number(), 3 * triangles) << "items follow each other";
      triangles += file.Number();
      const std::string texture = file.Name();
      ASSERT_TRUE(texture.starts_with("texture/")) << texture;
      EXPECT_TRUE(IsPainted(texture.substr(8))) << texture;
    }
  }
  ASSERT_EQ(file.Number(), 1u) << "has a collision mesh";
  file.Skip(4);
  EXPECT_GT(file.Collision(), 0u);
  file.Skip(8);
  file.Skip(std::size_t{32} * file.Number());
  SkipSearchTree(file);
  const std::uint32_t vertices = file.Number();
  file.Skip(std::size_t{44} * vertices);
  const std::uint32_t indices = file.Number();
  EXPECT_EQ(indices, 3 * triangles);
  file.Indices(indices, vertices);
  EXPECT_FALSE(file.failed);
  EXPECT_TRUE(file.AtEnd());
}

TEST(SampleMeshes, AreWholeAndShowPaintedMaterials) {
  for (const ObjectKind& object : ObjectKinds()) {
    SCOPED_TRACE(object.name);
    if (object.tree) {
      ReadTree(object.build());
    } else {
      ReadStandardMesh(object.build(), 9);
      ReadStandardMesh(object.build(), 10);
    }
  }
}

TEST(SampleMeshes, FacesLookOutwards) {
  MeshBuilder builder;
  builder.AddClosedBox({"brick", 4}, {-1, 0, -2}, {1, 3, 2});
  builder.AddCylinder({"steel", 4}, {0, 3, 0}, 1, 0.5f, 2, 8);
  const Vector3 middle{0, 2, 0};
  const Mesh mesh = builder.Take();
  for (const MeshPart& part : mesh.parts) {
    for (const MeshVertex& vertex : part.vertices) {
      const Vector3 outwards = vertex.position - middle;
      EXPECT_GT(outwards.x * vertex.normal.x + outwards.y * vertex.normal.y +
                    outwards.z * vertex.normal.z,
                0);
    }
  }
}

}  // namespace
}  // namespace mw::sample
