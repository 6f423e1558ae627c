#include "objects/static_objects.h"

#include <algorithm>
#include <utility>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "objects/entity_editing.h"
#include "objects/level_tree.h"
#include "objects/object_clipboard.h"
#include "objects/object_history.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/property_sheet.h"
#include "objects/static_object_records.h"
#include "objects/visibility.h"
#include "platform/prompts.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

StaticObject* ObjectAt(int index) {
  auto& objects = objectStore.objects;
  if (index < 0 || index >= static_cast<int>(objects.size())) return nullptr;
  return &objects[static_cast<std::size_t>(index)];
}

}  // namespace

bool HasRoomForObjects(std::size_t count) {
  if (objectStore.objects.size() + count <= kMaxStaticObjects) return true;
  ShowPrompt("Could not add the object - Maximum number of objects exceeded!", "ERROR",
             PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

void ClearAllObjects() {
  RemoveStaticObjects([](const StaticObject&) { return true; });
  ClearMeshes();
  ClearAllEntities();
  DeselectAll();
  UpdateToolButtons(false);
  entities.hovered = {};
  ForgetCopied();
}

void ClearObjectsAndTree() {
  BuildTree();  // first: it drops all rows together
  ClearAllObjects();
}

bool AddStaticObjectFromCache(int mesh) {
  if (!HasRoomForObjects(1)) return false;
  if (mesh < 0 || mesh >= static_cast<int>(objectStore.meshes.size())) return false;
  const NameText name = objectStore.meshes[static_cast<std::size_t>(mesh)].name;
  if (FindCatalogueEntry(name) < 0) return false;
  StaticObject object = NewStaticObject(name);
  const Vector3& point = objectStore.CursorPoint;
  object.position = {MirrorX(point.x), point.y, point.z};
  object.selected = true;
  UseCachedMesh(object, mesh);
  ShowKindOf(object);
  AppendStaticObject(object);
  UpdateToolButtons(true);
  ComputePivot();
  editor.levelModified = true;
  return true;
}

bool PlaceStaticObject(std::string_view name, float x, float z, const Vector3& rotation) {
  if (!HasRoomForObjects(1)) return false;
  if (FindCatalogueEntry(name) < 0) return false;
  StaticObject object = NewStaticObject(name);
  object.position = {MirrorX(x), objectStore.CursorPoint.y, z};
  object.rotation = rotation;
  FindMesh(object);
  AppendStaticObject(object);
  editor.levelModified = true;
  return true;
}

void DeleteStaticObject(int index) {
  const StaticObject* const object = ObjectAt(index);
  if (!object) return;
  const ObjectStep step("Delete");
  const bool wasSelected = object->selected;
  RemoveStaticObjects([object](const StaticObject& other) { return &other == object; });
  if (wasSelected) UpdateToolButtons(AnySelected());
  editor.levelModified = true;
}

bool EditStaticObject(int index) {
  StaticObject* const object = ObjectAt(index);
  if (!object) return false;
  const ObjectStep step("Edit Object");
  Vector3 position = object->position, rotation = object->rotation;
  PropertySheet sheet;
  sheet.title = "Edit Object";
  AddField(sheet, TextOf(object->name), static_cast<std::int32_t>(object->name.kCapacity),
           FieldType::Text, "Name")
      ->editable = false;
  AddField(sheet, &position.x, 3, FieldType::Floats, "Pos");
  AddField(sheet, &rotation.x, 3, FieldType::Floats, "Rot");
  if (!hooks.runPropertySheet(sheet)) return false;
  if (position == object->position && rotation == object->rotation) return true;
  object->position = position;
  object->rotation = rotation;
  editor.levelModified = true;
  return true;
}

void SnapAllToGround() {
  const ObjectStep step("Snap All Objects to Ground");
  ForEachPlacement(
      [](Placement& item) { item.position.y = HeightAt(item.position.x, item.position.z); });
  editor.levelModified = true;
}

int FindObjectByTreeItem(TreeItem item) {
  const auto& objects = objectStore.objects;
  const auto found = std::ranges::find(objects, item, &StaticObject::treeItem);
  return item == 0 || found == objects.end() ? -1 : static_cast<int>(found - objects.begin());
}

std::string StatusTextOf(const StaticObject& object) {
  return "Static Object: " + object.name.String();
}

void FindObjectEntriesAgain() {
  for (StaticObject& object : objectStore.objects) {
    FindEntry(object);
    if (object.meshIndex < 0) FindMesh(object);
    ShowInTree(object);
  }
}

}  // namespace mw
