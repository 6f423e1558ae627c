#include "objects/object_render.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "core/camera.h"
#include "core/editor_state.h"
#include "objects/entity_render.h"
#include "objects/object_store.h"
#include "objects/object_transform.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr float kHoverRadius = 0.75f, kHoverHeight = 1.75f;  // world units around a marker
constexpr float kMarkerHeight = 4.75f;                       // world units
constexpr float kMarkerWidth = 25;                           // pixels
constexpr double kCullRadius = 2.0 / 3;                      // of the bounding box's diagonal

constexpr MeshColour kRed{255, 0, 0}, kGreen{0, 255, 0}, kYellow{255, 255, 0},
    kWhite{255, 255, 255};

struct VisibleObject {
  MeshListId list;
  std::int32_t index;
};

struct MarkerVertex {
  Vector3 position;
  MeshColour colour;
};

// Kept so that no frame has to allocate.
struct ObjectsInSight {
  std::vector<VisibleObject> objects;
  std::vector<MarkerVertex> markers;
};
ObjectsInSight inSight;

// The object that the status bar names; other texts may stand there until it is another one.
std::int32_t namedObject = -1;

const CatalogueEntry* EntryOf(const StaticObject& object) {
  if (object.catalogueIndex < 0 || object.catalogueIndex >= objectStore.catalogue.entryCount)
    return nullptr;
  return &objectStore.catalogue.entries[static_cast<std::size_t>(object.catalogueIndex)];
}

bool IsKindShown(MeshKind kind) {
  return kind == MeshKind::TreeMesh ? objectStore.showTreeMeshes : objectStore.showStandardMeshes;
}

bool IsInFrustum(const Vector3& place, const CatalogueEntry& entry) {
  const double margin = std::trunc(kCullRadius * entry.boxA.DistanceTo(entry.boxB));
  return camera.IsPointVisible(place.x, place.y, place.z, -static_cast<float>(margin));
}

bool IsUnderCursor(const Vector3& place, const CatalogueEntry& entry) {
  const Vector3& cursor = objectStore.CursorPoint;
  const float foot = place.y + entry.boxB.y;
  return std::abs(cursor.x - place.x) <= kHoverRadius &&
         std::abs(cursor.z - place.z) <= kHoverRadius && cursor.y >= foot &&
         cursor.y <= foot + kHoverHeight;
}

bool IsHovered(std::int32_t index) { return index == objectStore.hoveredObject; }

// From the top of the mesh up, leaning against the view so that it can also be seen from above.
void AddMarker(const Vector3& place, const CatalogueEntry& entry, bool marked) {
  const Vector3& view = camera.direction;
  const Vector3 foot = place + Vector3{0, entry.boxB.y, 0};
  const Vector3 top = foot + Vector3{-view.x * view.y, kMarkerHeight, -view.z * view.y};
  const MeshColour colour = marked ? kRed : kWhite;
  inSight.markers.push_back({foot, colour});
  inSight.markers.push_back({top, colour});
}

// The entry of an object that is drawn at this place; null when it is not.
const CatalogueEntry* DrawnEntryOf(const StaticObject& object, const Vector3& place) {
  const CatalogueEntry* const entry = EntryOf(object);
  if (object.meshIndex < 0 || !entry || !IsKindShown(entry->meshKind)) return nullptr;
  return IsInFrustum(place, *entry) ? entry : nullptr;
}

void CollectObject(const StaticObject& object, std::int32_t index) {
  const Vector3 place = object.ViewPosition();
  const CatalogueEntry* const entry = DrawnEntryOf(object, place);
  if (!entry) return;
  if (objectStore.hoveredObject < 0 && IsUnderCursor(place, *entry))
    objectStore.hoveredObject = index;
  AddMarker(place, *entry, object.selected || IsHovered(index));
  const MeshListId list = object.lists[static_cast<std::size_t>(objectStore.viewMode)];
  if (list != 0) inSight.objects.push_back({list, index});
}

// Objects that share a mesh come one after the other, in the order of their records, so that where
// two cover each other the first one shows.
void CollectObjectsInSight() {
  inSight.objects.clear();
  inSight.markers.clear();
  std::int32_t index = 0;
  for (const StaticObject& object : objectStore.objects) CollectObject(object, index++);
  std::sort(inSight.objects.begin(), inSight.objects.end(),
            [](const VisibleObject& a, const VisibleObject& b) {
              return a.list != b.list ? a.list < b.list : a.index < b.index;
            });
}

void DrawMarkers() {
  if (inSight.markers.empty()) return;
  const MarkerVertex& first = inSight.markers.front();
  glLineWidth(kMarkerWidth);
  glEnableClientState(GL_VERTEX_ARRAY);
  glEnableClientState(GL_COLOR_ARRAY);
  glVertexPointer(3, GL_FLOAT, sizeof(MarkerVertex), &first.position);
  glColorPointer(3, GL_UNSIGNED_BYTE, sizeof(MarkerVertex), first.colour.data());
  glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(inSight.markers.size()));
  glDisableClientState(GL_COLOR_ARRAY);
  glDisableClientState(GL_VERTEX_ARRAY);
  glLineWidth(1);
}

MeshColour ColourOf(const StaticObject& object, std::int32_t index) {
  if (IsHovered(index)) return object.selected ? kYellow : kGreen;
  if (object.selected) return kRed;
  return EntryOf(object)->meshKind == MeshKind::TreeMesh ? kGreen : object.boxColour;
}

void DrawObject(const StaticObject& object, const MeshColour& colour, const Matrix4& view,
                const PixelGrid& grid) {
  // Objects are mirrored along X as the level is.
  const Vector3 scale{-object.scale.x, object.scale.y, object.scale.z};
  DrawBoundMeshListAt(PlacedMatrix(view, object.ViewPosition(), object.rotation, scale), colour,
                      grid);
}

void DrawMeshes() {
  const bool textured = objectStore.viewMode == ViewMode::TexturedMesh;
  if (textured) glEnable(GL_TEXTURE_2D);
  Matrix4 view;
  glGetFloatv(GL_MODELVIEW_MATRIX, view.data());
  const PixelGrid grid = CurrentPixelGrid();
  glPushMatrix();
  glShadeModel(GL_FLAT);
  MeshListId bound = 0;
  for (const auto& [list, index] : inSight.objects) {
    const StaticObject& object = objectStore.objects[static_cast<std::size_t>(index)];
    if (list != bound) {
      UnbindMeshList();
      BindMeshList(list);
      bound = list;
    }
    DrawObject(object, textured ? kWhite : ColourOf(object, index), view, grid);
  }
  UnbindMeshList();
  glShadeModel(GL_SMOOTH);
  glPopMatrix();
  glDisable(GL_TEXTURE_2D);
}

void NameHoveredObject() {
  const std::int32_t hovered = objectStore.hoveredObject;
  if (hovered >= 0) objectStore.lastHoveredObject = hovered;
  if (hovered >= 0 && hovered != namedObject) {
    const StaticObject& object = objectStore.objects[static_cast<std::size_t>(hovered)];
    SetStatusText(1, "Static Object: " + object.name.String());
  }
  namedObject = hovered;
}

float WholeExtent(float a, float b) { return std::abs(std::trunc(a)) + std::abs(std::trunc(b)); }

}  // namespace

void DrawStaticObjects() {
  objectStore.hoveredObject = objectStore.lastHoveredObject = -1;
  CollectObjectsInSight();
  glDisable(GL_BLEND);
  glDisable(GL_TEXTURE_2D);
  DrawMarkers();
  DrawMeshes();
  NameHoveredObject();
}

void FindHoveredObject() {
  const auto isHovered = [](const StaticObject& object) {
    const Vector3 place = object.ViewPosition();
    const CatalogueEntry* const entry = DrawnEntryOf(object, place);
    return entry && IsUnderCursor(place, *entry);
  };
  const auto& objects = objectStore.objects;
  const auto found = std::find_if(objects.begin(), objects.end(), isHovered);
  const bool any = found != objects.end();
  objectStore.hoveredObject = objectStore.lastHoveredObject =
      any ? static_cast<std::int32_t>(found - objects.begin()) : -1;
}

void DrawObjectModeScene() {
  if (objectStore.showStandardMeshes || objectStore.showTreeMeshes)
    DrawStaticObjects();
  else
    objectStore.hoveredObject = objectStore.lastHoveredObject = -1;
  DrawEntities();
}

void DrawBrowserPreview() {
  constexpr float kDegreesPerSecond = 20, kTilt = 35;
  constexpr float kNearest = 10;  // world units
  PreviewMesh& preview = objectStore.preview;
  preview.spin += kDegreesPerSecond * editor.frameSeconds;
  if (preview.spin > 360) preview.spin -= 360;
  if (!preview.loaded) return;
  const float width = WholeExtent(preview.boxA.x, preview.boxB.x);
  const float height = WholeExtent(preview.boxA.y, preview.boxB.y);
  const float depth = WholeExtent(preview.boxA.z, preview.boxB.z);
  const float distance = std::max(2 * std::max({width, height, depth}), kNearest);
  glPushMatrix();
  glTranslatef(0, -height * 0.5f, -distance);
  glRotatef(kTilt, 1, 0, 0);
  glRotatef(preview.spin, 0, 1, 0);
  glDisable(GL_BLEND);
  glEnable(GL_TEXTURE_2D);
  glColor4f(1, 1, 1, 1);
  CallMeshList(preview.mesh.lists[static_cast<std::size_t>(ViewMode::TexturedMesh)]);
  glDisable(GL_TEXTURE_2D);
  glPopMatrix();
}

}  // namespace mw
