#include "objects/static_objects.h"

#include <algorithm>
#include <utility>

#include "core/editor_state.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/object_windows.h"
#include "objects/property_sheet.h"
#include "objects/static_object_records.h"
#include "platform/prompts.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

StaticObject* ObjectInUse(int index) {
  auto& objects = objectStore.objects;
  if (index < 0 || index >= static_cast<int>(objects.size())) return nullptr;
  StaticObject& object = objects[static_cast<std::size_t>(index)];
  return object.inUse ? &object : nullptr;
}

bool HasRoom() {
  if (!ObjectTableIsFull()) return true;
  ShowPrompt("Could not add the object - Maximum number of objects exceeded!", "ERROR",
             PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

}  // namespace

void ClearAllObjects() {
  for (std::size_t i = objectStore.objects.size(); i-- > 0;) {
    RetireStaticObject(objectStore.objects[i]);
  }
  objectStore.objects.clear();
  ClearMeshes();
  ClearAllEntities();
  DeselectAll();
  UpdateToolButtons(false);
  objectStore.hoveredObject = objectStore.lastHoveredObject = -1;
  entities.hovered = {};
  editor.somethingCopied = false;
}

bool AddStaticObjectFromCache(int mesh) {
  if (!HasRoom()) return false;
  if (mesh < 0 || mesh >= static_cast<int>(objectStore.meshes.size())) return false;
  const NameText name = objectStore.meshes[static_cast<std::size_t>(mesh)].name;
  if (FindCatalogueEntry(name) < 0) return false;
  StaticObject object = NewStaticObject(name);
  const Vector3& point = objectStore.CursorPoint;
  object.position = {MirrorX(point.x), point.y, point.z};
  object.selected = true;
  UseCachedMesh(object, mesh);
  AppendStaticObject(std::move(object));
  UpdateToolButtons(true);
  ComputePivot();
  editor.levelModified = true;
  return true;
}

bool PlaceStaticObject(std::string_view name, float x, float z, const Vector3& rotation) {
  if (!HasRoom()) return false;
  if (FindCatalogueEntry(name) < 0) return false;
  StaticObject object = NewStaticObject(name);
  object.position = {MirrorX(x), objectStore.CursorPoint.y, z};
  object.rotation = rotation;
  FindMesh(object);
  AppendStaticObject(std::move(object));
  editor.levelModified = true;
  return true;
}

void DeleteStaticObject(int index) {
  StaticObject* const object = ObjectInUse(index);
  if (!object) return;
  const bool wasSelected = object->selected;
  RetireStaticObject(*object);
  if (wasSelected) UpdateToolButtons(AnySelected());
  editor.levelModified = true;
}

bool EditStaticObject(int index) {
  StaticObject* const object = ObjectInUse(index);
  if (!object) return false;
  PropertySheet sheet;
  sheet.title = "Edit Object";
  AddField(sheet, TextOf(object->name), static_cast<std::int32_t>(object->name.kCapacity),
           FieldType::Text, "Name")
      ->editable = false;
  AddField(sheet, &object->position.x, 3, FieldType::Floats, "Pos");
  AddField(sheet, &object->rotation.x, 3, FieldType::Floats, "Rot");
  if (!objectWindows.runPropertySheet(sheet)) return false;
  editor.levelModified = true;
  return true;
}

void SnapAllToGround() {
  ForEachPlacement(
      [](Placement& item) { item.position.y = HeightAt(item.position.x, item.position.z); });
  editor.levelModified = true;
}

int FindObjectByTreeItem(TreeItem item) {
  const auto& objects = objectStore.objects;
  const auto found = std::find_if(
      objects.begin(), objects.end(),
      [item](const StaticObject& object) { return object.inUse && object.treeItem == item; });
  return found == objects.end() ? -1 : static_cast<int>(found - objects.begin());
}

void FindObjectEntriesAgain() {
  for (StaticObject& object : objectStore.objects) {
    if (object.inUse) object.catalogueIndex = CatalogueEntryToShow(object.name);
  }
}

}  // namespace mw
