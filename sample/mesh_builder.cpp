#include "sample/mesh_builder.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include "core/steady_math.h"

namespace mw::sample {
namespace {

constexpr float kFullTurn = 2 * std::numbers::pi_v<float>;

Vector3 Cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

float Dot(const Vector3& a, const Vector3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

Vector3 NormalOf(const Vector3& a, const Vector3& b, const Vector3& c) {
  Vector3 normal = Cross(b - a, c - a);
  normal.Normalise();
  return normal;
}

// Objects are shown without light, so the sides that sun and sky reach less use darker pictures.
std::string ShadedMaterial(std::string_view material, const Vector3& normal) {
  const bool shade = normal.y < -0.3f || std::abs(normal.x) > 0.75f;
  return std::string(material) + (shade ? "_shade" : "");
}

Vector3 OnRing(const Vector3& centre, float radius, int k, int sides) {
  const float angle = kFullTurn * static_cast<float>(k) / static_cast<float>(sides);
  return {centre.x + radius * steady::Sin(angle), centre.y, centre.z + radius * steady::Cos(angle)};
}

}  // namespace

Box BoundsOf(const Mesh& mesh) {
  constexpr float kFar = std::numeric_limits<float>::max();
  Box box{{kFar, kFar, kFar}, {-kFar, -kFar, -kFar}};
  for (const MeshPart& part : mesh.parts) {
    for (const MeshVertex& vertex : part.vertices) {
      const Vector3& p = vertex.position;
      box.low = {std::min(box.low.x, p.x), std::min(box.low.y, p.y), std::min(box.low.z, p.z)};
      box.high = {std::max(box.high.x, p.x), std::max(box.high.y, p.y), std::max(box.high.z, p.z)};
    }
  }
  return box;
}

CollisionMesh CollisionOf(const Box& box) {
  MeshBuilder builder;
  builder.AddClosedBox({"", 0}, box.low, box.high);
  return builder.Take().collision;
}

MeshPart& MeshBuilder::Part(std::string_view material) {
  const auto found = std::find_if(mesh_.parts.begin(), mesh_.parts.end(),
                                  [&](const MeshPart& part) { return part.material == material; });
  if (found != mesh_.parts.end()) return *found;
  mesh_.parts.push_back({std::string(material), {}, {}});
  return mesh_.parts.back();
}

void MeshBuilder::AddCollisionFace(const std::vector<Vector3>& corners) {
  CollisionMesh& collision = mesh_.collision;
  const auto indexOf = [&](const Vector3& corner) {
    const auto found = std::find(collision.vertices.begin(), collision.vertices.end(), corner);
    const auto index = static_cast<std::uint16_t>(found - collision.vertices.begin());
    if (found == collision.vertices.end()) collision.vertices.push_back(corner);
    return index;
  };
  for (std::size_t k = 2; k < corners.size(); ++k) {
    collision.faces.push_back({indexOf(corners[0]), indexOf(corners[k - 1]), indexOf(corners[k])});
  }
}

// A flat convex face with 3 or 4 corners; the picture's top edge lies towards the first two.
void MeshBuilder::AddFace(const Skin& skin, const std::vector<Vector3>& corners) {
  const Vector3 normal = NormalOf(corners[0], corners[1], corners[2]);
  Vector3 right = corners[1] - corners[0];
  const float width = static_cast<float>(right.Length());
  right.Normalise();
  const Vector3 down = Cross(normal, right);
  const float height = std::max(Dot(corners[2] - corners[0], down), 1e-3f);

  MeshPart& part = Part(ShadedMaterial(skin.material, normal));
  const auto first = static_cast<std::uint16_t>(part.vertices.size());
  for (const Vector3& corner : corners) {
    const float u = Dot(corner - corners[0], right), v = Dot(corner - corners[0], down);
    part.vertices.push_back({corner, normal, skin.tile > 0 ? u / skin.tile : u / width,
                             skin.tile > 0 ? v / skin.tile : v / height});
  }
  for (std::size_t k = 2; k < corners.size(); ++k) {
    for (const std::size_t index : {std::size_t{0}, k - 1, k}) {
      part.indices.push_back(static_cast<std::uint16_t>(first + index));
    }
  }
  if (solid_) AddCollisionFace(corners);
}

void MeshBuilder::Quad(const Skin& skin, Vector3 a, Vector3 b, Vector3 c, Vector3 d) {
  AddFace(skin, {a, b, c, d});
}

void MeshBuilder::Triangle(const Skin& skin, Vector3 a, Vector3 b, Vector3 c) {
  AddFace(skin, {a, b, c});
}

void MeshBuilder::AddBox(const Skin& skin, Vector3 low, Vector3 high) {
  const auto [x0, y0, z0] = low;
  const auto [x1, y1, z1] = high;
  Quad(skin, {x0, y1, z1}, {x1, y1, z1}, {x1, y1, z0}, {x0, y1, z0});  // top
  Quad(skin, {x0, y1, z0}, {x1, y1, z0}, {x1, y0, z0}, {x0, y0, z0});  // back
  Quad(skin, {x1, y1, z1}, {x0, y1, z1}, {x0, y0, z1}, {x1, y0, z1});  // front
  Quad(skin, {x1, y1, z0}, {x1, y1, z1}, {x1, y0, z1}, {x1, y0, z0});  // east
  Quad(skin, {x0, y1, z1}, {x0, y1, z0}, {x0, y0, z0}, {x0, y0, z1});  // west
}

void MeshBuilder::AddClosedBox(const Skin& skin, Vector3 low, Vector3 high) {
  AddBox(skin, low, high);
  Quad(skin, {low.x, low.y, low.z}, {high.x, low.y, low.z}, {high.x, low.y, high.z},
       {low.x, low.y, high.z});
}

void MeshBuilder::AddGableRoof(const Skin& roof, const Skin& gable, Vector3 low, Vector3 high) {
  const float middle = (low.x + high.x) / 2;
  const Vector3 ridgeBack{middle, high.y, low.z}, ridgeFront{middle, high.y, high.z};
  Quad(roof, ridgeBack, ridgeFront, {high.x, low.y, high.z}, {high.x, low.y, low.z});
  Quad(roof, ridgeFront, ridgeBack, {low.x, low.y, low.z}, {low.x, low.y, high.z});
  Triangle(gable, {low.x, low.y, high.z}, {high.x, low.y, high.z}, ridgeFront);
  Triangle(gable, {high.x, low.y, low.z}, {low.x, low.y, low.z}, ridgeBack);
}

void MeshBuilder::AddCylinder(const Skin& skin, Vector3 base, float bottomRadius, float topRadius,
                              float height, int sides) {
  const Vector3 top{base.x, base.y + height, base.z};
  for (int k = 0; k < sides; ++k) {
    Quad(skin, OnRing(top, topRadius, k + 1, sides), OnRing(top, topRadius, k, sides),
         OnRing(base, bottomRadius, k, sides), OnRing(base, bottomRadius, k + 1, sides));
    Triangle(skin, top, OnRing(top, topRadius, k, sides), OnRing(top, topRadius, k + 1, sides));
  }
}

void MeshBuilder::AddRoller(const Skin& skin, const Skin& ends, Vector3 centre, float radius,
                            float length, int sides) {
  const float x0 = centre.x - length / 2, x1 = centre.x + length / 2;
  const auto rim = [&](float x, int k) {
    const float angle = kFullTurn * static_cast<float>(k) / static_cast<float>(sides);
    return Vector3{x, centre.y + radius * steady::Cos(angle),
                   centre.z + radius * steady::Sin(angle)};
  };
  for (int k = 0; k < sides; ++k) {
    Quad(skin, rim(x0, k + 1), rim(x1, k + 1), rim(x1, k), rim(x0, k));
    Triangle(ends, {x1, centre.y, centre.z}, rim(x1, k), rim(x1, k + 1));
    Triangle(ends, {x0, centre.y, centre.z}, rim(x0, k + 1), rim(x0, k));
  }
}

void MeshBuilder::AddVault(const Skin& skin, float radius, float z0, float z1, float ground,
                           int segments) {
  const auto rib = [&](int k, float z) {
    const float angle =
        std::numbers::pi_v<float> * static_cast<float>(k) / static_cast<float>(segments);
    return Vector3{-radius * steady::Cos(angle), ground + radius * steady::Sin(angle), z};
  };
  for (int k = 0; k < segments; ++k) {
    Quad(skin, rib(k + 1, z1), rib(k + 1, z0), rib(k, z0), rib(k, z1));  // outside
    Quad(skin, rib(k + 1, z0), rib(k + 1, z1), rib(k, z1), rib(k, z0));  // inside
  }
}

void MeshBuilder::AddCrown(std::string_view material, Vector3 centre, Vector3 radii, int sides,
                           int rings, std::uint32_t seed) {
  std::mt19937 random(seed);
  MeshPart& part = Part(material);
  const auto first = part.vertices.size();
  for (int ring = 0; ring <= rings; ++ring) {
    const float down =
        std::numbers::pi_v<float> * static_cast<float>(ring) / static_cast<float>(rings);
    float firstBulge = 1;
    for (int k = 0; k <= sides; ++k) {
      float bulge = 0.86f + 0.28f * static_cast<float>(random() >> 8) / 16777216.0f;
      if (k == 0) firstBulge = bulge;
      if (k == sides) bulge = firstBulge;  // the seam closes
      const float angle = kFullTurn * static_cast<float>(k % sides) / static_cast<float>(sides);
      Vector3 normal{steady::Sin(down) * steady::Sin(angle), steady::Cos(down),
                     steady::Sin(down) * steady::Cos(angle)};
      const Vector3 position =
          centre + Vector3{radii.x * normal.x, radii.y * normal.y, radii.z * normal.z} * bulge;
      part.vertices.push_back(
          {position, normal, 3.0f * static_cast<float>(k) / static_cast<float>(sides),
           0.03f + 0.94f * static_cast<float>(ring) / static_cast<float>(rings)});
    }
  }
  const auto index = [&](int ring, int k) {
    return static_cast<std::uint16_t>(first + static_cast<std::size_t>(ring * (sides + 1) + k));
  };
  for (int ring = 0; ring < rings; ++ring) {
    for (int k = 0; k < sides; ++k) {
      const std::uint16_t a = index(ring, k), b = index(ring, k + 1);
      const std::uint16_t c = index(ring + 1, k + 1), d = index(ring + 1, k);
      part.indices.insert(part.indices.end(), {b, a, d, b, d, c});
    }
  }
}

void MeshBuilder::AddConeOfLeaves(std::string_view material, Vector3 base, float radius,
                                  float height, int sides) {
  MeshPart& part = Part(material);
  const Vector3 tip{base.x, base.y + height, base.z};
  for (int k = 0; k < sides; ++k) {
    // Every other branch hangs lower and reaches further, which breaks up the outline.
    const auto branch = [&](int which) {
      const bool low = which % 2 == 0;
      Vector3 end = OnRing(base, radius * (low ? 1.0f : 0.8f), which % sides, sides);
      end.y += low ? -0.08f * height : 0.06f * height;
      return end;
    };
    const Vector3 a = branch(k), b = branch(k + 1);
    const Vector3 normal = NormalOf(tip, a, b);
    const auto first = static_cast<std::uint16_t>(part.vertices.size());
    const float u = 3.0f * static_cast<float>(k) / static_cast<float>(sides);
    const float step = 3.0f / static_cast<float>(sides);
    part.vertices.push_back({tip, normal, u + step / 2, 0.03f});
    part.vertices.push_back({a, normal, u, 0.97f});
    part.vertices.push_back({b, normal, u + step, 0.97f});
    for (const int corner : {0, 1, 2}) {
      part.indices.push_back(static_cast<std::uint16_t>(first + corner));
    }
  }
}

}  // namespace mw::sample
