#include "objects/object_body.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "objects/mesh_drawing.h"
#include "objects/object_sight.h"
#include "objects/object_transform.h"

namespace mw {
namespace {

struct BodyBox {
  Vector3 low, high;
};

Vector3 Scaled(const Vector3& v, const Vector3& scale) {
  return {v.x * scale.x, v.y * scale.y, v.z * scale.z};
}

float Dot(const Vector3& a, const Vector3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

Vector3 Cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

BodyBox BoxAround(const Vector3& a, const Vector3& b) {
  return {{std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)},
          {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)}};
}

// Of a box: 0 or more outside, and how deep below the nearest side inside, as a negative number.
float SignedDistance(const Vector3& point, const BodyBox& box) {
  const auto beyond = [](float at, float low, float high) { return std::max(low - at, at - high); };
  const Vector3 out{beyond(point.x, box.low.x, box.high.x), beyond(point.y, box.low.y, box.high.y),
                    beyond(point.z, box.low.z, box.high.z)};
  const float nearestSide = std::max({out.x, out.y, out.z});
  if (nearestSide <= 0) return nearestSide;
  const Vector3 away{std::max(out.x, 0.0f), std::max(out.y, 0.0f), std::max(out.z, 0.0f)};
  return std::sqrt(Dot(away, away));
}

float SquaredDistanceToEdge(const Vector3& point, const Vector3& a, const Vector3& b) {
  const Vector3 edge = b - a, offset = point - a;
  const float length = Dot(edge, edge);
  const float along = length > 0 ? std::clamp(Dot(offset, edge) / length, 0.0f, 1.0f) : 0;
  const Vector3 away = offset - edge * along;
  return Dot(away, away);
}

float SquaredDistanceToTriangle(const Vector3& point, const Vector3& a, const Vector3& b,
                                const Vector3& c) {
  const Vector3 normal = Cross(b - a, c - a);
  const auto isInside = [&](const Vector3& from, const Vector3& to) {
    return Dot(Cross(to - from, point - from), normal) >= 0;
  };
  const float size = Dot(normal, normal);
  if (size > 0 && isInside(a, b) && isInside(b, c) && isInside(c, a)) {
    const float away = Dot(point - a, normal);
    return away * away / size;
  }
  return std::min({SquaredDistanceToEdge(point, a, b), SquaredDistanceToEdge(point, b, c),
                   SquaredDistanceToEdge(point, c, a)});
}

// Whether all three lie beyond the reach on the same side of the point.
bool IsOutOfReach(float at, float a, float b, float c, float reach) {
  return (a > at + reach && b > at + reach && c > at + reach) ||
         (a < at - reach && b < at - reach && c < at - reach);
}

float DistanceToTriangles(const MeshTriangles& mesh, const Vector3& point, const Vector3& scale,
                          float reach) {
  float nearest = std::numeric_limits<float>::infinity();
  for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
    const auto corner = [&](std::size_t k) {
      return Scaled(mesh.vertices[mesh.indices[i + k]].position, scale);
    };
    const Vector3 a = corner(0), b = corner(1), c = corner(2);
    if (IsOutOfReach(point.x, a.x, b.x, c.x, reach) ||
        IsOutOfReach(point.y, a.y, b.y, c.y, reach) || IsOutOfReach(point.z, a.z, b.z, c.z, reach))
      continue;
    nearest = std::min(nearest, SquaredDistanceToTriangle(point, a, b, c));
  }
  return std::sqrt(nearest);
}

// Whether the point is so far away that no turn of the box could bring it near.
bool IsFarFrom(const Vector3& offset, const BodyBox& box, float reach) {
  const auto extent = [](float low, float high) { return std::max(std::abs(low), std::abs(high)); };
  const Vector3 corner{extent(box.low.x, box.high.x), extent(box.low.y, box.high.y),
                       extent(box.low.z, box.high.z)};
  const float radius = std::sqrt(Dot(corner, corner)) + reach;
  return Dot(offset, offset) > radius * radius;
}

}  // namespace

std::optional<float> DistanceToBody(const StaticObject& object, const CatalogueEntry& entry,
                                    const Vector3& point, float reach) {
  const Vector3 place = object.ViewPosition(), scale = ScaleInView(object);
  const BodyBox box = BoxAround(Scaled(entry.boxA, scale), Scaled(entry.boxB, scale));
  if (IsFarFrom(point - place, box, reach)) return std::nullopt;
  const Vector3 own = TurnedBack(point - place, object.rotation);
  const float toBox = SignedDistance(own, box);
  const MeshListId list = ShownListOf(object);
  if (toBox > reach || list == 0) return std::nullopt;
  const MeshTriangles mesh = TrianglesOf(list);
  if (mesh.indices.empty()) return std::abs(toBox);
  const float distance = DistanceToTriangles(mesh, own, scale, reach);
  if (distance > reach) return std::nullopt;
  return distance;
}

}  // namespace mw
