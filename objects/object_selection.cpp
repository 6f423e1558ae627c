#include "objects/object_selection.h"

#include <algorithm>
#include <cstdint>
#include <unordered_set>

#include "core/editor_state.h"
#include "data/mod_config.h"
#include "objects/object_mapper.h"
#include "objects/visibility.h"

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

using ItemSet = std::unordered_set<TreeItem>;

// The catalogue entries of the meshes among the items.
std::unordered_set<std::int32_t> EntriesOfMeshes(const ItemSet& items) {
  std::unordered_set<std::int32_t> entries;
  for (const CachedMesh& mesh : objectStore.meshes) {
    if (items.contains(mesh.treeItem)) entries.insert(FindCatalogueEntry(mesh.name));
  }
  entries.erase(-1);
  return entries;
}

// The objects and entities that the items stand for. What is hidden is shown.
std::vector<Placement*> ThingsOf(const ItemSet& items) {
  std::vector<Placement*> things;
  const auto add = [&things](auto& item) {
    ShowKindOf(item);
    things.push_back(&item);
  };
  const auto entries = EntriesOfMeshes(items);
  for (StaticObject& object : objectStore.objects) {
    if (items.contains(object.treeItem) || entries.contains(object.catalogueIndex)) add(object);
  }
  for (EntityTables& table : entities.tables) {
    for (const auto& instance : table.instances) {
      if (items.contains(instance->treeItem)) add(*instance);
    }
  }
  return things;
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

bool SelectByTreeItems(const std::vector<TreeItem>& items) {
  ItemSet meant(items.begin(), items.end());
  meant.erase(0);
  const std::vector<Placement*> things = ThingsOf(meant);
  if (things.empty()) return false;
  DeselectAll();
  for (Placement* item : things) item->selected = true;
  ComputePivot();
  UpdateToolButtons(true);
  return true;
}

void ShowSelectionInTree() {
  std::vector<TreeItem> items;
  for (const StaticObject& object : objectStore.objects) {
    if (object.selected) items.push_back(object.treeItem);
  }
  for (const EntityTables& table : entities.tables) {
    for (const auto& instance : table.instances) {
      if (instance->selected) items.push_back(instance->treeItem);
    }
  }
  SelectItems(items);
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
