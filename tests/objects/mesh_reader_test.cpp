#include "objects/mesh_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "objects/mesh_bytes.h"
#include "sample/mesh_files.h"
#include "sample/mesh_reader.h"
#include "sample/objects.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

Vector3 NextVector(MeshReader& file) {
  const float x = file.Real(), y = file.Real(), z = file.Real();
  return {x, y, z};
}

void ExpectSameEdges(MeshReader& file, const MeshSurface& edges) {
  const std::uint32_t vertices = file.Number();
  ASSERT_THAT(edges.vertices, SizeIs(vertices));
  for (const MeshVertex& vertex : edges.vertices) {
    EXPECT_EQ(vertex.position, NextVector(file));
    file.Skip(4);
  }
  const std::uint32_t faces = file.Number();
  ASSERT_THAT(edges.indices, SizeIs(6 * faces));
  for (std::size_t at = 0; at < edges.indices.size(); at += 6) {
    const std::uint32_t a = file.Index(), b = file.Index(), c = file.Index();
    EXPECT_THAT(std::span(edges.indices).subspan(at, 6), ElementsAre(a, b, b, c, c, a));
    file.Skip(2);
  }
  EXPECT_EQ(edges.kind, MeshSurface::Kind::Lines);
  EXPECT_EQ(edges.lineWidth, 2);
}

std::vector<MeshVertex> ReadVertices(MeshReader& file, std::uint32_t count, std::size_t unused,
                                     std::size_t unusedAtEnd) {
  std::vector<MeshVertex> vertices(count);
  for (MeshVertex& vertex : vertices) {
    vertex.position = NextVector(file);
    file.Skip(unused);
    vertex.u = file.Real();
    vertex.v = file.Real();
    file.Skip(unusedAtEnd);
  }
  return vertices;
}

// The corners of the triangles one after the other, whatever the order of the vertices.
std::vector<MeshVertex> Corners(const MeshSurface& surface) {
  std::vector<MeshVertex> corners;
  for (const std::uint32_t index : surface.indices) corners.push_back(surface.vertices[index]);
  return corners;
}

void ExpectAsRead(const std::vector<std::uint8_t>& bytes) {
  const auto mesh = ReadStandardMesh(bytes);
  ASSERT_TRUE(mesh);
  MeshReader file(bytes);
  const bool extraByte = file.Number() == 10;
  file.Skip(4);
  EXPECT_EQ(mesh->boxA, NextVector(file));
  EXPECT_EQ(mesh->boxB, NextVector(file));
  file.Skip(extraByte ? 1 : 0);
  ASSERT_EQ(file.Number(), 2u);
  const std::size_t first = file.Number(), end = file.Position() + first;
  file.Skip(8);
  ExpectSameEdges(file, mesh->collision);
  file.Skip(end - file.Position());
  file.Skip(file.Number());
  ASSERT_EQ(file.Number(), 1u);
  EXPECT_TRUE(mesh->hasDetail);
  ASSERT_THAT(mesh->surfaces, SizeIs(file.Number()));
  std::vector<std::array<std::uint32_t, 3>> parts;  // flags, vertices, indices
  for (const MaterialSurface& surface : mesh->surfaces) {
    EXPECT_EQ(surface.material, file.Name());
    file.Skip(16);
    const std::uint32_t flags = file.Number();
    file.Skip(4);
    const std::uint32_t vertices = file.Number(), indices = file.Number();
    parts.push_back({flags, vertices, indices});
    file.Skip(4);
  }
  for (std::size_t k = 0; k < parts.size(); ++k) {
    const auto& [flags, vertices, indices] = parts[k];
    const MeshSurface& surface = mesh->surfaces[k].surface;
    EXPECT_EQ(surface.vertices, ReadVertices(file, vertices, 12, flags & 1u << 13 ? 8 : 0));
    ASSERT_THAT(surface.indices, SizeIs(indices));
    for (const std::uint32_t index : surface.indices) EXPECT_EQ(index, file.Index());
  }
  EXPECT_TRUE(file.AtEnd() && !file.failed);
}

void ExpectTreeAsRead(const std::vector<std::uint8_t>& bytes) {
  const auto mesh = ReadTreeMesh(bytes);
  ASSERT_TRUE(mesh && mesh->shown);
  MeshReader file(bytes);
  file.Skip(12);
  EXPECT_EQ(mesh->boxA, NextVector(file));
  EXPECT_EQ(mesh->boxB, NextVector(file));
  file.Skip(24);
  std::vector<std::uint32_t> counts;
  for (int group = 0; group < 4; ++group) {
    for (std::uint32_t items = file.Number(); items > 0; --items) {
      file.Skip(4);
      counts.push_back(3 * file.Number());
      EXPECT_EQ(mesh->surfaces.at(counts.size() - 1).material, file.Name());
    }
  }
  file.Skip(8);
  ExpectSameEdges(file, mesh->collision);
  file.Skip(3 * 4 + 24 + 4 + 2);  // one node without children
  const std::vector<MeshVertex> vertices = ReadVertices(file, file.Number(), 16, 8);
  file.Skip(4);
  ASSERT_THAT(mesh->surfaces, SizeIs(counts.size()));
  for (std::size_t k = 0; k < counts.size(); ++k) {
    const std::vector<MeshVertex> corners = Corners(mesh->surfaces[k].surface);
    ASSERT_THAT(corners, SizeIs(counts[k]));
    for (const MeshVertex& corner : corners) EXPECT_EQ(corner, vertices.at(file.Index()));
  }
  EXPECT_TRUE(file.AtEnd() && !file.failed);
}

TEST(MeshFiles, EveryMeshOfTheSampleGameIsReadWhole) {
  int standard = 0, trees = 0;
  for (const sample::ObjectKind& object : sample::ObjectKinds()) {
    SCOPED_TRACE(object.name);
    if (object.tree) {
      ++trees;
      ExpectTreeAsRead(sample::EncodeTreeMesh(object.build()));
      continue;
    }
    ++standard;
    ExpectAsRead(sample::EncodeStandardMesh(object.build(), 9));
    ExpectAsRead(sample::EncodeStandardMesh(object.build(), 10));
  }
  EXPECT_EQ(standard, 24);
  EXPECT_EQ(trees, 3);
}

TEST(StandardMeshFile, OnlyTheFirstCollisionMeshIsShown) {
  const Bytes file =
      StandardMeshBytes{.collisions = {SizedCollision(2, 3), MeshBytes().Number(5).Junk(5).Get(),
                                       SizedCollision(9, 0)}}
          .Get();
  const auto mesh = ReadStandardMesh(file);
  ASSERT_TRUE(mesh);
  EXPECT_EQ(mesh->collision.vertices.at(1).position, (Vector3{2, 0, 0}));
  EXPECT_THAT(mesh->collision.indices, ElementsAre(0, 1, 1, 2, 2, 0));
  EXPECT_THAT(mesh->surfaces, SizeIs(1)) << "reading goes on behind the last one";
}

TEST(StandardMeshFile, HasNeitherCollisionMeshNorDetail) {
  const auto mesh = ReadStandardMesh(StandardMeshBytes{.collisions = {}, .levels = 0}.Get());
  ASSERT_TRUE(mesh);
  EXPECT_THAT(mesh->collision.indices, IsEmpty());
  EXPECT_FALSE(mesh->hasDetail);
}

TEST(StandardMeshFile, LaterLevelsOfDetailAreNotRead) {
  Bytes file = StandardMeshBytes{.levels = 4}.Get();
  file.push_back(0xFF);
  const auto mesh = ReadStandardMesh(file);
  ASSERT_TRUE(mesh);
  EXPECT_THAT(mesh->surfaces, SizeIs(1));
}

TEST(StandardMeshFile, AMaterialMayHaveTwoTextureCoordinates) {
  const auto mesh = ReadStandardMesh(
      StandardMeshBytes{.materials = {{.twoCoordinates = true}, {.name = "roof"}}}.Get());
  ASSERT_TRUE(mesh);
  EXPECT_EQ(mesh->surfaces.at(0).surface.vertices, mesh->surfaces.at(1).surface.vertices);
  EXPECT_EQ(mesh->surfaces.at(0).surface.vertices.at(2), (MeshVertex{{1, 1, 0}, 1, 1}));
}

TEST(StandardMeshFile, IndicesThatMakeNoTriangleAreLeftOut) {
  const auto mesh =
      ReadStandardMesh(StandardMeshBytes{.materials = {{.indices = {0, 1, 2, 3, 0}}}}.Get());
  ASSERT_TRUE(mesh);
  EXPECT_THAT(mesh->surfaces.at(0).surface.indices, ElementsAre(0, 1, 2));
}

TEST(StandardMeshFile, IndicesPastTheVerticesAreRefused) {
  EXPECT_FALSE(ReadStandardMesh(StandardMeshBytes{.materials = {{.indices = {0, 1, 4}}}}.Get()));
  Bytes collision = SizedCollision(1, 0);
  collision[4 + 8 + 4 + 3 * 16 + 4] = 3;  // the first index of the face
  EXPECT_FALSE(ReadStandardMesh(StandardMeshBytes{.collisions = {collision}}.Get()));
}

TEST(StandardMeshFile, ACollisionMeshLargerThanItsSizeIsRefused) {
  Bytes collision = SizedCollision(1, 0);
  collision[0] = 40;
  EXPECT_FALSE(ReadStandardMesh(StandardMeshBytes{.collisions = {collision}}.Get()));
}

TEST(TreeMeshFile, TwoTextureGroupsAreDrawnAndFourAreNamed) {
  const auto mesh = ReadTreeMesh(TreeMeshBytes{}.Get());
  ASSERT_TRUE(mesh);
  EXPECT_EQ(mesh->boxB, (Vector3{4, 5, 6}));
  ASSERT_THAT(mesh->surfaces, SizeIs(2));
  EXPECT_EQ(mesh->surfaces[0].material, "texture/leaf");
  EXPECT_THAT(Corners(mesh->surfaces[0].surface), SizeIs(6));
  EXPECT_EQ(mesh->surfaces[1].material, "bark");
  EXPECT_THAT(Corners(mesh->surfaces[1].surface),
              ElementsAre(MeshVertex{{-1, -1, 0}, -1, -1}, MeshVertex{{1, 1, 0}, 1, 1},
                          MeshVertex{{-1, 1, 0}, -1, 1}));
  EXPECT_THAT(mesh->otherTextures, ElementsAre("sprite"));
}

TEST(TreeMeshFile, TheSearchTreeIsPassedOver) {
  // A root whose first child has both children and whose second child has a second one only.
  MeshBytes part = TreeMeshBytes::CollisionPart(2);
  part.Append(TreeMeshBytes::Node(3).Byte(1).Get());
  part.Append(TreeMeshBytes::Node(0).Byte(1).Get());
  part.Append(TreeMeshBytes::Node(1).Byte(0).Byte(0).Get()).Byte(9);
  part.Append(TreeMeshBytes::Node(2).Byte(0).Byte(0).Get()).Byte(1);
  part.Append(TreeMeshBytes::Node(0).Byte(0).Byte(1).Get());
  part.Append(TreeMeshBytes::Node(0).Byte(0).Byte(0).Get());
  const auto mesh = ReadTreeMesh(TreeMeshBytes{.collision = part.Get()}.Get());
  ASSERT_TRUE(mesh);
  EXPECT_THAT(mesh->collision.indices, ElementsAre(0, 1, 1, 2, 2, 0));
  EXPECT_THAT(mesh->surfaces, SizeIs(2));
}

TEST(TreeMeshFile, ADeepSearchTreeIsPassedOver) {
  constexpr int kDepth = 200000;
  MeshBytes part = TreeMeshBytes::CollisionPart(0);
  for (int k = 0; k < kDepth; ++k) part.Append(TreeMeshBytes::Node(0).Byte(1).Get());
  part.Append(TreeMeshBytes::Node(0).Byte(0).Byte(0).Get());
  for (int k = 0; k < kDepth; ++k) part.Byte(0);
  EXPECT_TRUE(ReadTreeMesh(TreeMeshBytes{.collision = part.Get()}.Get()));
}

TEST(TreeMeshFile, OtherVersionsShowNothing) {
  const auto mesh = ReadTreeMesh(TreeMeshBytes{.version = 4}.Get());
  ASSERT_TRUE(mesh);
  EXPECT_FALSE(mesh->shown);
  EXPECT_THAT(mesh->surfaces, IsEmpty());
}

TEST(TreeMeshFile, GroupsHoldAtMost24Items) {
  TreeMeshBytes tree;
  tree.groups[3].resize(24);
  EXPECT_TRUE(ReadTreeMesh(tree.Get()));
  tree.groups[3].resize(25);
  EXPECT_FALSE(ReadTreeMesh(tree.Get()));
}

TEST(TreeMeshFile, IndicesPastTheFileAreRefused) {
  TreeMeshBytes tree;
  tree.groups[1] = {{3, 2, "bark"}};
  EXPECT_FALSE(ReadTreeMesh(tree.Get()));
  tree.groups[1] = {{0xFFFFFFFF, 0xFFFFFFFF, "bark"}};
  EXPECT_FALSE(ReadTreeMesh(tree.Get()));
  EXPECT_FALSE(ReadTreeMesh(TreeMeshBytes{.indices = {0, 1, 2, 0, 2, 4}}.Get()));
}

TEST(MeshFiles, CutShortAreRefused) {
  const Bytes standard = StandardMeshBytes{.collisions = {SizedCollision(1, 1)}}.Get();
  ASSERT_TRUE(ReadStandardMesh(standard));
  for (std::size_t size = 0; size < standard.size(); ++size) {
    EXPECT_FALSE(ReadStandardMesh(std::span(standard).first(size))) << size;
  }
  MeshBytes part = TreeMeshBytes::CollisionPart(1);
  part.Append(TreeMeshBytes::Node(2).Byte(0).Byte(0).Get());
  const Bytes tree = TreeMeshBytes{.collision = part.Get()}.Get();
  ASSERT_TRUE(ReadTreeMesh(tree));
  for (std::size_t size = 0; size < tree.size(); ++size) {
    EXPECT_FALSE(ReadTreeMesh(std::span(tree).first(size))) << size;
  }
}

TEST(MeshFiles, NoNumberOfAFileIsTrusted) {
  const auto withHugeNumberAt = [](Bytes file, std::size_t at) {
    for (std::size_t k = 0; k < 4; ++k) file[at + k] = 0xFF;
    return file;
  };
  const Bytes standard = StandardMeshBytes{}.Get(), tree = TreeMeshBytes{}.Get();
  for (std::size_t at = 0; at + 4 <= standard.size(); ++at) {
    ReadStandardMesh(withHugeNumberAt(standard, at));
  }
  for (std::size_t at = 0; at + 4 <= tree.size(); ++at) ReadTreeMesh(withHugeNumberAt(tree, at));
  const auto mesh = ReadStandardMesh(withHugeNumberAt(standard, 8));
  ASSERT_TRUE(mesh);
  EXPECT_EQ(mesh->boxA, (Vector3{0, -2, -3})) << "a coordinate that is no number";
}

TEST(BoxFaces, CloseTheBox) {
  const MeshSurface box = BoxFaces({-1, -2, -3}, {4, 5, 6});
  double volume = 0;  // of the tetrahedra below the faces, by the divergence theorem
  for (std::size_t at = 0; at < box.indices.size(); at += 3) {
    const Vector3 a = box.vertices.at(box.indices[at]).position,
                  b = box.vertices.at(box.indices[at + 1]).position,
                  c = box.vertices.at(box.indices[at + 2]).position;
    volume += (a.x * (b.y * c.z - b.z * c.y) + a.y * (b.z * c.x - b.x * c.z) +
               a.z * (b.x * c.y - b.y * c.x)) /
              6;
  }
  EXPECT_DOUBLE_EQ(volume, 5 * 7 * 9);
}

}  // namespace
}  // namespace mw
