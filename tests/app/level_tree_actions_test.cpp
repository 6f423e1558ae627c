#include "app/level_tree_actions.h"

#include "app/editing_fixture.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/static_objects.h"

namespace mw {
namespace {

class LevelTreeActionsTest : public EditingTest {
 protected:
  LevelTreeActionsTest() {
    levelTree.view.selectAll = [this](const std::vector<TreeItem>& items) {
      std::string line = "the tree selects";
      for (const TreeItem item : items) line += ' ' + NumberedText(item);
      Tell(line);
    };
  }

  void Choose(TreeItem item) {
    Do("choose " + ItemText(item), [item] { LevelTreeItemSelected(item); });
  }
  void Choose(const std::vector<TreeItem>& items) {
    std::string what = "choose together:";
    for (const TreeItem item : items) what += ' ' + NumberedText(item);
    Do(what, [&items] { LevelTreeItemsSelected(items); });
  }
  // What is selected, in which mode, with what the tools show of it, and where the camera goes.
  std::string StateAfterStep() const override {
    std::string state;
    const auto add = [&state](const std::string& name, bool selected) {
      state += name + (selected ? "* " : " ");
    };
    for (const StaticObject& object : objectStore.objects) {
      add(object.name.String(), object.selected);
    }
    for (const EntityKind kind : {EntityKind::ControlPoint, EntityKind::SoldierSpawn}) {
      for (const auto& entity : entities.Of(kind).instances) {
        add(StatusTextOf(*entity), entity->selected);
      }
    }
    state += objectStore.toolsEnabled ? "(tools)" : "";
    state += IsEditMode(EditMode::ObjectMapper) ? "(Object Mapper)\n" : "\n";
    if (camera.position == kBefore) return state;
    state += "camera at";
    for (const float part :
         {camera.position.x, camera.position.y, camera.position.z, camera.pitch, camera.yaw}) {
      state += ' ' + std::to_string(std::lround(part));
    }
    LookDownOn(512, 512);
    return state + '\n';
  }

  static constexpr Vector3 kBefore{512, 300, 512};
  const LevelTree::FixedItems& fixed = levelTree.fixed;
};

TEST_F(LevelTreeActionsTest, WhatIsChosenIsSelectedAndShownInTheObjectMapper) {
  objectStore.objects[2].selected = true;
  Choose(firstBunker);
  EXPECT_EQ(frames, 1);
  Choose(cachedBunker);  // all of the mesh
  SetEditMode(EditMode::TerrainMapper);
  DropLevelTreeItem(fixed.newControlPoint, 0, 0);
  const TreeItem point = entities.Of(EntityKind::ControlPoint).instances[0]->treeItem;
  Choose(point);
  Choose(oak);
  SetEditMode(EditMode::TerrainMapper);
  Choose({oak, fixed.fog, point});
  Choose({fixed.fog, fixed.world});  // nothing of the level
  Choose({cachedBunker, oak});
  Do("select the same in the view", [] { UpdateToolButtons(true); });
  Choose(std::vector<TreeItem>{});
}

TEST_F(LevelTreeActionsTest, WhatIsDeletedIsNamedNoMore) {
  DropLevelTreeItem(fixed.newControlPoint, 0, 0);
  const TreeItem point = entities.Of(EntityKind::ControlPoint).instances[0]->treeItem;
  Choose(oak);
  Do("delete the oak", [this] { return DeleteLevelTreeItem(oak); });  // the next one is chosen
  EXPECT_EQ(ItemText(oak), "");
  Do("delete the control point", [point] { return DeleteLevelTreeItem(point); });
  EXPECT_FALSE(levelTree.suppressObjectSelection);
  const std::size_t items = levelTree.items.size();
  for (const TreeItem item : {fixed.cachedObjects, cachedBunker, TreeItem{0}}) {
    EXPECT_FALSE(DeleteLevelTreeItem(item));
  }
  EXPECT_EQ(levelTree.items.size(), items);
  Do("delete several", [this] { DeleteLevelTreeItems({secondBunker, cachedBunker, fixed.fog}); });
  EXPECT_FALSE(objectStore.meshes.empty());
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
  Choose(oak);
  Choose({oak, firstBunker});
  levelTree.notificationsEnabled = levelTree.suppressObjectSelection = true;
  for (const TreeItem item : {oak, cachedBunker}) Choose(item);  // the mode follows all the same
}

TEST_F(LevelTreeActionsTest, FixedItemsOpenTheirDialogsAndWhatCanBePlacedCanBeDragged) {
  const std::pair<const char*, WindowFunction<void()>*> dialogs[] = {
      {"light", &shell.lightSettingsDialog}, {"shadows", &shell.shadowSettingsDialog},
      {"fog", &shell.fogSettingsDialog},     {"water", &shell.waterSettingsDialog},
      {"teams", &shell.teamSelectionDialog}, {"objects", &shell.objectBrowserDialog}};
  std::string opened;
  for (const auto& [name, dialog] : dialogs) *dialog = [&opened, text = name] { opened += text; };
  const TreeItem spawnTemplate = InsertItem(fixed.objectSpawns, "Light_Tank (CQ)");
  InsertItem(spawnTemplate, "a tank of it");
  InsertItem(fixed.soldierSpawns, "Spawn1 (CQ)");
  std::vector<TreeItem> all;
  for (const auto& [item, record] : levelTree.items) all.push_back(item);
  std::ranges::sort(all);
  for (const TreeItem item : all) {
    opened = " opens ";
    const bool isPlain = item == fixed.addTemplate || FindObjectByTreeItem(item) >= 0;
    const bool opens = !isPlain && ActivateLevelTreeItem(item);
    Tell(ItemText(item) + (opens ? opened : "") + (CanDragLevelTreeItem(item) ? " dragged" : ""));
  }
  EXPECT_FALSE(CanDragLevelTreeItem(0) || ActivateLevelTreeItem(0));
}

TEST_F(LevelTreeActionsTest, WhatIsDroppedStandsWhereItIsDropped) {
  Choose(cachedBunker);
  Do("begin to drag", BeginLevelTreeDrag);
  const Vector3 there = GroundUnderCursor(30, 20).value();
  for (const TreeItem item : {cachedBunker, fixed.newControlPoint, fixed.newSoldierSpawn,
                              fixed.addNewObject, firstBunker}) {
    editor.levelModified = false;
    Do("drop " + ItemText(item), [item] {
      DropLevelTreeItem(item, 30, 20);
      return editor.levelModified;
    });
  }
  EXPECT_EQ(objectStore.objects[3].ViewPosition(), there);
}

TEST_F(LevelTreeActionsTest, ModeFilterTakesEntitiesOfOtherModesOutOfTheTree) {
  ChooseModeFilter(2);
  EXPECT_EQ(entities.ModeFilter, kModeCaptureTheFlag);
  DropLevelTreeItem(fixed.newControlPoint, 0, 0);
  for (const auto& [choice, items] : {std::pair{2, 2u}, {1, 1u}, {0, 2u}, {-1, 2u}, {4, 2u}}) {
    ChooseModeFilter(choice);
    EXPECT_EQ(ChildrenOf(fixed.controlPoints).size(), items) << choice;
  }
  EXPECT_EQ(entities.ModeFilter, kAllModes);
  EXPECT_TRUE(levelTree.notificationsEnabled);
}

}  // namespace
}  // namespace mw
