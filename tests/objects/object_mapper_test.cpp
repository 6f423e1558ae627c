#include "objects/object_mapper.h"

#include <gmock/gmock.h>

#include "objects/object_clipboard.h"
#include "objects/object_level_test.h"

namespace mw {
namespace {

using ::testing::SizeIs;

class ObjectMapperTest : public ObjectLevelTest {
 protected:
  ObjectMapperTest() {
    levelTree.view.select = [this](TreeItem item) {
      EXPECT_FALSE(levelTree.notificationsEnabled) << "the tree must not act on it";
      treeSelection = item;
    };
  }
  static void HoverObject(int index) {
    objectStore.lastHoveredObject = index;
    entities.hovered = {};
  }
  static void HoverEntity(int index) {
    objectStore.lastHoveredObject = -1;
    entities.hovered = {EntityKind::ObjectSpawn, index};
  }
  static void HoverNothing() { HoverObject(-1); }
  static void Click() { ToggleSelectAtCursor(0, 0); }
  static void ClickObject(int index) {
    HoverObject(index);
    Click();
  }
  static void Choose(ObjectControl tool) {
    PressObjectControl(tool);
    ASSERT_NE(objectStore.tool, ObjectTool::Select);
  }
  static void DragTo50() { DragObjects(50, 50, 0, 0); }
  static void DragUp(int pixels) { DragObjects(50, 80 - pixels, 50, 80); }

  TreeItem treeSelection = 0;
};

TEST_F(ObjectMapperTest, AClickSelectsOneThingAndCtrlAddsToIt) {
  StaticObject& hut = AddObject("hut", {100, 0, 100});
  StaticObject& oak = AddObject("oak", {200, 0, 100});
  ObjectSpawn& spawn = AddObjectSpawn({300, 0, 100});
  ClickObject(0);
  EXPECT_TRUE(hut.selected);
  EXPECT_EQ(treeSelection, hut.treeItem);
  ClickObject(1);
  EXPECT_FALSE(hut.selected);
  editor.ctrlHeld = true;
  HoverEntity(0);
  Click();
  EXPECT_TRUE(oak.selected && spawn.selected);
  EXPECT_EQ(treeSelection, spawn.treeItem);
  Click();
  EXPECT_FALSE(spawn.selected);
  EXPECT_TRUE(objectStore.toolsEnabled) << "the oak is still selected";
  editor.ctrlHeld = false;
  HoverNothing();
  Click();
  EXPECT_FALSE(oak.selected);
  EXPECT_FALSE(objectStore.toolsEnabled);
}

TEST_F(ObjectMapperTest, OnlyToolsThatAreEnabledCanBeChosen) {
  AddObject("hut", {100, 0, 100});
  PressObjectControl(ObjectControl::RotateY);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select) << "nothing is selected";
  ClickObject(0);
  PressObjectControl(ObjectControl::RotateY);
  EXPECT_EQ(objectStore.tool, ObjectTool::RotateY);
  PressObjectControl(ObjectControl::ScaleWidth);
  PressObjectControl(ObjectControl::ScaleHeight);
  EXPECT_EQ(objectStore.tool, ObjectTool::RotateY);
  ClickObject(0);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select) << "the selection changed";
}

TEST_F(ObjectMapperTest, WhatIsHiddenIsNotSelected) {
  StaticObject& hut = AddObject("hut", {100, 0, 100});
  StaticObject& oak = AddObject("oak", {200, 0, 100});
  ObjectSpawn& spawn = AddObjectSpawn({300, 0, 100});
  hut.selected = oak.selected = spawn.selected = true;
  UpdateToolButtons(true);
  Choose(ObjectControl::RotateX);
  PressObjectControl(ObjectControl::ShowControlPoints);
  EXPECT_EQ(objectStore.tool, ObjectTool::RotateX) << "nothing selected was hidden";
  PressObjectControl(ObjectControl::ShowTreeMeshes);
  EXPECT_FALSE(oak.selected);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select);
  PressObjectControl(ObjectControl::ShowObjectSpawns);
  EXPECT_FALSE(spawn.selected);
  EXPECT_TRUE(hut.selected && objectStore.toolsEnabled);
  PressObjectControl(ObjectControl::ShowStandardMeshes);
  EXPECT_FALSE(hut.selected || objectStore.toolsEnabled);
}

TEST_F(ObjectMapperTest, ADraggedGroupFollowsTheCursorOverTheGround) {
  StaticObject& hut = AddObject("hut", {100, 0, 100});
  ObjectSpawn& spawn = AddObjectSpawn({140, 5, 160});
  hut.selected = spawn.selected = true;
  ComputePivot();
  EXPECT_EQ(objectStore.SelectionPivot.x, kSide - 120);
  EXPECT_EQ(objectStore.SelectionPivot.z, 130);
  UpdateToolButtons(true);
  Choose(ObjectControl::Translate);
  LookDownOn(500, 600);
  DragTo50();
  EXPECT_NEAR(hut.position.x, 480, 1e-3);
  EXPECT_NEAR(hut.position.z, 570, 1e-3);
  EXPECT_FLOAT_EQ(hut.position.y, kGround);
  EXPECT_NEAR(spawn.position.x, 520, 1e-3);
  EXPECT_NEAR(spawn.position.z, 630, 1e-3);
  EXPECT_TRUE(editor.levelModified);

  PressObjectControl(ObjectControl::SnapToGround);
  hut.position.y = 300;
  LookDownOn(400, 600);
  DragTo50();
  EXPECT_NEAR(hut.position.x, 380, 1e-3);
  EXPECT_EQ(hut.position.y, 300) << "without snapping the height stays";

  camera.pitch = 30;
  camera.UpdateDirection();
  DragTo50();
  EXPECT_NEAR(hut.position.x, 380, 1e-3) << "there is no ground in the sky";
}

TEST_F(ObjectMapperTest, RaisingStopsAtTheGroundWhileItSnaps) {
  StaticObject& hut = AddObject("hut", {100, 100, 100});
  StaticObject& oak = AddObject("oak", {100, 100, 100});
  ClickObject(0);
  Choose(ObjectControl::RaiseLower);
  DragUp(20);
  EXPECT_FLOAT_EQ(hut.position.y, 101);
  DragUp(-2000);
  EXPECT_FLOAT_EQ(hut.position.y, kGround);
  PressObjectControl(ObjectControl::SnapToGround);
  DragUp(-100);
  EXPECT_FLOAT_EQ(hut.position.y, kGround - 5);
  EXPECT_EQ(oak.position.y, 100);
}

TEST_F(ObjectMapperTest, TenPixelsUpTurnByFiveDegrees) {
  StaticObject& hut = AddObject("hut", {});
  ObjectSpawn& spawn = AddObjectSpawn({});
  hut.selected = spawn.selected = true;
  UpdateToolButtons(true);
  Choose(ObjectControl::RotateX);
  DragUp(10);
  Choose(ObjectControl::RotateY);
  DragUp(-4);
  Choose(ObjectControl::RotateZ);
  DragUp(1);
  EXPECT_EQ(hut.rotation, (Vector3{5, -2, 0.5f}));
  EXPECT_EQ(spawn.rotation, (Vector3{5, -2, 0.5f}));
  EXPECT_TRUE(editor.levelModified);
  auto& texts = scripted::script.status[3];
  EXPECT_EQ(texts.back(), "The first of 2: Position 0.00 / 0.00 / 0.00  Angle 5.0 / -2.0 / 0.5");
  ReleaseObjects();
  EXPECT_EQ(texts.back(), "");
}

TEST_F(ObjectMapperTest, TheTranslateToolSelectsWhatItIsPressedOnAndMovesItAtOnce) {
  StaticObject& hut = AddObject("hut", {100, 0, 100});
  StaticObject& oak = AddObject("oak", {200, 0, 100});
  ClickObject(0);
  Choose(ObjectControl::Translate);
  HoverObject(1);
  PressTranslate(0, 0);
  EXPECT_TRUE(oak.selected);
  EXPECT_FALSE(hut.selected);
  LookDownOn(250, 100);
  DragObjects(2, 1, 0, 0);
  EXPECT_EQ(oak.position.x, 200) << "a click with a hand that is not quite still";
  DragTo50();
  EXPECT_NEAR(oak.position.x, 250, 1e-3);
  EXPECT_EQ(hut.position.x, 100);
  ReleaseObjects();
  EXPECT_EQ(objectStore.tool, ObjectTool::Select) << "the selection changed";
  EXPECT_TRUE(objectStore.toolsEnabled);
}

TEST_F(ObjectMapperTest, APressOnTheSelectionOrOnGroundKeepsTheTranslateTool) {
  StaticObject& hut = AddObject("hut", {100, 0, 100});
  ClickObject(0);
  Choose(ObjectControl::Translate);
  PressTranslate(0, 0);
  EXPECT_EQ(hut.position.x, 100);
  HoverNothing();
  LookDownOn(700, 800);
  PressTranslate(50, 50);
  EXPECT_NEAR(hut.position.x, 700, 1e-3) << "the selection jumps to the ground pressed on";
  ReleaseObjects();
  EXPECT_EQ(objectStore.tool, ObjectTool::Translate);
}

TEST_F(ObjectMapperTest, AHoveredIndexThatIsNoMoreIsNothing) {
  AddObject("hut", {});
  ClickObject(0);
  DeleteSelected();
  for (const int index : {0, 1, 5000}) {
    ClickObject(index);
    HoverEntity(index);
    Click();
    PressTranslate(0, 0);
    EXPECT_FALSE(EditHovered());
  }
  EXPECT_FALSE(objectStore.toolsEnabled);
}

TEST_F(ObjectMapperTest, DeletingTakesObjectsAndEntitiesWithTheirItems) {
  AddObject("hut", {}).selected = true;
  AddObject("oak", {});
  AddObjectSpawn({1, 0, 0}).selected = true;
  AddObjectSpawn({2, 0, 0});
  AddObjectSpawn({3, 0, 0}).selected = true;
  levelTree.view.remove = [](TreeItem) { EXPECT_TRUE(levelTree.suppressObjectSelection); };
  DeleteSelected();
  levelTree.view.remove = [](TreeItem) {};
  ASSERT_EQ(objectStore.objects.size(), 1u);
  EXPECT_EQ(objectStore.objects[0].name, "oak");
  const auto& spawns = entities.Of(EntityKind::ObjectSpawn).instances;
  ASSERT_EQ(spawns.size(), 1u);
  EXPECT_EQ(spawns[0]->position.x, 2);
  EXPECT_THAT(ChildrenOf(levelTree.fixed.standardMeshes), SizeIs(1));
  EXPECT_FALSE(levelTree.suppressObjectSelection || objectStore.toolsEnabled);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(ObjectMapperTest, PastedCopiesKeepTheirArrangementAtWholeUnits) {
  StaticObject& hut = AddObject("hut", {100.25f, 0, 100});
  hut.rotation = {90, 1, 2};
  hut.scale = hut.colour = {1, 2, 3};
  hut.scaleGiven = hut.colorGiven = true;
  StaticObject& oak = AddObject("oak", {110.75f, 0, 104.5f});
  hut.selected = oak.selected = true;
  CopySelected();
  EXPECT_TRUE(editor.somethingCopied);
  hut.scale = hut.rotation = {};
  hut.selected = false;
  ComputePivot();
  DeleteSelected();
  objectStore.CursorPoint = {3, 20, 500};  // the centre; the hut lies 5.25 to the right in the view
  PasteCopied(0, 0);

  ASSERT_EQ(objectStore.objects.size(), 3u);
  const StaticObject& newHut = objectStore.objects[1];
  EXPECT_EQ(newHut.position, (Vector3{kSide - 8, 20, 497}));
  EXPECT_EQ(newHut.rotation, (Vector3{90, 1, 2}));
  EXPECT_EQ(newHut.scale, (Vector3{1, 2, 3}));
  EXPECT_EQ(newHut.colour, (Vector3{1, 2, 3}));
  EXPECT_TRUE(newHut.scaleGiven && newHut.colorGiven) << "or it would not be saved";
  EXPECT_EQ(objectStore.objects[2].position, (Vector3{kSide + 2, 20, 502}))
      << "-2.25 becomes -2, toward zero";
  EXPECT_FALSE(newHut.selected);
  EXPECT_EQ(objectStore.CursorPoint, (Vector3{3, 20, 500}));
}

TEST_F(ObjectMapperTest, APastedObjectSpawnIsOneMoreOfItsTemplate) {
  ObjectSpawn& a = AddObjectSpawn({100, 0, 100});
  ObjectSpawn& b = AddObjectSpawn({104, 0, 100.5f});
  a.selected = b.selected = true;
  CopySelected();
  PutCursorOver(300, 20, 300);
  PasteCopied(0, 0);
  const EntityTables& table = entities.Of(EntityKind::ObjectSpawn);
  ASSERT_EQ(table.instances.size(), 4u);
  EXPECT_EQ(table.templates.size(), 1u);
  EXPECT_EQ(table.instances[2]->position, (Vector3{298, 20, 299.75f}));
  EXPECT_EQ(table.instances[3]->position, (Vector3{302, 20, 300.25f}));
}

TEST_F(ObjectMapperTest, APasteIntoAFullTableSaysSoOnce) {
  for (int i = 0; i < 2046; ++i) AddObject("hut", {}).selected = i < 5;
  CopySelected();
  scripted::script.answers = {PromptAnswer::Ok};
  PasteCopied(0, 0);
  EXPECT_EQ(objectStore.objects.size(), 2048u);
  EXPECT_EQ(scripted::script.prompts.size(), 1u);
}

TEST_F(ObjectMapperTest, CopyingNothingLeavesNothingToPaste) {
  AddObject("hut", {}).selected = true;
  CopySelected();
  DeselectAll();
  CopySelected();
  PasteCopied(0, 0);
  EXPECT_FALSE(editor.somethingCopied);
  EXPECT_EQ(objectStore.objects.size(), 1u);
}

}  // namespace
}  // namespace mw
