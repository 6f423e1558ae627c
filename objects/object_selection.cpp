#include "objects/object_selection.h"

#include <algorithm>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "objects/object_mapper.h"

namespace mw {
namespace {

// What the level's sides leave when the positions are between them.
struct Bounds {
  float minX = static_cast<float>(modConfig.WorldSize), maxX = 0;
  float minZ = static_cast<float>(modConfig.WorldSize), maxZ = 0;

  void Include(const Vector3& position) {
    minX = std::min(minX, position.x);
    maxX = std::max(maxX, position.x);
    minZ = std::min(minZ, position.z);
    maxZ = std::max(maxZ, position.z);
  }
};

void StoreOffset(Placement& item) {
  item.pivotDirection = item.ViewPosition() - objectStore.SelectionPivot;
  item.pivotDistance = static_cast<float>(item.pivotDirection.Length());
  item.pivotDirection.Normalise();
}

void ToggleSelected(Placement& item, TreeItem treeItem) {
  if (item.selected) {
    item.selected = false;
  } else {
    Select(item, treeItem);
  }
}

}  // namespace

void Select(Placement& item, TreeItem treeItem) {
  item.selected = true;
  SelectItem(treeItem);
}

bool AnySelected() {
  bool any = false;
  ForEachSelected([&any](Placement&) { any = true; });
  return any;
}

StaticObject* HoveredObject() {
  const std::int32_t index = objectStore.lastHoveredObject;
  if (index < 0 || index >= static_cast<int>(objectStore.objects.size())) return nullptr;
  return &objectStore.objects[static_cast<std::size_t>(index)];
}

Vector3 PivotOffset(const Placement& item) { return item.pivotDirection * item.pivotDistance; }

void DeselectAll() {
  ForEachPlacement([](Placement& item) { item.selected = false; });
  objectStore.SelectionPivot = {};
}

void ComputePivot() {
  if (!AnySelected()) return;
  Bounds bounds;
  ForEachSelected([&bounds](Placement& item) { bounds.Include(item.position); });
  objectStore.SelectionPivot.x = MirrorX((bounds.minX + bounds.maxX) / 2);
  objectStore.SelectionPivot.z = (bounds.minZ + bounds.maxZ) / 2;
  ForEachSelected(StoreOffset);
}

void SelectOnly(Placement& item, TreeItem treeItem) {
  DeselectAll();
  Select(item, treeItem);
  UpdateToolButtons(true);
  ComputePivot();
}

void ToggleSelectAtCursor(int x, int y) {
  PickHovered(x, y);
  if (!editor.ctrlHeld) DeselectAll();
  if (StaticObject* const object = HoveredObject()) ToggleSelected(*object, object->treeItem);
  if (SpawnInstance* const entity = HoveredInstance()) ToggleSelected(*entity, entity->treeItem);
  UpdateToolButtons(AnySelected());
  ComputePivot();
}

}  // namespace mw
