#include "objects/entity_render.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

#include "core/camera.h"
#include "core/game_random.h"
#include "objects/entities.h"
#include "objects/entity_markers.h"
#include "objects/object_store.h"
#include "objects/object_transform.h"

namespace mw {
namespace {

constexpr float kCullMargin = -16;                      // world units
constexpr float kLinkLineWidth = 2;                     // pixels
constexpr float kControlPointTop = 10, kRingRaise = 2;  // world units

using Colour = std::array<std::uint8_t, 3>;
constexpr Colour kMarked{200, 0, 0}, kWithoutTemplate{255, 0, 255}, kBlack{0, 0, 0};
constexpr Colour kLinkColour{255, 255, 0};

// Of each kind, in world units.
struct HoverBox {
  float radius, height;
};
constexpr std::array<HoverBox, kEntityKinds.size()> kHoverBoxes{{{1, 2}, {1.5f, 1}, {0.4f, 10}}};
// Where the links of soldier spawns and object spawns begin, above their place.
constexpr float kSoldierLinkRaise = 2, kObjectLinkRaise = 1;

struct DrawnMarker {
  Matrix4 matrix;
  Colour colour;
};

struct GroupedPoint {
  std::int32_t group;
  Vector3 place;
};

// Kept so that no frame has to allocate.
struct EntitiesInSight {
  std::vector<DrawnMarker> markers;  // of one kind
  std::vector<GroupedPoint> controlPoints;
  std::vector<Vector3> links;  // two points each
};
EntitiesInSight entitiesInSight;  // a cache: its room is kept from frame to frame

struct GroupColours {
  static constexpr std::size_t kCount = 128;
  std::array<Colour, kCount> points{}, objects{};

  GroupColours() {
    for (Colour& colour : points) colour = {Shade(), Shade(), 0};
    for (Colour& colour : objects) colour = {Shade(), 0, Shade()};
  }
  static std::uint8_t Shade() { return static_cast<std::uint8_t>(GameRandom() % 105 + 150); }
};

const Colour& GroupColour(EntityKind kind, std::int32_t group) {
  static const GroupColours colours;
  const std::size_t index = static_cast<std::uint32_t>(group) % GroupColours::kCount;
  return kind == EntityKind::ObjectSpawn ? colours.objects[index] : colours.points[index];
}

bool IsKindShown(EntityKind kind) {
  switch (kind) {
    case EntityKind::SoldierSpawn:
      return objectStore.showSoldierSpawns;
    case EntityKind::ObjectSpawn:
      return objectStore.showObjectSpawns;
    case EntityKind::ControlPoint:
      return objectStore.showControlPoints;
  }
  return false;
}

bool IsInShownMode(const SpawnInstance& instance) {
  return (instance.modes & entities.ModeFilter) != 0;
}

bool IsUnderCursor(EntityKind kind, const Vector3& place) {
  const auto& [radius, height] = kHoverBoxes[static_cast<std::size_t>(kind)];
  const Vector3& cursor = objectStore.CursorPoint;
  return std::abs(cursor.x - place.x) <= radius && std::abs(cursor.z - place.z) <= radius &&
         cursor.y >= place.y && cursor.y <= place.y + height;
}

Colour ColourOf(const SpawnInstance& instance, bool hovered) {
  if (hovered || instance.selected) return kMarked;
  const SpawnTemplate* const spawnTemplate = TemplateOf(instance);
  return spawnTemplate ? GroupColour(instance.Kind(), spawnTemplate->group) : kWithoutTemplate;
}

bool IsDrawn(const SpawnInstance& instance, const Vector3& place) {
  return IsInShownMode(instance) && camera.IsPointVisible(place.x, place.y, place.z, kCullMargin);
}

void CollectMarkers(EntityKind kind, const Matrix4& view) {
  entitiesInSight.markers.clear();
  int index = -1;
  for (const auto& instance : entities.Of(kind).instances) {
    ++index;
    const Vector3 place = instance->ViewPosition();
    if (!IsDrawn(*instance, place)) continue;
    const bool hovered = entities.hovered.kind == kind && entities.hovered.index == index;
    entitiesInSight.markers.push_back(
        {PlacedMatrix(view, place, instance->rotation, {1, 1, 1}), ColourOf(*instance, hovered)});
  }
}

// The faces lie a little farther away, so that the edges on them show whole.
void DrawMarkers(const MarkerLists& lists) {
  glEnable(GL_POLYGON_OFFSET_FILL);
  glPolygonOffset(1, 1);
  BindMeshList(lists.faces);
  for (const DrawnMarker& marker : entitiesInSight.markers) {
    glColor3ubv(marker.colour.data());
    glLoadMatrixf(marker.matrix.data());
    DrawBoundMeshList();
  }
  UnbindMeshList();
  glDisable(GL_POLYGON_OFFSET_FILL);
  BindMeshList(lists.edges);
  glColor3ubv(kBlack.data());
  for (const DrawnMarker& marker : entitiesInSight.markers) {
    glLoadMatrixf(marker.matrix.data());
    DrawBoundMeshList();
  }
  UnbindMeshList();
}

bool GroupBefore(const GroupedPoint& a, const GroupedPoint& b) { return a.group < b.group; }

void CollectControlPoints() {
  entitiesInSight.controlPoints.clear();
  for (const auto& instance : entities.Of(EntityKind::ControlPoint).instances) {
    if (const SpawnTemplate* const spawnTemplate = TemplateOf(*instance))
      entitiesInSight.controlPoints.push_back({spawnTemplate->group, instance->ViewPosition()});
  }
  std::sort(entitiesInSight.controlPoints.begin(), entitiesInSight.controlPoints.end(),
            GroupBefore);
}

// Lines to every control point of the group.
void AddLinks(const SpawnInstance& instance, float raise, std::int32_t group) {
  const Vector3 start = instance.ViewPosition() + Vector3{0, raise, 0};
  const auto [first, end] =
      std::equal_range(entitiesInSight.controlPoints.begin(), entitiesInSight.controlPoints.end(),
                       GroupedPoint{group, {}}, GroupBefore);
  for (auto point = first; point != end; ++point) {
    entitiesInSight.links.push_back(start);
    entitiesInSight.links.push_back(point->place + Vector3{0, kControlPointTop, 0});
  }
}

void CollectSoldierLinks() {
  for (const auto& instance : entities.Of(EntityKind::SoldierSpawn).instances) {
    const SpawnTemplate* const spawnTemplate = TemplateOf(*instance);
    if (IsInShownMode(*instance) && spawnTemplate)
      AddLinks(*instance, kSoldierLinkRaise, spawnTemplate->group);
  }
}

void CollectObjectLinks() {
  for (const auto& instance : entities.Of(EntityKind::ObjectSpawn).instances) {
    const auto& spawn = static_cast<const ObjectSpawn&>(*instance);
    if (IsInShownMode(spawn) && spawn.osId != 0) AddLinks(spawn, kObjectLinkRaise, spawn.osId);
  }
}

void DrawLinks() {
  entitiesInSight.links.clear();
  CollectControlPoints();
  if (objectStore.showSoldierSpawns) CollectSoldierLinks();
  if (objectStore.showObjectSpawns) CollectObjectLinks();
  if (entitiesInSight.links.empty()) return;
  glLineWidth(kLinkLineWidth);
  glEnableClientState(GL_VERTEX_ARRAY);
  glVertexPointer(3, GL_FLOAT, sizeof(Vector3), entitiesInSight.links.data());
  glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(entitiesInSight.links.size()));
  glDisableClientState(GL_VERTEX_ARRAY);
  glLineWidth(1);
}

void DrawRings(const Matrix4& view) {
  glPushMatrix();
  BindMeshList(RingList());
  for (const auto& instance : entities.Of(EntityKind::ControlPoint).instances) {
    const ControlPointTemplate* const point = ControlPointTemplateOf(*instance);
    if (!IsInShownMode(*instance) || !point || point->radius <= 0) continue;
    const auto radius = static_cast<float>(point->radius);
    const Vector3 middle = instance->ViewPosition() + Vector3{0, kRingRaise, 0};
    glLoadMatrixf(PlacedMatrix(view, middle, {}, {radius, 1, radius}).data());
    DrawBoundMeshList();
  }
  UnbindMeshList();
  glPopMatrix();
}

// Leaves the depth of what is behind: an entity that is moved follows the cursor over the ground
// under its own links and ring, too.
void DrawConnections(const Matrix4& view) {
  glDepthMask(GL_FALSE);
  glColor3ubv(kLinkColour.data());
  DrawLinks();
  DrawRings(view);
  glDepthMask(GL_TRUE);
}

}  // namespace

void FindHoveredEntity() {
  entities.hovered = HoveredEntity{};
  for (const EntityKind kind : kEntityKinds) {
    if (!IsKindShown(kind)) continue;
    int index = -1;
    for (const auto& instance : entities.Of(kind).instances) {
      ++index;
      const Vector3 place = instance->ViewPosition();
      if (IsUnderCursor(kind, place) && IsDrawn(*instance, place)) entities.hovered = {kind, index};
    }
  }
}

void DrawEntities() {
  Matrix4 view;
  glGetFloatv(GL_MODELVIEW_MATRIX, view.data());
  glDisable(GL_TEXTURE_2D);
  glPushMatrix();
  for (const EntityKind kind : kEntityKinds) {
    if (!IsKindShown(kind)) continue;
    CollectMarkers(kind, view);
    if (!entitiesInSight.markers.empty()) DrawMarkers(MarkerOf(kind));
  }
  glPopMatrix();
  if (objectStore.showControlPoints) DrawConnections(view);
}

}  // namespace mw
