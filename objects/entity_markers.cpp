#include "objects/entity_markers.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "objects/mesh_reader.h"

namespace mw {
namespace {

constexpr float kLinkWidth = 2;  // pixels
constexpr float kInnerRing = 0.9f;
constexpr int kRingSlices = 32;

struct Box {
  Vector3 low, high;
};

// Soldier spawn, object spawn, control point.
constexpr std::array<Box, kEntityKinds.size()> kMarkerBoxes{
    {{{-0.5f, 0, -0.5f}, {0.5f, 2, 0.5f}},
     {{-1, 0, -1}, {1, 1, 1}},
     {{-0.15f, 0, -0.15f}, {0.15f, 10, 0.15f}}}};

struct Shapes {
  std::array<MarkerLists, kEntityKinds.size()> markers;
  MeshListId ring = 0, plainBox = 0;
};
Shapes shapes;  // a cache: made when they are first drawn

MeshListId MakeFaces(const Box& box) {
  const MeshSurface faces = BoxFaces(box.low, box.high);
  return CreateMeshList({&faces, 1});
}

MeshListId MakeEdges(const Box& box) {
  MeshSurface edges = BoxFaces(box.low, box.high);
  edges.kind = MeshSurface::Kind::Lines;
  edges.indices = {0, 1, 2, 3, 4, 5, 6, 7, 0, 2, 1, 3, 4, 6, 5, 7, 0, 4, 1, 5, 2, 6, 3, 7};
  return CreateMeshList({&edges, 1});
}

// Two circles and the spokes between them.
MeshListId MakeRing() {
  MeshSurface ring;
  ring.kind = MeshSurface::Kind::Lines;
  ring.lineWidth = kLinkWidth;
  for (int slice = 0; slice < kRingSlices; ++slice) {
    const float angle = 2 * std::numbers::pi_v<float> * static_cast<float>(slice) / kRingSlices;
    const Vector3 outer{std::sin(angle), 0, std::cos(angle)};
    const auto at = static_cast<std::uint32_t>(2 * slice);
    const auto next = static_cast<std::uint32_t>(2 * ((slice + 1) % kRingSlices));
    ring.vertices.push_back({outer});
    ring.vertices.push_back({outer * kInnerRing});
    ring.indices.insert(ring.indices.end(), {at, next, at + 1, next + 1, at, at + 1});
  }
  return CreateMeshList({&ring, 1});
}

}  // namespace

const MarkerLists& MarkerOf(EntityKind kind) {
  const auto index = static_cast<std::size_t>(kind);
  MarkerLists& marker = shapes.markers[index];
  if (marker.faces == 0) marker = {MakeFaces(kMarkerBoxes[index]), MakeEdges(kMarkerBoxes[index])};
  return marker;
}

MeshListId RingList() {
  if (shapes.ring == 0) shapes.ring = MakeRing();
  return shapes.ring;
}

MeshListId PlainBoxList() {
  if (shapes.plainBox == 0) shapes.plainBox = MakeFaces({kPlainBoxLow, kPlainBoxHigh});
  return shapes.plainBox;
}

void ReleaseEntityMarkers() {
  for (const MarkerLists& marker : shapes.markers) {
    DeleteMeshList(marker.faces);
    DeleteMeshList(marker.edges);
  }
  DeleteMeshList(shapes.ring);
  DeleteMeshList(shapes.plainBox);
  shapes = Shapes{};
}

}  // namespace mw
