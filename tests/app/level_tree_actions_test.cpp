#include "app/level_tree_actions.h"

#include "app/commands.h"
#include "app/modes.h"
#include "app/shell_fixture.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/object_store.h"
#include "objects/static_objects.h"
#include "platform/scripted/script.h"

namespace mw {
namespace {

// A level with two bunkers, an oak and a hut, and the mesh of the bunkers in memory.
class LevelTreeActionsTest : public ShellTest {
 protected:
  LevelTreeActionsTest() {
    BuildTree();
    AddEntry("bunker", MeshKind::StandardMesh);
    AddEntry("oak", MeshKind::TreeMesh);
    firstBunker = Place("bunker", 0, {100, 20, 300});
    oak = Place("oak", 1, {200, 10, 200});
    secondBunker = Place("bunker", 0, {400, 5, 50});
    CachedMesh mesh;
    mesh.name = "bunker";
    mesh.treeItem = cachedBunker = InsertItem(levelTree.fixed.cachedObjects, "bunker");
    objectStore.meshes.push_back(mesh);
    shell.renderFrameNow = [this] { ++frames; };
  }

  static void AddEntry(const char* name, MeshKind kind) {
    CatalogueEntry& entry =
        objectStore.catalogue.entries[static_cast<std::size_t>(objectStore.catalogue.entryCount++)];
    entry.name = name;
    entry.meshName = name;
    entry.meshKind = kind;
  }
  static TreeItem Place(const char* name, int entry, Vector3 position) {
    StaticObject object;
    object.name = name;
    object.catalogueIndex = entry;
    object.position = position;
    object.treeItem =
        InsertItem(entry == 1 ? levelTree.fixed.treeMeshes : levelTree.fixed.standardMeshes, name);
    objectStore.objects.push_back(object);
    return object.treeItem;
  }
  static std::vector<bool> Selected() {
    std::vector<bool> selected;
    for (const StaticObject& object : objectStore.objects) selected.push_back(object.selected);
    return selected;
  }
  using Flags = std::vector<bool>;

  TreeItem firstBunker = 0, oak = 0, secondBunker = 0, cachedBunker = 0;
  int frames = 0;
};

TEST_F(LevelTreeActionsTest, ChoosingAnObjectSelectsItAloneAndFramesItInTheObjectMapper) {
  objectStore.objects[2].selected = true;
  camera.yaw = 77;
  LevelTreeItemSelected(firstBunker);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  EXPECT_TRUE(checked[kCommandObjectMapper]);
  EXPECT_EQ(Selected(), (Flags{true, false, false}));
  EXPECT_EQ(camera.position, (Vector3{1024 - 100, 20 + 35, 300 + 50}));
  EXPECT_EQ(camera.pitch, -35);
  EXPECT_EQ(camera.yaw, 0);
  EXPECT_TRUE(objectStore.toolsEnabled);
  EXPECT_EQ(frames, 1);
}

TEST_F(LevelTreeActionsTest, ChoosingACachedMeshSelectsAllItsObjectsAndLeavesTheCamera) {
  const Vector3 before = camera.position;
  LevelTreeItemSelected(oak);
  camera.position = before;
  LevelTreeItemSelected(cachedBunker);
  EXPECT_EQ(Selected(), (Flags{true, false, true}));
  EXPECT_TRUE(objectStore.toolsEnabled);
  EXPECT_EQ(camera.position, before);
}

TEST_F(LevelTreeActionsTest, SeveralItemsSelectAllThatTheyStandForAndLeaveTheCamera) {
  std::vector<TreeItem> shown;
  levelTree.view.selectAll = [&shown](const std::vector<TreeItem>& items) { shown = items; };
  DropLevelTreeItem(levelTree.fixed.newControlPoint, 0, 0);
  const auto& point = entities.Of(EntityKind::ControlPoint).instances[0];
  SetEditMode(EditMode::TerrainMapper);
  const Vector3 before = camera.position;
  const TreeItem fog = levelTree.fixed.fog;
  LevelTreeItemsSelected({oak, fog, point->treeItem});
  EXPECT_EQ(Selected(), (Flags{false, true, false}));
  EXPECT_TRUE(point->selected && objectStore.toolsEnabled);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  EXPECT_EQ(camera.position, before);
  EXPECT_TRUE(shown.empty()) << "the user's choice stays as it is";
  LevelTreeItemsSelected({fog, levelTree.fixed.world});
  EXPECT_TRUE(objectStore.objects[1].selected) << "nothing of the level was chosen";
  LevelTreeItemsSelected({cachedBunker, oak});
  EXPECT_EQ(Selected(), (Flags{true, true, true}));
  UpdateToolButtons(true);
  EXPECT_EQ(shown, (std::vector{firstBunker, oak, secondBunker})) << "what the view selects";
  DeleteLevelTreeItems({oak, secondBunker, cachedBunker, fog});
  EXPECT_TRUE(FindObjectByTreeItem(firstBunker) >= 0 && FindObjectByTreeItem(oak) < 0 &&
              FindObjectByTreeItem(secondBunker) < 0);
  EXPECT_FALSE(objectStore.meshes.empty());
  LevelTreeItemsSelected({});
  EXPECT_FALSE(objectStore.toolsEnabled);
}

TEST_F(LevelTreeActionsTest, ChoosingAnEntityGoesToTheObjectMapperAndNamesIt) {
  DropLevelTreeItem(levelTree.fixed.newControlPoint, 0, 0);
  const auto& point = entities.Of(EntityKind::ControlPoint).instances[0];
  SetEditMode(EditMode::TerrainMapper);
  LevelTreeItemSelected(point->treeItem);
  EXPECT_TRUE(point->selected);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  auto& texts = scripted::script.status[1];
  EXPECT_EQ(texts.back(), StatusTextOf(*point));
  LevelTreeItemSelected(oak);
  EXPECT_EQ(texts.back(), "Static Object: oak");
  LevelTreeItemsSelected({});
  EXPECT_EQ(texts.back(), "") << "nothing is selected";
  LevelTreeItemSelected(oak);
  DeleteLevelTreeItem(oak);
  EXPECT_EQ(texts.back(), "") << "it is there no more";
}

TEST_F(LevelTreeActionsTest, ItemsWithTheSameTextHaveNumbers) {
  const TreeItem parent = levelTree.fixed.standardMeshes;
  EXPECT_EQ(NumberedText(firstBunker), "bunker");
  EXPECT_EQ(NumberedText(secondBunker), "bunker (2)");
  EXPECT_EQ(NumberedText(cachedBunker), "bunker") << "under another parent";
  const TreeItem third = InsertItem(parent, "bunker");
  EXPECT_EQ(NumberedText(third), "bunker (3)");
  DeleteItem(secondBunker);
  EXPECT_EQ(NumberedText(third), "bunker (3)") << "a number stays with its item";
  SetItemText(third, "tower");
  EXPECT_EQ(NumberedText(third), "tower");
  EXPECT_EQ(NumberedText(InsertItem(parent, "bunker")), "bunker (2)");
  EXPECT_EQ(ItemText(third), "tower");
}

TEST_F(LevelTreeActionsTest, DeletionsAndTheEditorsOwnChangesSelectNothing) {
  levelTree.notificationsEnabled = false;
  LevelTreeItemSelected(oak);
  EXPECT_TRUE(IsEditMode(EditMode::TerrainMapper));
  levelTree.notificationsEnabled = true;
  levelTree.suppressObjectSelection = true;
  LevelTreeItemSelected(oak);
  LevelTreeItemSelected(cachedBunker);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper)) << "the mode follows all the same";
  EXPECT_EQ(Selected(), (Flags{false, false, false}));
}

TEST_F(LevelTreeActionsTest, FixedItemsOpenTheirDialogsAndGroupsOpenNothing) {
  const auto record = [this](const char* name) { return [this, name] { calls.push_back(name); }; };
  operations.lightSettings = record("light");
  operations.shadowSettings = record("shadow");
  operations.fogSettings = record("fog");
  operations.waterSettings = record("water");
  operations.teamSelection = record("teams");
  operations.objectBrowser = record("browser");
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  for (const TreeItem item :
       {fixed.lighting, fixed.shadows, fixed.fog, fixed.water, fixed.teams, fixed.addNewObject}) {
    EXPECT_TRUE(ActivateLevelTreeItem(item));
  }
  EXPECT_EQ(calls,
            (std::vector<std::string>{"light", "shadow", "fog", "water", "teams", "browser"}));
  for (const TreeItem item : {fixed.world, fixed.controlPoints, fixed.newControlPoint,
                              fixed.newSoldierSpawn, fixed.standardMeshes, cachedBunker}) {
    EXPECT_FALSE(ActivateLevelTreeItem(item)) << ItemText(item);
  }
}

TEST_F(LevelTreeActionsTest, DeleteKeyDeletesObjectsAndSpawnsButNoFixedItem) {
  EXPECT_TRUE(DeleteLevelTreeItem(oak));
  EXPECT_EQ(Selected().size(), 2u);
  EXPECT_EQ(ItemText(oak), "");

  DropLevelTreeItem(levelTree.fixed.newControlPoint, 0, 0);
  const TreeItem controlPoint = ChildrenOf(levelTree.fixed.controlPoints).back();
  EXPECT_FALSE(DeleteLevelTreeItem(controlPoint));
  EXPECT_TRUE(entities.Of(EntityKind::ControlPoint).instances.empty());
  EXPECT_FALSE(levelTree.suppressObjectSelection);

  const std::size_t items = levelTree.items.size();
  DeleteLevelTreeItem(levelTree.fixed.cachedObjects);
  DeleteLevelTreeItem(cachedBunker);
  EXPECT_EQ(levelTree.items.size(), items);
}

TEST_F(LevelTreeActionsTest, OnlyWhatCanBePlacedCanBeDragged) {
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  const TreeItem spawnTemplate = InsertItem(fixed.objectSpawns, "Light_Tank (CQ)");
  const TreeItem spawn = InsertItem(spawnTemplate, "Light_Tank (CQ)");
  const TreeItem soldierSpawn = InsertItem(fixed.soldierSpawns, "Spawn1 (CQ)");
  for (const TreeItem item :
       {fixed.newControlPoint, fixed.newSoldierSpawn, cachedBunker, spawnTemplate}) {
    EXPECT_TRUE(CanDragLevelTreeItem(item)) << ItemText(item);
  }
  for (const TreeItem item : {fixed.addTemplate, fixed.addNewObject, fixed.controlPoints,
                              firstBunker, spawn, soldierSpawn, TreeItem{0}}) {
    EXPECT_FALSE(CanDragLevelTreeItem(item)) << ItemText(item);
  }
}

TEST_F(LevelTreeActionsTest, DraggedMeshBecomesASelectedObjectWhereItIsDropped) {
  LevelTreeItemSelected(cachedBunker);
  BeginLevelTreeDrag();
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  EXPECT_EQ(Selected(), (Flags{false, false, false}));
  EXPECT_FALSE(objectStore.toolsEnabled);

  DropLevelTreeItem(cachedBunker, 10, 10);
  ASSERT_EQ(objectStore.objects.size(), 4u);
  EXPECT_EQ(objectStore.objects[3].name, "bunker");
  EXPECT_EQ(objectStore.objects[3].ViewPosition(), objectStore.CursorPoint);
  EXPECT_EQ(Selected(), (Flags{false, false, false, true}));
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(LevelTreeActionsTest, DroppedFixedItemsCreateTheirEntities) {
  DropLevelTreeItem(levelTree.fixed.newControlPoint, 0, 0);
  DropLevelTreeItem(levelTree.fixed.newSoldierSpawn, 0, 0);
  EXPECT_EQ(entities.Of(EntityKind::ControlPoint).instances.size(), 1u);
  EXPECT_EQ(entities.Of(EntityKind::SoldierSpawn).instances.size(), 1u);
  DropLevelTreeItem(levelTree.fixed.addNewObject, 0, 0);
  DropLevelTreeItem(firstBunker, 0, 0);
  EXPECT_EQ(objectStore.objects.size(), 3u);
}

TEST_F(LevelTreeActionsTest, ModeFilterTakesEntitiesOfOtherModesOutOfTheTree) {
  ChooseModeFilter(2);
  EXPECT_EQ(entities.ModeFilter, kModeCaptureTheFlag);
  DropLevelTreeItem(levelTree.fixed.newControlPoint, 0, 0);
  EXPECT_EQ(ChildrenOf(levelTree.fixed.controlPoints).size(), 2u);
  ChooseModeFilter(1);
  EXPECT_EQ(ChildrenOf(levelTree.fixed.controlPoints).size(), 1u);
  ChooseModeFilter(0);
  EXPECT_EQ(entities.ModeFilter, kAllModes);
  EXPECT_EQ(ChildrenOf(levelTree.fixed.controlPoints).size(), 2u);
  EXPECT_TRUE(levelTree.notificationsEnabled);
}

}  // namespace
}  // namespace mw
