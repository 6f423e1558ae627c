// The Object Mapper under mouse and keys.
#include <functional>
#include <gtest/gtest.h>

#include "app/editing_fixture.h"

namespace mw {
namespace {

// A bunker stands in the middle of the view.
class ObjectInputTest : public EditingTest {
 protected:
  void SetUp() override {
    EditingTest::SetUp();
    if (IsSkipped()) return;
    Show(EditMode::ObjectMapper);
    PutUnder(Bunker(), 50, 50);
  }
  static StaticObject& Bunker() { return objectStore.objects[0]; }
  static void DoubleClick(int x, int y) {
    RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, x, y);
  }
};

TEST_F(ObjectInputTest, KeysChooseTheToolAndTheMouseUsesIt) {
  Click(50, 50);
  EXPECT_EQ(Selected(), (Flags{true, false, false}));
  const auto dragUp = [](int pixels) {
    Press(50, 50);
    Drag(50, 50 - pixels);
    Release(50, 50 - pixels);
  };
  const float ground = Bunker().position.y;
  Tap('C');
  dragUp(40);
  EXPECT_FLOAT_EQ(Bunker().position.y, ground + 2);
  Tap('B');
  dragUp(10);
  EXPECT_FLOAT_EQ(Bunker().rotation.y, 5);
  Tap('X');
  const Vector3 target = GroundUnderCursor(50, 10).value();
  dragUp(40);
  EXPECT_NEAR(Bunker().position.x, 1024 - target.x, 0.01);
  EXPECT_NEAR(Bunker().position.z, target.z, 0.01);
  Hover(80, 80);
  EXPECT_NEAR(Bunker().position.z, target.z, 0.01) << "the button is up";
  Tap(kKeySpace);
  EXPECT_FALSE(Bunker().selected);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(ObjectInputTest, CutLeavesTheObjectAndThePressPlacesACopyThere) {
  Click(50, 50);
  EXPECT_FALSE(enabled[kCommandPaste]);
  TapWith(kKeyCtrl, 'X');
  EXPECT_EQ(objectStore.objects.size(), 3u);
  EXPECT_TRUE(enabled[kCommandPaste]);
  TapWith(kKeyCtrl, 'V');
  EXPECT_FALSE(enabled[kCommandCut] || enabled[kCommandPaste]);
  const Vector3 there = GroundUnderCursor(80, 20).value();
  Click(80, 20);
  ASSERT_EQ(objectStore.objects.size(), 4u);
  EXPECT_NEAR(objectStore.objects[3].position.x, 1024 - there.x, 1);
  EXPECT_NEAR(objectStore.objects[3].position.z, there.z, 1);
  EXPECT_TRUE(enabled[kCommandCut] && enabled[kCommandPaste]);
  Click(20, 20);
  EXPECT_EQ(objectStore.objects.size(), 4u) << "once";
}

TEST_F(ObjectInputTest, APendingPasteCanBeGivenUp) {
  Click(50, 50);
  TapWith(kKeyCtrl, 'C');
  const std::function<void()> ways[] = {
      [] { Tap(kKeyEscape); }, [] { Tap(kKeySpace); },
      [] { RouteMouse(MouseButton::Right, MouseEvent::Press, 5, 5); }};
  for (const auto& giveUp : ways) {
    TapWith(kKeyCtrl, 'V');
    EXPECT_TRUE(editor.pastePending);
    giveUp();
    EXPECT_FALSE(editor.pastePending);
    EXPECT_TRUE(enabled[kCommandPaste] && enabled[kCommandCut]);
    EXPECT_TRUE(Bunker().selected) << "Space gave up the paste, not the selection";
    Click(20, 20);
    EXPECT_EQ(objectStore.objects.size(), 3u);
    Bunker().selected = true;
  }
}

TEST_F(ObjectInputTest, DeleteWorksInTheObjectMapperOnly) {
  Click(50, 50);
  SetEditMode(EditMode::TerrainMapper);
  Tap(kKeyDelete);
  EXPECT_EQ(objectStore.objects.size(), 3u);
  Show(EditMode::ObjectMapper);
  Tap(kKeyDelete);
  EXPECT_EQ(objectStore.objects.size(), 2u);
}

TEST_F(ObjectInputTest, ADoubleClickEditsASelectedObjectAndIsAPressElsewhere) {
  int sheets = 0;
  hooks.runPropertySheet = [&sheets](PropertySheet&) { return ++sheets > 0; };
  Click(50, 50);
  DoubleClick(50, 50);
  EXPECT_EQ(sheets, 1);
  objectStore.lastHoveredObject = -1;  // as the next frame finds
  DoubleClick(20, 20);
  EXPECT_EQ(sheets, 1);
  EXPECT_FALSE(Bunker().selected) << "a press on empty ground deselects";
}

}  // namespace
}  // namespace mw
