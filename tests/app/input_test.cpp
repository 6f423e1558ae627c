#include "app/input.h"

#include <gmock/gmock.h>

#include "app/modes.h"
#include "app/shell_fixture.h"

namespace mw {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class InputTest : public ShellTest {
 protected:
  InputTest() {
    const auto note = [this](const char* name) {
      return [this, name] { calls.emplace_back(name); };
    };
    operations.pickUnderCursor = [this](int, int, bool mark) {
      calls.emplace_back(mark ? "pick and mark" : "pick");
    };
    operations.terrainToolbarCommand = [this](CommandId id) {
      calls.push_back("terrain " + std::to_string(id));
    };
    operations.objectToolbarCommand = [this](CommandId id) {
      calls.push_back("object " + std::to_string(id));
    };
    operations.selectRectangle = [this](int x0, int y0, int x1, int y1) {
      calls.push_back("rectangle " + std::to_string(x0) + " " + std::to_string(y0) + " " +
                      std::to_string(x1) + " " + std::to_string(y1));
    };
    operations.moveSelection = [this](float delta) {
      calls.push_back("move " + std::to_string(delta));
    };
    operations.setPainting = [this](bool on) { calls.emplace_back(on ? "paint" : "no paint"); };
    operations.toggleSelectAtCursor = [this](int, int) { calls.emplace_back("toggle"); };
    operations.paste = [this](int, int) { calls.emplace_back("paste"); };
    operations.copy = note("copy");
    operations.finishRoad = note("finish road");
    operations.clearSelection = note("clear selection");
  }
  void Press(int x, int y) { RouteMouse(MouseButton::Left, MouseEvent::Press, x, y); }
  void Drag(int x, int y) { RouteMouse(MouseButton::Left, MouseEvent::Move, x, y); }
  void Release(int x, int y) { RouteMouse(MouseButton::Left, MouseEvent::Release, x, y); }
  void Tap(int key) {
    RouteKey(key, true);
    RouteKey(key, false);
  }
};

TEST_F(InputTest, NothingHappensBeforeTheViewIsReadyOrWhileAnotherWindowIsActive) {
  editor.viewReady = false;
  Press(1, 1);
  Tap('Z');
  editor.viewReady = true;
  shell.mainWindowActive = [] { return false; };
  Press(1, 1);
  EXPECT_THAT(calls, IsEmpty());
  EXPECT_FALSE(editor.leftHeld);
}

TEST_F(InputTest, TheSameKeyIsAnotherToolInEachMode) {
  for (const EditMode mode :
       {EditMode::TerrainMapper, EditMode::ObjectMapper, EditMode::MaterialMapper}) {
    editor.editMode = mode;
    Tap('C');
  }
  EXPECT_THAT(calls, ElementsAre("terrain 2003", "object 4010"));
}

TEST_F(InputTest, WithCtrlALetterIsACommandInEveryModeAndNeverATool) {
  editor.cameraMode = CameraMode::TopDown;
  for (const EditMode mode :
       {EditMode::TerrainMapper, EditMode::ObjectMapper, EditMode::MaterialMapper}) {
    editor.editMode = mode;
    RouteKey(kKeyCtrl, true);
    for (const char letter : {'C', 'Z', 'Y', 'B', 'M', 'O'}) Tap(letter);
    RouteKey(kKeyCtrl, false);
  }
  EXPECT_THAT(calls, ElementsAre("copy", "copy", "copy"));
  EXPECT_EQ(editor.cameraMode, CameraMode::TopDown);
}

TEST_F(InputTest, DigitsSetTheBrushAndWithShiftThePower) {
  SetEditMode(EditMode::TerrainMapper);
  Tap('0');
  EXPECT_EQ(terrain->brushSize, 9);
  Tap('4');
  EXPECT_EQ(terrain->brushSize, 4);
  RouteKey(kKeyShift, true);
  Tap('0');
  RouteKey(kKeyShift, false);
  EXPECT_FLOAT_EQ(terrain->power, 10);
  EXPECT_EQ(terrain->brushSize, 4);
}

TEST_F(InputTest, ThePendingPasteTakesTheNextPressInAnyMode) {
  SetEditMode(EditMode::ObjectMapper);
  editor.somethingCopied = true;
  RouteKey(kKeyCtrl, true);
  Tap('V');
  RouteKey(kKeyCtrl, false);
  EXPECT_TRUE(editor.pastePending);
  EXPECT_FALSE(enabled[kCommandCopy]);
  EXPECT_FALSE(enabled[kCommandPaste]);
  Press(5, 5);
  EXPECT_THAT(calls, ElementsAre("paste")) << "nothing is selected by that press";
  EXPECT_FALSE(editor.pastePending);
  EXPECT_TRUE(enabled[kCommandCopy]);
  EXPECT_TRUE(enabled[kCommandPaste]);
}

TEST_F(InputTest, ARubberBandIsTheSameInBothDirections) {
  SetEditMode(EditMode::TerrainMapper);
  editor.cameraMode = CameraMode::TopDown;
  RouteKey(kKeyCtrl, true);
  Press(90, 80);
  Drag(90, 80);
  EXPECT_TRUE(editor.rubberBandActive);
  Drag(10, 20);
  Release(12, 22);
  EXPECT_FALSE(editor.rubberBandActive);
  EXPECT_THAT(calls, ElementsAre("rectangle 12 22 90 80"));
}

TEST_F(InputTest, AModeChangeEndsTheRubberBand) {
  SetEditMode(EditMode::TerrainMapper);
  StartRubberBand(1, 1);
  SetEditMode(EditMode::ObjectMapper);
  EXPECT_FALSE(editor.rubberBandActive);
}

TEST_F(InputTest, AModeChangeEndsPainting) {
  SetEditMode(EditMode::MaterialMapper);
  Press(5, 5);
  SetEditMode(EditMode::TerrainMapper);
  Release(5, 5);
  EXPECT_THAT(calls, ElementsAre("paint", "no paint")) << "it would go on in the next visit";
}

TEST_F(InputTest, AModeChangeEndsFlattening) {
  SetEditMode(EditMode::TerrainMapper);
  terrain->tool = TerrainTool::Flatten;
  Press(5, 5);
  EXPECT_EQ(terrain->flattenActive, 1);
  SetEditMode(EditMode::ObjectMapper);
  Release(5, 5);
  EXPECT_EQ(terrain->flattenActive, 0) << "the next visit would begin with a stroke";
}

TEST_F(InputTest, AStrokeEndsWhenItsReleaseGoesToAnotherWindow) {
  SetEditMode(EditMode::MaterialMapper);
  Press(5, 5);
  ForgetHeldInput();
  EXPECT_FALSE(editor.leftHeld);
  SetEditMode(EditMode::TerrainMapper);
  terrain->tool = TerrainTool::Flatten;
  Press(5, 5);
  calls.emplace_back("other window");
  ForgetHeldInput();
  EXPECT_EQ(terrain->flattenActive, 0);
  EXPECT_THAT(calls, ElementsAre("paint", "no paint", "no paint", "other window"));
}

TEST_F(InputTest, ShiftDragMovesTheSelectionButNotFromAbove) {
  SetEditMode(EditMode::TerrainMapper);
  RouteKey(kKeyShift, true);
  Press(50, 50);
  Drag(50, 40);
  EXPECT_THAT(calls, ElementsAre("move 0.500000"));
  editor.cameraMode = CameraMode::TopDown;
  Drag(50, 30);
  EXPECT_EQ(calls.size(), 1u);
}

TEST_F(InputTest, FlattenIsActiveWhileTheButtonIsDown) {
  SetEditMode(EditMode::TerrainMapper);
  terrain->tool = TerrainTool::Flatten;
  Press(1, 1);
  EXPECT_EQ(terrain->flattenActive, 1);
  Drag(2, 2);
  EXPECT_EQ(terrain->flattenActive, 0) << "a move clears it, the brush sets it again";
  Press(1, 1);
  Release(1, 1);
  EXPECT_EQ(terrain->flattenActive, 0);
}

TEST_F(InputTest, PaintingFollowsTheLeftButton) {
  SetEditMode(EditMode::MaterialMapper);
  Press(1, 1);
  Drag(2, 2);
  RouteMouse(MouseButton::Middle, MouseEvent::Move, 3, 3);
  Release(3, 3);
  EXPECT_THAT(calls, ElementsAre("paint", "no paint", "paint", "no paint", "no paint"));
}

TEST_F(InputTest, ADoubleClickEditsWhatIsHoveredOrPressesAgain) {
  SetEditMode(EditMode::ObjectMapper);
  bool hovered = true;
  operations.editHovered = [&] { return hovered; };
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 1, 1);
  EXPECT_THAT(calls, IsEmpty());
  hovered = false;
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 1, 1);
  EXPECT_THAT(calls, ElementsAre("toggle"));
}

TEST_F(InputTest, KeysOnReleaseChangeWaterAndOverlay) {
  const struct {
    float before, raised, lowered;
  } levels[] = {{254.5f, 255, 253.5f}, {0.5f, 1.5f, 0}, {300, 300, 299}, {-5, -4, -5}};
  for (const auto& [before, raised, lowered] : levels) {
    modConfig.WaterLevel = before;
    Tap(kKeyPageUp);
    EXPECT_FLOAT_EQ(modConfig.WaterLevel, raised) << before;
    modConfig.WaterLevel = before;
    Tap(kKeyPageDown);
    EXPECT_FLOAT_EQ(modConfig.WaterLevel, lowered) << before;
  }
  EXPECT_TRUE(editor.levelModified);
  Tap(kKeyTab);
  EXPECT_TRUE(editor.drawObjectsInMappers);
}

TEST_F(InputTest, CtrlReleaseFinishesARoadOnlyWithTheRoadTool) {
  SetEditMode(EditMode::TerrainMapper);
  Tap(kKeyCtrl);
  terrain->tool = TerrainTool::Road;
  Tap(kKeyCtrl);
  EXPECT_THAT(calls, ElementsAre("finish road"));
}

}  // namespace
}  // namespace mw
