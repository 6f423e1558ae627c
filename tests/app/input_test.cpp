#include "app/input.h"

#include <gmock/gmock.h>

#include "app/camera_control.h"
#include "app/modes.h"
#include "app/session.h"
#include "app/shell_fixture.h"
#include "terrain/terrain.h"

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
    const auto noteAt = [this](const char* name) {
      return [this, name](int x, int y) {
        calls.push_back(std::string(name) + " " + std::to_string(x) + " " + std::to_string(y));
      };
    };
    operations.pickUnderCursor = noteAt("pick");
    operations.pressBrush = note("press");
    operations.moveBrush = note("move brush");
    operations.releaseBrush = note("release");
    operations.liftBrush = note("lift");
    operations.toggleVertex = noteAt("toggle");
    operations.startSelecting = noteAt("start selecting");
    operations.selectOnTheWay = noteAt("select");
    shell.renderFrameNow = [this] {
      calls.emplace_back("frame");
      FollowCamera();
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
    operations.pickMaterialPoint = noteAt("material");
    operations.startPainting = note("paint");
    operations.stopPainting = note("no paint");
    operations.toggleSelectAtCursor = noteAt("toggle object");
    operations.paste = [this](int, int) { calls.emplace_back("paste"); };
    operations.copy = note("copy");
    operations.finishRoad = note("finish road");
    operations.clearSelection = note("clear selection");
    editor.viewWidth = 100;
    editor.viewHeight = 90;
    Show(EditMode::TerrainMapper);
  }
  // Goes to the mode and draws a frame of it.
  void Show(EditMode mode) {
    SetEditMode(mode);
    FollowCamera();
    calls.clear();
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
  EXPECT_EQ(terrain.brushSize, 9);
  Tap('4');
  EXPECT_EQ(terrain.brushSize, 4);
  RouteKey(kKeyShift, true);
  Tap('0');
  RouteKey(kKeyShift, false);
  EXPECT_FLOAT_EQ(terrain.power, 10);
  EXPECT_EQ(terrain.brushSize, 4);
}

TEST_F(InputTest, ThePendingPasteTakesTheNextPressInAnyMode) {
  Show(EditMode::ObjectMapper);
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

TEST_F(InputTest, ARubberBandBeginsAtThePressAndStaysInTheView) {
  editor.cameraMode = CameraMode::TopDown;
  Show(EditMode::TerrainMapper);
  RouteKey(kKeyCtrl, true);
  Press(90, 80);
  Drag(85, 70);
  EXPECT_TRUE(editor.rubberBandActive);
  Drag(10, 20);
  Release(-12, 22);
  EXPECT_FALSE(editor.rubberBandActive);
  Press(50, 40);
  Release(300, 300);  // quicker than the mouse's moves
  EXPECT_THAT(calls, ElementsAre("rectangle 0 22 90 80", "no paint", "release",
                                 "rectangle 50 40 99 89", "no paint", "release"));
  calls.clear();
  terrain.tool = TerrainTool::Raising;
  Press(50, 40);
  Drag(60, 40);
  EXPECT_FALSE(editor.rubberBandActive) << "only with the Point Manipulation tool";
  EXPECT_THAT(calls, ElementsAre("pick 50 40", "press", "pick 60 40", "move brush"));
}

TEST_F(InputTest, AModeChangeEndsRubberBandStrokeAndPainting) {
  StartRubberBand(1, 1);
  SetEditMode(EditMode::ObjectMapper);
  EXPECT_FALSE(editor.rubberBandActive);
  EXPECT_THAT(calls, ElementsAre("no paint", "release")) << "they would go on in the next visit";
}

TEST_F(InputTest, AStrokeEndsWhenItsReleaseGoesToAnotherWindow) {
  Show(EditMode::MaterialMapper);
  Press(5, 5);
  ForgetHeldInput();
  EXPECT_FALSE(editor.leftHeld);
  EXPECT_THAT(calls, ElementsAre("no paint", "material 5 5", "paint", "no paint", "release"));
  calls.clear();
  Press(5, 5);
  UpdateCameraFromInput();  // the button is up, and nobody told
  EXPECT_FALSE(editor.leftHeld);
  EXPECT_THAT(calls, ElementsAre("no paint", "material 5 5", "paint", "no paint", "release"));
}

TEST_F(InputTest, EveryPressOfABrushActsWhereItIs) {
  terrain.tool = TerrainTool::Flatten;
  Press(5, 5);
  Release(5, 5);
  Press(7, 7);
  Release(9, 9);  // quicker than the mouse's moves
  EXPECT_THAT(calls, ElementsAre("pick 5 5", "press", "no paint", "release", "pick 7 7", "press",
                                 "pick 9 9", "move brush", "no paint", "release"));
}

TEST_F(InputTest, APressActsOnWhatTheCameraSeesNow) {
  terrain.tool = TerrainTool::Raising;
  editor.lastMouseX = editor.lastMouseY = 3;
  camera.position.y += 10;
  Press(5, 5);
  EXPECT_THAT(calls, ElementsAre("frame", "pick 3 3", "move brush", "pick 5 5", "press"));
  calls.clear();
  camera.position.y += 10;
  FollowCamera();
  EXPECT_THAT(calls, ElementsAre("pick 5 5", "move brush")) << "the button is held";
  FollowCamera();
  EXPECT_EQ(calls.size(), 2u) << "the camera rests";
  calls.clear();
  editor.cameraMode = CameraMode::TopDown;
  FollowCamera();
  EXPECT_THAT(calls, ElementsAre("lift", "pick 5 5", "move brush")) << "no stroke leads there";
}

TEST_F(InputTest, TheModifiersAreThoseOfTheMouseEvent) {
  SetModifiers(true, false);
  Press(5, 5);
  Drag(8, 9);
  SetModifiers(false, false);
  Press(6, 6);
  EXPECT_THAT(calls, ElementsAre("start selecting 5 5", "select 8 9", "toggle 6 6"));
  SetModifiers(false, true);
  EXPECT_TRUE(session.heldInput.keys[kKeyShift]);
  EXPECT_TRUE(editor.shiftHeld);
}

TEST_F(InputTest, ShiftDragMovesPointsWithTheirToolButNotFromAbove) {
  RouteKey(kKeyShift, true);
  Press(50, 50);
  Drag(50, 40);
  EXPECT_THAT(calls, ElementsAre("move 0.500000"));
  editor.cameraMode = CameraMode::TopDown;
  Show(EditMode::TerrainMapper);
  Drag(50, 30);
  EXPECT_THAT(calls, IsEmpty());
  editor.cameraMode = CameraMode::Fly;
  terrain.tool = TerrainTool::Smoothing;
  Show(EditMode::TerrainMapper);
  Drag(50, 20);
  EXPECT_THAT(calls, ElementsAre("pick 50 20", "move brush"));
}

TEST_F(InputTest, PaintingFollowsTheLeftButton) {
  Show(EditMode::MaterialMapper);
  Press(1, 1);
  Drag(2, 2);
  RouteMouse(MouseButton::Middle, MouseEvent::Move, 3, 3);
  Release(3, 3);
  EXPECT_THAT(calls, ElementsAre("no paint", "material 1 1", "paint", "material 2 2", "paint",
                                 "no paint", "material 3 3", "no paint", "release"));
}

TEST_F(InputTest, ADoubleClickEditsWhatIsHoveredOrPressesAgain) {
  Show(EditMode::ObjectMapper);
  bool hovered = true;
  operations.editHovered = [&] { return hovered; };
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 1, 1);
  EXPECT_THAT(calls, IsEmpty());
  hovered = false;
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 1, 1);
  EXPECT_THAT(calls, ElementsAre("toggle object 1 1"));
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
  terrain.tool = TerrainTool::Road;
  Tap(kKeyCtrl);
  EXPECT_THAT(calls, ElementsAre("finish road"));
}

}  // namespace
}  // namespace mw
