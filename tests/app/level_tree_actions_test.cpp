#include "app/level_tree_actions.h"

#include <functional>

#include "app/editing_fixture.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/static_objects.h"

namespace mw {
namespace {

class LevelTreeActionsTest : public EditingTest {
 protected:
  const LevelTree::FixedItems& fixed = levelTree.fixed;
};

TEST_F(LevelTreeActionsTest, ChoosingAnObjectSelectsItAloneAndFramesItInTheObjectMapper) {
  objectStore.objects[2].selected = true;
  LevelTreeItemSelected(firstBunker);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper) && checked[kCommandObjectMapper]);
  EXPECT_EQ(Selected(), (Flags{true, false, false}));
  EXPECT_EQ(camera.position, (Vector3{1024 - 100, 80 + 35, 300 + 50}));
  EXPECT_EQ(camera.pitch, -35);
  EXPECT_EQ(camera.yaw, 0);
  EXPECT_TRUE(objectStore.toolsEnabled);
  EXPECT_EQ(frames, 1);
  const Vector3 before = camera.position;
  LevelTreeItemSelected(cachedBunker);
  EXPECT_EQ(Selected(), (Flags{true, false, true})) << "all of the mesh";
  EXPECT_EQ(camera.position, before);
}

TEST_F(LevelTreeActionsTest, SeveralItemsSelectAllThatTheyStandForAndLeaveTheCamera) {
  std::vector<TreeItem> shown;
  levelTree.view.selectAll = [&shown](const std::vector<TreeItem>& items) { shown = items; };
  DropLevelTreeItem(fixed.newControlPoint, 0, 0);
  const auto& point = entities.Of(EntityKind::ControlPoint).instances[0];
  SetEditMode(EditMode::TerrainMapper);
  const Vector3 before = camera.position;
  shown.clear();
  LevelTreeItemsSelected({oak, fixed.fog, point->treeItem});
  EXPECT_EQ(Selected(), (Flags{false, true, false}));
  EXPECT_TRUE(point->selected && objectStore.toolsEnabled);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper));
  EXPECT_EQ(camera.position, before);
  EXPECT_TRUE(shown.empty()) << "the user's choice stays as it is";
  LevelTreeItemsSelected({fixed.fog, fixed.world});
  EXPECT_TRUE(objectStore.objects[1].selected) << "nothing of the level was chosen";
  LevelTreeItemsSelected({cachedBunker, oak});
  EXPECT_EQ(Selected(), (Flags{true, true, true}));
  UpdateToolButtons(true);
  EXPECT_EQ(shown, (std::vector{firstBunker, oak, secondBunker})) << "what the view selects";
  DeleteLevelTreeItems({oak, secondBunker, cachedBunker, fixed.fog});
  EXPECT_EQ(Selected().size(), 1u);
  EXPECT_FALSE(objectStore.meshes.empty());
  LevelTreeItemsSelected({});
  EXPECT_FALSE(objectStore.toolsEnabled);
}

TEST_F(LevelTreeActionsTest, WhatIsChosenIsNamedUntilItIsThereNoMore) {
  DropLevelTreeItem(fixed.newControlPoint, 0, 0);
  const auto& point = entities.Of(EntityKind::ControlPoint).instances[0];
  SetEditMode(EditMode::TerrainMapper);
  LevelTreeItemSelected(point->treeItem);
  EXPECT_TRUE(point->selected && IsEditMode(EditMode::ObjectMapper));
  const auto& texts = scripted::script.status[1];
  EXPECT_EQ(texts.back(), StatusTextOf(*point));
  LevelTreeItemSelected(oak);
  EXPECT_EQ(texts.back(), "Static Object: oak");
  LevelTreeItemsSelected({});
  EXPECT_EQ(texts.back(), "");
  LevelTreeItemSelected(oak);
  EXPECT_TRUE(DeleteLevelTreeItem(oak)) << "the next item is chosen";
  EXPECT_EQ(texts.back(), "");
  EXPECT_EQ(ItemText(oak), "");
  EXPECT_FALSE(DeleteLevelTreeItem(point->treeItem));
  EXPECT_TRUE(entities.Of(EntityKind::ControlPoint).instances.empty());
  EXPECT_FALSE(levelTree.suppressObjectSelection);
  const std::size_t items = levelTree.items.size();
  DeleteLevelTreeItem(fixed.cachedObjects);
  DeleteLevelTreeItem(cachedBunker);
  EXPECT_EQ(levelTree.items.size(), items);
}

TEST_F(LevelTreeActionsTest, ItemsWithTheSameTextHaveNumbersThatStayWithThem) {
  EXPECT_EQ(NumberedText(firstBunker), "bunker");
  EXPECT_EQ(NumberedText(secondBunker), "bunker (2)");
  EXPECT_EQ(NumberedText(cachedBunker), "bunker") << "under another parent";
  const TreeItem third = InsertItem(fixed.standardMeshes, "bunker");
  DeleteItem(secondBunker);
  EXPECT_EQ(NumberedText(third), "bunker (3)");
  SetItemText(third, "tower");
  EXPECT_EQ(NumberedText(third), "tower");
  EXPECT_EQ(NumberedText(InsertItem(fixed.standardMeshes, "bunker")), "bunker (2)");
}

TEST_F(LevelTreeActionsTest, TheEditorsOwnChangesSelectNothing) {
  levelTree.notificationsEnabled = false;
  LevelTreeItemSelected(oak);
  EXPECT_TRUE(IsEditMode(EditMode::TerrainMapper));
  levelTree.notificationsEnabled = levelTree.suppressObjectSelection = true;
  for (const TreeItem item : {oak, cachedBunker}) LevelTreeItemSelected(item);
  EXPECT_TRUE(IsEditMode(EditMode::ObjectMapper)) << "the mode follows all the same";
  EXPECT_EQ(Selected(), (Flags{false, false, false}));
}

TEST_F(LevelTreeActionsTest, FixedItemsOpenTheirDialogsAndGroupsOpenNothing) {
  const std::pair<TreeItem, WindowFunction<void()>*> rows[] = {
      {fixed.lighting, &shell.lightSettingsDialog},
      {fixed.shadows, &shell.shadowSettingsDialog},
      {fixed.fog, &shell.fogSettingsDialog},
      {fixed.water, &shell.waterSettingsDialog},
      {fixed.teams, &shell.teamSelectionDialog},
      {fixed.addNewObject, &shell.objectBrowserDialog}};
  for (const auto& [item, dialog] : rows) {
    int opened = 0;
    *dialog = [&opened] { ++opened; };
    EXPECT_TRUE(ActivateLevelTreeItem(item));
    EXPECT_EQ(opened, 1);
  }
  for (const TreeItem item : {fixed.world, fixed.controlPoints, fixed.newControlPoint,
                              fixed.newSoldierSpawn, fixed.standardMeshes, cachedBunker}) {
    EXPECT_FALSE(ActivateLevelTreeItem(item)) << ItemText(item);
  }
}

TEST_F(LevelTreeActionsTest, OnlyWhatCanBePlacedCanBeDragged) {
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

TEST_F(LevelTreeActionsTest, WhatIsDroppedStandsWhereItIsDropped) {
  LevelTreeItemSelected(cachedBunker);
  BeginLevelTreeDrag();
  EXPECT_EQ(Selected(), (Flags{false, false, false}));
  EXPECT_FALSE(objectStore.toolsEnabled);
  const Vector3 there = GroundUnderCursor(30, 20).value();
  DropLevelTreeItem(cachedBunker, 30, 20);
  EXPECT_EQ(Selected(), (Flags{false, false, false, true}));
  EXPECT_EQ(objectStore.objects[3].name, "bunker");
  EXPECT_EQ(objectStore.objects[3].ViewPosition(), there);
  EXPECT_TRUE(editor.levelModified);
  for (const TreeItem item :
       {fixed.newControlPoint, fixed.newSoldierSpawn, fixed.addNewObject, firstBunker}) {
    DropLevelTreeItem(item, 30, 20);
  }
  EXPECT_EQ(entities.Of(EntityKind::ControlPoint).instances.size(), 1u);
  EXPECT_EQ(entities.Of(EntityKind::SoldierSpawn).instances.size(), 1u);
  EXPECT_EQ(objectStore.objects.size(), 4u);
}

TEST_F(LevelTreeActionsTest, ModeFilterTakesEntitiesOfOtherModesOutOfTheTree) {
  ChooseModeFilter(2);
  EXPECT_EQ(entities.ModeFilter, kModeCaptureTheFlag);
  DropLevelTreeItem(fixed.newControlPoint, 0, 0);
  for (const auto& [choice, items] : {std::pair{2, 2u}, {1, 1u}, {0, 2u}}) {
    ChooseModeFilter(choice);
    EXPECT_EQ(ChildrenOf(fixed.controlPoints).size(), items) << choice;
  }
  EXPECT_EQ(entities.ModeFilter, kAllModes);
  EXPECT_TRUE(levelTree.notificationsEnabled);
}

}  // namespace
}  // namespace mw
