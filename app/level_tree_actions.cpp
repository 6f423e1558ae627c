#include "app/level_tree_actions.h"

#include <array>
#include <functional>
#include <utility>

#include "app/commands.h"
#include "app/shell.h"
#include "core/editor_state.h"
#include "objects/entity_editing.h"
#include "objects/object_history.h"
#include "objects/object_hover.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/object_snapping.h"
#include "objects/object_store.h"
#include "objects/static_objects.h"
#include "objects/visibility.h"

namespace mw {
namespace {

constexpr std::array<GameModeMask, kModeFilterChoices> kFilterModes{
    kAllModes, kModeConquest, kModeCaptureTheFlag, kModeTeamDeathMatch};

void SelectObjectOf(TreeItem item) {
  const int index = FindObjectByTreeItem(item);
  if (index < 0) return;
  RunCommand(kCommandObjectMapper);
  if (levelTree.suppressObjectSelection) return;
  StaticObject& object = objectStore.objects[static_cast<std::size_t>(index)];
  ShowKindOf(object);
  SelectOnly(object, item);
  FocusCameraOn(object.position.x, object.position.y, object.position.z);
  NameInStatusBar(StatusTextOf(object));
  shell.renderFrameNow();
}

// Every object that shows the mesh, wherever it stands.
void SelectObjectsOfMesh(TreeItem item) {
  if (FindMeshByTreeItem(item) < 0) return;
  RunCommand(kCommandObjectMapper);
  if (levelTree.suppressObjectSelection) return;
  if (SelectByTreeItems({item})) return;
  DeselectAll();
  UpdateToolButtons(false);
}

// While it lives, what the user has chosen in the tree stays so, whatever is selected for it.
class UserChoosesItems {
 public:
  UserChoosesItems() : before_(std::exchange(levelTree.userIsChoosing, true)) {}
  ~UserChoosesItems() { levelTree.userIsChoosing = before_; }
  UserChoosesItems(const UserChoosesItems&) = delete;
  UserChoosesItems& operator=(const UserChoosesItems&) = delete;

 private:
  bool before_;
};

bool IsEntityPlace(TreeItem parent, TreeItem grandparent) {
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  return grandparent == fixed.objectSpawns || grandparent == fixed.soldierSpawns ||
         grandparent == fixed.controlPoints || parent == fixed.soldierSpawns ||
         parent == fixed.controlPoints;
}

// What the fixed items open; nothing for any other item.
std::function<void()> OpeningOf(TreeItem item) {
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  if (item == fixed.lighting) return shell.lightSettingsDialog;
  if (item == fixed.shadows) return shell.shadowSettingsDialog;
  if (item == fixed.fog) return shell.fogSettingsDialog;
  if (item == fixed.water) return shell.waterSettingsDialog;
  if (item == fixed.teams) return shell.teamSelectionDialog;
  if (item == fixed.addTemplate) return AddObjectSpawnTemplate;
  if (item == fixed.addNewObject) return shell.objectBrowserDialog;
  return nullptr;
}

// An object spawn of a template, or a static object of a cached mesh.
bool DropTemplateOrMesh(TreeItem item) {
  if (FindObjectSpawnTemplate(item) >= 0) return DropTemplate(item);
  const int mesh = FindMeshByTreeItem(item);
  return mesh >= 0 && AddStaticObjectFromCache(mesh);
}

}  // namespace

void LevelTreeItemSelected(TreeItem item) {
  if (!levelTree.notificationsEnabled || item == 0) return;
  const UserChoosesItems choosing;
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  const TreeItem parent = ParentOf(item), grandparent = ParentOf(parent);
  if (parent == fixed.standardMeshes || parent == fixed.treeMeshes) {
    SelectObjectOf(item);
  } else if (parent == fixed.cachedObjects) {
    SelectObjectsOfMesh(item);
  } else if (IsEntityPlace(parent, grandparent) && !levelTree.suppressObjectSelection) {
    if (SelectFromTree(item)) RunCommand(kCommandObjectMapper);
  }
}

void LevelTreeItemsSelected(const std::vector<TreeItem>& items) {
  if (!levelTree.notificationsEnabled || levelTree.suppressObjectSelection) return;
  const UserChoosesItems choosing;
  if (items.empty()) {
    DeselectAll();
    UpdateToolButtons(false);
  } else if (SelectByTreeItems(items)) {
    RunCommand(kCommandObjectMapper);
  }
}

bool ActivateLevelTreeItem(TreeItem item) {
  if (item == 0) return false;
  if (const auto open = OpeningOf(item)) {
    open();
    return true;
  }
  if (const int index = FindObjectByTreeItem(item); index >= 0) {
    EditStaticObject(index);
    return true;
  }
  return EditByTreeItem(item);
}

bool DeleteLevelTreeItem(TreeItem item) {
  if (item == 0) return false;
  if (const int index = FindObjectByTreeItem(item); index >= 0) {
    DeleteStaticObject(index);
    return true;
  }
  const bool suppressed = std::exchange(levelTree.suppressObjectSelection, true);
  DeleteByTreeItem(item);
  levelTree.suppressObjectSelection = suppressed;
  return false;
}

void DeleteLevelTreeItems(const std::vector<TreeItem>& items) {
  const bool suppressed = std::exchange(levelTree.suppressObjectSelection, true);
  DeleteByTreeItems(items);
  levelTree.suppressObjectSelection = suppressed;
}

bool CanDragLevelTreeItem(TreeItem item) {
  if (item == 0) return false;
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  if (item == fixed.newControlPoint || item == fixed.newSoldierSpawn) return true;
  const TreeItem parent = ParentOf(item);
  return (parent == fixed.cachedObjects && item != fixed.addNewObject) ||
         (parent == fixed.objectSpawns && item != fixed.addTemplate);
}

void BeginLevelTreeDrag() {
  RunCommand(kCommandObjectMapper);
  DeselectAll();
  UpdateToolButtons(false);
}

void DropLevelTreeItem(TreeItem item, int x, int y) {
  if (!CanDragLevelTreeItem(item)) return;
  const ObjectStep step("Drop");
  PickCursorPoint(x, y);
  objectStore.CursorPoint = PointOnGrid(objectStore.CursorPoint);
  if (item == levelTree.fixed.newControlPoint) {
    DropNewEntity(EntityKind::ControlPoint);
  } else if (item == levelTree.fixed.newSoldierSpawn) {
    DropNewEntity(EntityKind::SoldierSpawn);
  } else if (DropTemplateOrMesh(item)) {
    editor.levelModified = true;
  }
}

void ChooseModeFilter(int choice) {
  if (choice < 0 || choice >= kModeFilterChoices) return;
  const bool enabled = std::exchange(levelTree.notificationsEnabled, false);
  SetModeFilter(kFilterModes[static_cast<std::size_t>(choice)]);
  levelTree.notificationsEnabled = enabled;
}

}  // namespace mw
