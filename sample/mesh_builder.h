// Builds the meshes of the sample game from simple solids. Lengths are world units, y is up and z
// is an object's front; faces are given so that their corners run clockwise seen from outside.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/vector3.h"

namespace mw::sample {

struct MeshVertex {
  Vector3 position, normal;
  float u = 0, v = 0;
};

// All faces of one material.
struct MeshPart {
  std::string material;
  std::vector<MeshVertex> vertices;
  std::vector<std::uint16_t> indices;  // three per triangle
};

struct CollisionMesh {
  std::vector<Vector3> vertices;
  std::vector<std::array<std::uint16_t, 3>> faces;
};

struct Mesh {
  std::vector<MeshPart> parts;
  CollisionMesh collision;
};

struct Box {
  Vector3 low, high;
};
Box BoundsOf(const Mesh& mesh);
// The box as a collision mesh of twelve faces.
CollisionMesh CollisionOf(const Box& box);

// How a picture lies on a face: repeated every `tile` units, or stretched over it when 0.
struct Skin {
  std::string_view material;
  float tile = 4;
};

class MeshBuilder {
 public:
  // Faces that are only to be seen do not get into the collision mesh.
  void SetSolid(bool solid) { solid_ = solid; }

  void Quad(const Skin& skin, Vector3 a, Vector3 b, Vector3 c, Vector3 d);
  void Triangle(const Skin& skin, Vector3 a, Vector3 b, Vector3 c);
  // Without a bottom, which nobody sees.
  void AddBox(const Skin& skin, Vector3 low, Vector3 high);
  // With a bottom, for what stands free.
  void AddClosedBox(const Skin& skin, Vector3 low, Vector3 high);
  // A roof along z over the rectangle `low` ... `high` (their y are those of eaves and ridge).
  void AddGableRoof(const Skin& roof, const Skin& gable, Vector3 low, Vector3 high);
  // An upright cylinder or frustum with a top; both radii are more than 0.
  void AddCylinder(const Skin& skin, Vector3 base, float bottomRadius, float topRadius,
                   float height, int sides);
  // A cylinder along x, with both ends.
  void AddRoller(const Skin& skin, const Skin& ends, Vector3 centre, float radius, float length,
                 int sides);
  // Half a tube along z, as of a hangar, standing on y = `ground`.
  void AddVault(const Skin& skin, float radius, float z0, float z1, float ground, int segments);
  // A rounded body whose picture runs from its top to its bottom, for leaves.
  void AddCrown(std::string_view material, Vector3 centre, Vector3 radii, int sides, int rings,
                std::uint32_t seed);
  // Leaves in the shape of a cone, open below.
  void AddConeOfLeaves(std::string_view material, Vector3 base, float radius, float height,
                       int sides);

  Mesh Take() { return std::move(mesh_); }

 private:
  MeshPart& Part(std::string_view material);
  void AddFace(const Skin& skin, const std::vector<Vector3>& corners);
  void AddCollisionFace(const std::vector<Vector3>& corners);

  Mesh mesh_;
  bool solid_ = true;
};

}  // namespace mw::sample
