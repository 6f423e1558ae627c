#include "objects/object_render.h"

#include <GL/gl.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "core/editor_state.h"
#include "objects/entity_render.h"
#include "objects/object_hover.h"
#include "objects/object_marker.h"
#include "objects/object_sight.h"
#include "objects/object_transform.h"

namespace mw {
namespace {

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
ObjectsInSight objectsInSight;  // a cache: its room is kept from frame to frame

bool IsHovered(std::int32_t index) { return index == objectStore.hoveredObject; }

void AddMarker(const Vector3& place, const CatalogueEntry& entry, bool marked) {
  const auto [foot, top] = MarkerAt(place, entry);
  const MeshColour colour = marked ? kRed : kWhite;
  objectsInSight.markers.push_back({foot, colour});
  objectsInSight.markers.push_back({top, colour});
}

void CollectObject(const StaticObject& object, std::int32_t index) {
  const Vector3 place = object.ViewPosition();
  const CatalogueEntry* const entry = EntryInSight(object, place);
  if (!entry) return;
  AddMarker(place, *entry, object.selected || IsHovered(index));
  if (const MeshListId list = ShownListOf(object)) objectsInSight.objects.push_back({list, index});
}

// Objects that share a mesh come one after the other, in the order of their records, so that where
// two cover each other the first one shows.
void CollectObjectsInSight() {
  objectsInSight.objects.clear();
  objectsInSight.markers.clear();
  std::int32_t index = 0;
  for (const StaticObject& object : objectStore.objects) CollectObject(object, index++);
  std::sort(objectsInSight.objects.begin(), objectsInSight.objects.end(),
            [](const VisibleObject& a, const VisibleObject& b) {
              return a.list != b.list ? a.list < b.list : a.index < b.index;
            });
}

void DrawMarkers() {
  if (objectsInSight.markers.empty()) return;
  const MarkerVertex& first = objectsInSight.markers.front();
  glLineWidth(kMarkerWidth);
  glEnableClientState(GL_VERTEX_ARRAY);
  glEnableClientState(GL_COLOR_ARRAY);
  glVertexPointer(3, GL_FLOAT, sizeof(MarkerVertex), &first.position);
  glColorPointer(3, GL_UNSIGNED_BYTE, sizeof(MarkerVertex), first.colour.data());
  glDrawArrays(GL_LINES, 0, static_cast<GLsizei>(objectsInSight.markers.size()));
  glDisableClientState(GL_COLOR_ARRAY);
  glDisableClientState(GL_VERTEX_ARRAY);
  glLineWidth(1);
}

MeshColour ColourOf(const StaticObject& object, std::int32_t index) {
  if (objectStore.viewMode == ViewMode::TexturedMesh && !object.unknown) return kWhite;
  if (IsHovered(index)) return object.selected ? kYellow : kGreen;
  if (object.selected) return kRed;
  return EntryOf(object)->meshKind == MeshKind::TreeMesh ? kGreen : object.boxColour;
}

void DrawObject(const StaticObject& object, const MeshColour& colour, const Matrix4& view,
                const PixelGrid& grid) {
  DrawBoundMeshListAt(
      PlacedMatrix(view, object.ViewPosition(), object.rotation, ScaleInView(object)), colour,
      grid);
}

void DrawMeshes() {
  if (objectStore.viewMode == ViewMode::TexturedMesh) glEnable(GL_TEXTURE_2D);
  Matrix4 view;
  glGetFloatv(GL_MODELVIEW_MATRIX, view.data());
  const PixelGrid grid = CurrentPixelGrid();
  glPushMatrix();
  glShadeModel(GL_FLAT);
  MeshListId bound = 0;
  for (const auto& [list, index] : objectsInSight.objects) {
    const StaticObject& object = objectStore.objects[static_cast<std::size_t>(index)];
    if (list != bound) {
      UnbindMeshList();
      BindMeshList(list);
      bound = list;
    }
    DrawObject(object, ColourOf(object, index), view, grid);
  }
  UnbindMeshList();
  glShadeModel(GL_SMOOTH);
  glPopMatrix();
  glDisable(GL_TEXTURE_2D);
}

float WholeExtent(float a, float b) { return std::abs(std::trunc(a)) + std::abs(std::trunc(b)); }

}  // namespace

void DrawStaticObjects() {
  CollectObjectsInSight();
  glDisable(GL_BLEND);
  glDisable(GL_TEXTURE_2D);
  DrawMarkers();
  DrawMeshes();
}

void DrawObjectModeScene() {
  FindHovered();
  if (objectStore.showStandardMeshes || objectStore.showTreeMeshes) DrawStaticObjects();
  DrawEntities();
  DrawScatterBrush();
  NameHovered();
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
