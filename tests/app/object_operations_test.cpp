// The Object Mapper as mouse and keys reach it.
#include "app/object_operations.h"

#include <gmock/gmock.h>

#include "app/input.h"
#include "app/modes.h"
#include "app/shell_fixture.h"
#include "core/hooks.h"
#include "objects/entities.h"
#include "objects/object_store.h"
#include "terrain/terrain_render.h"

namespace mw {
namespace {

class ObjectInputTest : public ShellTest {
 protected:
  ObjectInputTest() {
    ConnectObjectOperations();
    auto& catalogue = objectStore.catalogue;
    catalogue.entries[0].name = "hut";
    catalogue.entryCount = 1;
    StaticObject hut;
    hut.name = "hut";
    hut.catalogueIndex = 0;
    hut.position = {100, 80, 100};
    objectStore.objects = {hut};
    SetEditMode(EditMode::ObjectMapper);
  }

  static StaticObject& Hut() { return objectStore.objects[0]; }
  static void Press(int x, int y) { RouteMouse(MouseButton::Left, MouseEvent::Press, x, y); }
  static void Release(int x, int y) { RouteMouse(MouseButton::Left, MouseEvent::Release, x, y); }
  static void DragUp(int pixels) {
    Press(50, 90);
    RouteMouse(MouseButton::Left, MouseEvent::Move, 50, 90 - pixels);
    Release(50, 90 - pixels);
  }
  // The pixel 50, 50 shows the ground there.
  static void LookDownOn(float viewX, float z) {
    editor.viewWidth = editor.viewHeight = 101;
    camera.position = {viewX, 300, z};
    camera.pitch = -90;
    camera.UpdateDirection();
    UpdateViewSquare();
  }
  static void ClickHut() {
    objectStore.lastHoveredObject = 0;
    Press(5, 5);
    Release(5, 5);
  }
  static void Tap(int key) {
    RouteKey(key, true);
    RouteKey(key, false);
  }
  static void TapWithCtrl(int key) {
    RouteKey(kKeyCtrl, true);
    Tap(key);
    RouteKey(kKeyCtrl, false);
  }
};

TEST_F(ObjectInputTest, KeysChooseTheToolAndTheMouseUsesIt) {
  ClickHut();
  EXPECT_TRUE(Hut().selected);
  Tap('C');
  DragUp(40);
  EXPECT_FLOAT_EQ(Hut().position.y, 82);
  Tap('B');
  DragUp(10);
  EXPECT_FLOAT_EQ(Hut().rotation.y, 5);
  Tap('X');
  LookDownOn(724, 400);
  DragUp(40);
  EXPECT_NEAR(Hut().position.x, 300, 0.01);
  EXPECT_NEAR(Hut().position.z, 400, 0.01);
  Tap(kKeySpace);
  EXPECT_FALSE(Hut().selected);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(ObjectInputTest, CutLeavesTheObjectAndPastePlacesACopyWhereThePressIs) {
  ClickHut();
  EXPECT_FALSE(enabled[kCommandPaste]);
  TapWithCtrl('X');
  EXPECT_EQ(objectStore.objects.size(), 1u);
  EXPECT_TRUE(enabled[kCommandPaste]);
  TapWithCtrl('V');
  EXPECT_FALSE(enabled[kCommandCut]);
  objectStore.CursorPoint = {24.9f, 10, 50};
  Press(7, 7);
  Release(7, 7);
  ASSERT_EQ(objectStore.objects.size(), 2u);
  EXPECT_EQ(objectStore.objects[1].position, (Vector3{1000, 10, 50}));
  EXPECT_TRUE(enabled[kCommandPaste]);
}

TEST_F(ObjectInputTest, APendingPasteCanBeGivenUp) {
  ClickHut();
  TapWithCtrl('C');
  const std::vector<std::function<void()>> ways{
      [] { Tap(kKeyEscape); }, [] { Tap(kKeySpace); },
      [] { RouteMouse(MouseButton::Right, MouseEvent::Press, 5, 5); }};
  for (const auto& giveUp : ways) {
    TapWithCtrl('V');
    EXPECT_TRUE(editor.pastePending);
    giveUp();
    EXPECT_FALSE(editor.pastePending);
    EXPECT_TRUE(enabled[kCommandPaste] && enabled[kCommandCut]);
    EXPECT_TRUE(Hut().selected) << "Space gave up the paste, not the selection";
    ClickHut();
    EXPECT_EQ(objectStore.objects.size(), 1u);
  }
}

TEST_F(ObjectInputTest, DeleteWorksInTheObjectMapperOnly) {
  ClickHut();
  SetEditMode(EditMode::TerrainMapper);
  Tap(kKeyDelete);
  EXPECT_EQ(objectStore.objects.size(), 1u);
  SetEditMode(EditMode::ObjectMapper);
  Tap(kKeyDelete);
  EXPECT_TRUE(objectStore.objects.empty());
}

TEST_F(ObjectInputTest, ADoubleClickEditsASelectedObjectAndIsAPressElsewhere) {
  int sheets = 0;
  hooks.runPropertySheet = [&sheets](PropertySheet&) { return ++sheets > 0; };
  ClickHut();
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 5, 5);
  EXPECT_EQ(sheets, 1);
  objectStore.lastHoveredObject = -1;
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 5, 5);
  EXPECT_EQ(sheets, 1);
  EXPECT_FALSE(Hut().selected) << "a press on empty ground deselects";
}

}  // namespace
}  // namespace mw
