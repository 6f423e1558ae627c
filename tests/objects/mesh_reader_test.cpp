#include "objects/mesh_reader.h"

#include <gtest/gtest.h>
#include <sstream>

#include "core/little_endian.h"
#include "objects/level_story.h"
#include "objects/mesh_bytes.h"
#include "support/golden.h"

namespace mw {
namespace {

std::string Told(const MeshSurface& surface) {
  std::ostringstream text;
  text << (surface.kind == MeshSurface::Kind::Lines ? " lines of " : " triangles of ")
       << surface.lineWidth << " through";
  for (const MeshVertex& vertex : surface.vertices) {
    text << " (" << vertex.position;
    if (vertex.u != 0 || vertex.v != 0) text << ", " << vertex.u << ' ' << vertex.v;
    text << ')';
  }
  text << ':';
  for (const std::uint32_t index : surface.indices) text << ' ' << index;
  return text.str() + '\n';
}

template <class Geometry>
std::string Told(const std::optional<Geometry>& mesh) {
  if (!mesh) return "  refused\n";
  std::ostringstream text;
  text << "  box " << mesh->boxA << " ... " << mesh->boxB << "\n  collision"
       << Told(mesh->collision);
  for (const auto& [material, surface] : mesh->surfaces) text << "  " << material << Told(surface);
  if constexpr (requires { mesh->hasDetail; }) {
    if (!mesh->hasDetail) text << "  no detail\n";
  } else {
    if (!mesh->shown) text << "  not shown\n";
    for (const std::string& texture : mesh->otherTextures) text << "  also " << texture << '\n';
  }
  return text.str();
}

Bytes WithNumberAt(Bytes file, std::size_t at, std::uint32_t number) {
  StoreU32(file, at, number);
  return file;
}

TEST(MeshFiles, AreReadAsFarAsTheEditorShowsThem) {
  Bytes wrongFace = SizedCollision(1, 0), tooLarge = wrongFace;
  Bytes laterLevels = StandardMeshBytes{.levels = 4}.Get();
  wrongFace[4 + 8 + 4 + 3 * 16 + 4] = 3;  // the first index of the first face
  tooLarge[0] = 40;
  laterLevels.push_back(0xFF);
  const std::pair<const char*, Bytes> standard[] = {
      {"version 9", StandardMeshBytes{.version = 9}.Get()},
      {"the first of three collision meshes",
       StandardMeshBytes{
           .collisions = {SizedCollision(2, 3), Joined(5u, Junk{5}), SizedCollision(9, 0)}}
           .Get()},
      {"neither collision mesh nor detail", StandardMeshBytes{.collisions = {}, .levels = 0}.Get()},
      {"later levels of detail are not read", laterLevels},
      {"two texture coordinates",
       StandardMeshBytes{
           .materials = {{.twoCoordinates = true}, {.name = {"roof\0end", 8}, .left = 0}}}
           .Get()},
      {"indices that make no triangle",
       StandardMeshBytes{.materials = {{.indices = {0, 1, 2, 3, 0}}}}.Get()},
      {"an index past the vertices",
       StandardMeshBytes{.materials = {{.indices = {0, 1, 4}}}}.Get()},
      {"one of a collision mesh", StandardMeshBytes{.collisions = {wrongFace}}.Get()},
      {"a collision mesh larger than its size", StandardMeshBytes{.collisions = {tooLarge}}.Get()},
      {"a coordinate that is no number", WithNumberAt(StandardMeshBytes{}.Get(), 8, 0xFFFFFFFF)}};
  std::string told;
  for (const auto& [title, bytes] : standard)
    told += std::string(title) + '\n' + Told(ReadStandardMesh(bytes));

  // A root whose first child has both children and whose second child has a second one only.
  constexpr Byte kYes = 1, kNo = 0;
  const auto node = TreeMeshBytes::Node;
  const Bytes searchTree =
      Joined(TreeMeshBytes::CollisionPart(2), node(3), kYes, node(0), kYes, node(1), kNo, kNo,
             Byte{9}, node(2), kNo, kNo, kYes, node(0), kNo, kYes, node(0), kNo, kNo);
  TreeMeshBytes fullGroup, longGroup, pastEnd, farPastEnd;
  fullGroup.groups[3].resize(24);
  longGroup.groups[3].resize(25);
  pastEnd.groups[1] = {{3, 2, "bark"}};
  farPastEnd.groups[1] = {{0xFFFFFFFF, 0xFFFFFFFF, "bark"}};
  const std::pair<const char*, Bytes> trees[] = {
      {"a tree", TreeMeshBytes{}.Get()},
      {"with a search tree", TreeMeshBytes{.collision = searchTree}.Get()},
      {"of another version", TreeMeshBytes{.version = 4}.Get()},
      {"24 items in a group", fullGroup.Get()},
      {"25 items in a group", longGroup.Get()},
      {"indices past the file", pastEnd.Get()},
      {"indices far past the file", farPastEnd.Get()},
      {"an index past the vertices", TreeMeshBytes{.indices = {0, 1, 2, 0, 2, 4}}.Get()}};
  for (const auto& [title, bytes] : trees)
    told += std::string(title) + '\n' + Told(ReadTreeMesh(bytes));
  told += "a box\n  faces" + Told(BoxFaces({-1, -2, -3}, {4, 5, 6}));
  ExpectGolden("objects/meshes_read.txt", told);
}

TEST(MeshFiles, ADeepSearchTreeIsPassedOver) {
  constexpr int kDepth = 200000;
  Bytes part = TreeMeshBytes::CollisionPart(0);
  for (int k = 0; k < kDepth; ++k) Append(part, TreeMeshBytes::Node(0), Byte{1});
  Append(part, TreeMeshBytes::Node(0), Byte{0}, Byte{0});
  part.resize(part.size() + kDepth);
  EXPECT_TRUE(ReadTreeMesh(TreeMeshBytes{.collision = part}.Get()));
}

TEST(MeshFiles, CutShortAreRefused) {
  const Bytes standard = StandardMeshBytes{.collisions = {SizedCollision(1, 1)}}.Get();
  const Bytes tree = TreeMeshBytes{.collision = Joined(TreeMeshBytes::CollisionPart(1),
                                                       TreeMeshBytes::Node(2), Byte{0}, Byte{0})}
                         .Get();
  ASSERT_TRUE(ReadStandardMesh(standard) && ReadTreeMesh(tree));
  for (std::size_t size = 0; size < standard.size(); ++size)
    EXPECT_FALSE(ReadStandardMesh(std::span(standard).first(size))) << size;
  for (std::size_t size = 0; size < tree.size(); ++size)
    EXPECT_FALSE(ReadTreeMesh(std::span(tree).first(size))) << size;
}

}  // namespace
}  // namespace mw
