#include "objects/object_mapper.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/text.h"
#include "objects/entity_editing.h"
#include "objects/object_history.h"
#include "objects/object_hover.h"
#include "objects/object_selection.h"
#include "objects/object_snapping.h"
#include "objects/static_object_records.h"
#include "objects/static_objects.h"
#include "objects/visibility.h"
#include "platform/prompts.h"
#include "terrain/terrain.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

// Of a drag, per pixel upwards.
constexpr float kRaisePerPixel = 0.05f;  // world units
constexpr float kTurnPerPixel = 0.5f;    // degrees
constexpr float kScalePerPixel = 0.01f;

constexpr int kReadingPart = 3;  // of the status bar

bool* SwitchOf(ObjectControl control) {
  switch (control) {
    case ObjectControl::ShowStandardMeshes:
      return &objectStore.showStandardMeshes;
    case ObjectControl::ShowTreeMeshes:
      return &objectStore.showTreeMeshes;
    case ObjectControl::ShowObjectSpawns:
      return &objectStore.showObjectSpawns;
    case ObjectControl::ShowSoldierSpawns:
      return &objectStore.showSoldierSpawns;
    case ObjectControl::ShowControlPoints:
      return &objectStore.showControlPoints;
    case ObjectControl::SnapToGround:
      return &objectStore.snapToGround;
    default:
      return nullptr;
  }
}

std::optional<ViewMode> ViewModeOf(ObjectControl control) {
  switch (control) {
    case ObjectControl::ViewBoundingBox:
      return ViewMode::BoundingBox;
    case ObjectControl::ViewCollisionMesh:
      return ViewMode::CollisionMesh;
    case ObjectControl::ViewDetailMesh:
      return ViewMode::DetailMesh;
    case ObjectControl::ViewTexturedMesh:
      return ViewMode::TexturedMesh;
    default:
      return std::nullopt;
  }
}

// It needs to know what to scatter, and asks.
std::optional<ObjectTool> ScatterTool() {
  if (!HasScatterKinds()) EditScatter();
  return HasScatterKinds() ? std::optional(ObjectTool::Scatter) : std::nullopt;
}

// The tool that can be chosen with the control now. The scale tools never can.
std::optional<ObjectTool> ChoosableTool(ObjectControl control) {
  if (control == ObjectControl::Select) return ObjectTool::Select;
  if (control == ObjectControl::Scatter) return ScatterTool();
  if (!objectStore.toolsEnabled) return std::nullopt;
  switch (control) {
    case ObjectControl::Translate:
      return ObjectTool::Translate;
    case ObjectControl::RaiseLower:
      return ObjectTool::RaiseLower;
    case ObjectControl::RotateX:
      return ObjectTool::RotateX;
    case ObjectControl::RotateY:
      return ObjectTool::RotateY;
    case ObjectControl::RotateZ:
      return ObjectTool::RotateZ;
    default:
      return std::nullopt;
  }
}

// Presses an item with the Translate tool.
void SelectPressed(Placement& item, TreeItem treeItem) {
  if (item.selected) return;
  if (!editor.ctrlHeld) DeselectAll();
  Select(item, treeItem);
  ShowSelectionInTree();
  objectStore.pressChangedSelection = true;
}

float GroundUnder(const Placement& item) { return HeightAt(item.position.x, item.position.z); }

// Over the ground: what is dragged lies under the cursor itself, and would come nearer and nearer.
// Where the cursor is over none, nothing moves.
void DragTranslate(int x, int y) {
  const auto ground = GroundUnderCursor(x, y);
  if (!ground) return;
  const Vector3 pivot = PivotOnGrid(*ground);
  objectStore.CursorPoint = *ground;
  objectStore.SelectionPivot = pivot;
  ForEachSelected([&pivot](Placement& item) {
    const Vector3 offset = PivotOffset(item);
    item.position.x = MirrorX(pivot.x + offset.x);
    item.position.z = pivot.z + offset.z;
    if (objectStore.snapToGround) item.position.y = GroundUnder(item);
  });
  editor.levelModified = true;
}

// A hand is never quite still: an item that was pressed on stays where it is until the mouse has
// really moved.
bool IsStillAClick(int x, int y) {
  constexpr int kStill = 4;  // pixels
  if (std::abs(x - editor.pressX) + std::abs(y - editor.pressY) >= kStill)
    objectStore.pressedOnItem = false;
  return objectStore.pressedOnItem;
}

void DragRaise(int pixelsUp) {
  const float change = static_cast<float>(pixelsUp) * kRaisePerPixel;
  ForEachSelected([change](Placement& item) {
    item.position.y += change;
    if (objectStore.snapToGround) item.position.y = std::max(item.position.y, GroundUnder(item));
  });
  editor.levelModified = true;
}

// `axis` is a component of the rotation.
void DragRotate(float Vector3::*axis, int pixelsUp) {
  const float change = TurnInSteps(axis, static_cast<float>(pixelsUp) * kTurnPerPixel);
  ForEachSelected([axis, change](Placement& item) { item.rotation.*axis += change; });
  editor.levelModified = true;
}

// Entities have no scale.
void DragScale(float Vector3::*axis, int pixelsUp) {
  const float change = static_cast<float>(pixelsUp) * kScalePerPixel;
  for (StaticObject& object : objectStore.objects) {
    if (!object.selected) continue;
    object.scale.*axis += change;
    object.scaleGiven = true;
  }
  editor.levelModified = true;
}

void DragByTool(int x, int y, int previousY) {
  const int pixelsUp = previousY - y;
  switch (objectStore.tool) {
    case ObjectTool::Select:
    case ObjectTool::Scatter:
      break;
    case ObjectTool::Translate:
      if (!IsStillAClick(x, y)) DragTranslate(x, y);
      break;
    case ObjectTool::RaiseLower:
      DragRaise(pixelsUp);
      break;
    case ObjectTool::RotateX:
      DragRotate(&Vector3::x, pixelsUp);
      break;
    case ObjectTool::RotateY:
      DragRotate(&Vector3::y, pixelsUp);
      break;
    case ObjectTool::RotateZ:
      DragRotate(&Vector3::z, pixelsUp);
      break;
    case ObjectTool::ScaleWidth:
      DragScale(&Vector3::x, pixelsUp);
      DragScale(&Vector3::z, pixelsUp);
      break;
    case ObjectTool::ScaleHeight:
      DragScale(&Vector3::y, pixelsUp);
      break;
  }
}

// Where the selection is, and how it is turned: of one item its own place, of several the first
// one's.
std::string DescribeDragged() {
  const Placement* first = nullptr;
  int count = 0;
  ForEachSelected([&](const Placement& item) {
    if (count++ == 0) first = &item;
  });
  const auto& [x, y, z] = first->position;
  const Vector3& angle = first->rotation;
  const std::string which = count == 1 ? std::string() : FormatText("The first of %i: ", count);
  return which + FormatText("Position %.2f / %.2f / %.2f  Angle %.1f / %.1f / %.1f", double{x},
                            double{y}, double{z}, double{angle.x}, double{angle.y},
                            double{angle.z});
}

void ShowDragged() {
  objectStore.draggedText = DescribeDragged();
  SetStatusText(kReadingPart, objectStore.draggedText);
}

void ForgetDragged() {
  const std::string shown = std::exchange(objectStore.draggedText, {});
  if (!shown.empty()) ClearStatusText(kReadingPart, shown);
}

const char* NameOf(ObjectTool tool) {
  switch (tool) {
    case ObjectTool::RaiseLower:
      return "Raise or Lower";
    case ObjectTool::RotateX:
    case ObjectTool::RotateY:
    case ObjectTool::RotateZ:
      return "Rotate";
    case ObjectTool::ScaleWidth:
    case ObjectTool::ScaleHeight:
      return "Scale";
    case ObjectTool::Select:
    case ObjectTool::Scatter:
    case ObjectTool::Translate:
      break;
  }
  return "Move";
}

// From the press to the release.
void BeginDrag() {
  objectStore.dragStep.Begin(NameOf(objectStore.tool));
  KeepObjects();
}

using IsMeant = std::function<bool(const Placement&, TreeItem)>;

void DeleteEntities(EntityKind kind, const IsMeant& isMeant) {
  const auto& instances = entities.Of(kind).instances;
  for (std::size_t i = instances.size(); i-- > 0;) {
    if (isMeant(*instances[i], instances[i]->treeItem)) DeleteInstance(kind, static_cast<int>(i));
  }
}

void DeleteMeant(const IsMeant& isMeant) {
  const auto isMeantObject = [&](const StaticObject& object) {
    return isMeant(object, object.treeItem);
  };
  if (RemoveStaticObjects(isMeantObject)) editor.levelModified = true;
  for (const EntityKind kind : kEntityKinds) DeleteEntities(kind, isMeant);
}

}  // namespace

void PressObjectControl(ObjectControl control) {
  if (bool* const shown = SwitchOf(control)) {
    *shown = !*shown;
    DeselectHidden();
  } else if (const auto viewMode = ViewModeOf(control)) {
    objectStore.viewMode = *viewMode;
  } else if (const auto tool = ChoosableTool(control)) {
    objectStore.tool = *tool;
  } else if (control == ObjectControl::GridStep) {
    NextGridStep();
  } else if (control == ObjectControl::TurnStep) {
    NextTurnStep();
  }
  hooks.refreshObjectToolbar();
}

void UpdateToolButtons(bool anySelected) {
  objectStore.toolsEnabled = anySelected;
  objectStore.tool = ObjectTool::Select;
  ShowSelectionInTree();
  if (!anySelected && !objectStore.namedIsHovered) ForgetNamed();
  hooks.refreshObjectToolbar();
}

void KeepToolFor(bool anySelected) {
  const ObjectTool tool = objectStore.tool;
  UpdateToolButtons(anySelected);
  if (!anySelected) return;
  objectStore.tool = tool;
  hooks.refreshObjectToolbar();
}

void PickCursorPoint(int x, int y) {
  if (const auto point = WorldPointUnderCursor(x, y)) objectStore.CursorPoint = *point;
}

void PickHovered(int x, int y) {
  const auto point = WorldPointUnderCursor(x, y);
  if (!point) return;
  objectStore.CursorPoint = *point;
  FindHovered();
}

void PressTranslate(int x, int y) {
  BeginDrag();
  PickHovered(x, y);
  objectStore.pressedOnItem = HoveredObject() || HoveredInstance();
  if (StaticObject* const object = HoveredObject()) {
    SelectPressed(*object, object->treeItem);
  } else if (SpawnInstance* const entity = HoveredInstance()) {
    SelectPressed(*entity, entity->treeItem);
  } else {
    DragTranslate(x, y);
  }
  ComputePivot();
}

void ReleaseObjects() {
  objectStore.dragStep.End();
  ReleaseScatter();
  objectStore.turnRest = 0;
  ForgetDragged();
  if (std::exchange(objectStore.pressChangedSelection, false)) UpdateToolButtons(AnySelected());
}

void DragObjects(int x, int y, int, int previousY) {
  if (objectStore.tool == ObjectTool::Select) return;
  if (objectStore.tool == ObjectTool::Scatter) return DragScatter(x, y);
  BeginDrag();
  DragByTool(x, y, previousY);
  if (AnySelected()) ShowDragged();
}

bool EditHovered() {
  if (editor.ctrlHeld) return false;
  if (const StaticObject* const object = HoveredObject(); object && object->selected) {
    EditStaticObject(objectStore.lastHoveredObject);
    return true;
  }
  if (SpawnInstance* const entity = HoveredInstance(); entity && entity->selected) {
    entity->Edit();
    return true;
  }
  return false;
}

void DeleteSelected() {
  const ObjectStep step("Delete");
  levelTree.suppressObjectSelection = true;
  DeleteMeant([](const Placement& item, TreeItem) { return item.selected; });
  DeselectAll();
  RefreshTreeItems();
  UpdateToolButtons(false);
  levelTree.suppressObjectSelection = false;
}

void DeleteByTreeItems(const std::vector<TreeItem>& items) {
  const ObjectStep step("Delete");
  const std::unordered_set<TreeItem> meant(items.begin(), items.end());
  DeleteMeant([&meant](const Placement&, TreeItem item) { return meant.contains(item); });
  for (const TreeItem item : items) {
    if (FindObjectSpawnTemplate(item) >= 0) DeleteByTreeItem(item);
  }
  UpdateToolButtons(AnySelected());
}

}  // namespace mw
