// Mouse and keys in the three mappers, by what the level holds then.
#include "app/input.h"

#include <chrono>
#include <functional>
#include <gmock/gmock.h>
#include <thread>

#include "app/camera_control.h"
#include "app/editing_fixture.h"
#include "app/session.h"

namespace mw {
namespace {

constexpr EditMode kModes[] = {EditMode::TerrainMapper, EditMode::ObjectMapper,
                               EditMode::MaterialMapper};

class InputTest : public EditingTest {
 protected:
  // A frame with the left button held, some time after the last event.
  static void HoldForAFrame() {
    std::this_thread::sleep_for(std::chrono::milliseconds(25));
    UpdateCameraFromInput();
    FollowCamera();
  }
  static bool IsRaised(int x, int y) { return VertexUnder(x, y).h > kFlatHeight; }
};

TEST_F(InputTest, NothingHappensWithoutAReadyViewAnOpenLevelAndAnActiveWindow) {
  Choose(TerrainTool::Raising);
  for (bool* const flag : {&editor.viewReady, &editor.levelLoaded}) {
    *flag = false;
    Click(50, 50);
    Tap('Z');
    *flag = true;
  }
  shell.mainWindowActive = [] { return false; };
  Click(50, 50);
  EXPECT_FALSE(IsRaised(50, 50) || editor.levelModified || editor.leftHeld);
  EXPECT_EQ(terrain.tool, TerrainTool::Raising);
}

TEST_F(InputTest, TheSameKeyIsAnotherToolInEachModeAndNoneWithCtrl) {
  const struct {
    char key;
    TerrainTool tool;
    ObjectTool objectTool;
  } rows[] = {{'Z', TerrainTool::Carving, ObjectTool::Select},
              {'X', TerrainTool::Raising, ObjectTool::Translate},
              {'C', TerrainTool::Smoothing, ObjectTool::RaiseLower},
              {'V', TerrainTool::Flatten, ObjectTool::RotateX},
              {'B', TerrainTool::Road, ObjectTool::RotateY},
              {'N', TerrainTool::PointManipulation, ObjectTool::RotateZ}};
  objectStore.toolsEnabled = objectStore.objects[1].selected = true;
  for (const auto& [key, tool, objectTool] : rows) {
    for (const EditMode mode : kModes) {
      editor.editMode = mode;
      shownToolbar = {};
      Tap(key);
      EXPECT_EQ(shownToolbar == mode, mode == EditMode::TerrainMapper) << "with the new tool";
    }
    EXPECT_EQ(terrain.tool, tool) << key;
    EXPECT_EQ(objectStore.tool, objectTool) << key;
  }
  editor.cameraMode = CameraMode::TopDown;
  for (const EditMode mode : kModes) {
    editor.editMode = mode;
    editor.somethingCopied = false;
    for (const char letter : {'Z', 'Y', 'B', 'M', 'O', 'C'}) TapWith(kKeyCtrl, letter);
    EXPECT_TRUE(editor.somethingCopied) << "it is a command in every mode";
  }
  EXPECT_EQ(editor.cameraMode, CameraMode::TopDown);
  EXPECT_EQ(terrain.tool, TerrainTool::PointManipulation);
  EXPECT_EQ(objectStore.tool, ObjectTool::RotateZ);
  EXPECT_TRUE(terrain.autoSmoothing && objectStore.snapToGround);
}

TEST_F(InputTest, DigitsSetTheBrushAndWithShiftThePower) {
  Show(EditMode::TerrainMapper);
  Tap('0');
  EXPECT_EQ(terrain.brushSize, 9);
  Tap('4');
  shownToolbar = {};
  TapWith(kKeyShift, '0');
  EXPECT_FLOAT_EQ(terrain.power, 10);
  EXPECT_EQ(shownToolbar, EditMode::TerrainMapper);
  Show(EditMode::MaterialMapper);
  Tap('7');
  EXPECT_EQ(materialMapper->brushSize, 7u);
  EXPECT_EQ(terrain.brushSize, 4);
}

TEST_F(InputTest, ARubberBandBeginsAtThePressAndStaysInTheView) {
  editor.cameraMode = CameraMode::TopDown;
  Choose(TerrainTool::PointManipulation);
  RouteKey(kKeyCtrl, true);
  Press(80, 80);
  Drag(30, 40);
  EXPECT_TRUE(editor.rubberBandActive);
  Release(-12, 42);
  EXPECT_FALSE(editor.rubberBandActive);
  EXPECT_TRUE(VertexUnder(2, 45).selected && VertexUnder(77, 77).selected);
  EXPECT_FALSE(VertexUnder(84, 60).selected || VertexUnder(40, 37).selected);
  Press(50, 40);
  Release(300, 300);  // quicker than the mouse's moves
  EXPECT_TRUE(VertexUnder(98, 98).selected && VertexUnder(40, 70).selected);
  EXPECT_FALSE(VertexUnder(60, 60).selected) << "toggled back";
  terrain.tool = TerrainTool::Raising;
  Press(50, 40);
  Drag(60, 40);
  EXPECT_FALSE(editor.rubberBandActive) << "only with the Point Manipulation tool";
}

TEST_F(InputTest, AHeldBrushGoesOnByItselfUntilItIsReleasedAnywhere) {
  const std::pair<const char*, void (*)()> releases[] = {
      {"released", [] { Release(50, 50); }},
      {"another window has it", ForgetHeldInput},
      {"another mode", [] { SetEditMode(EditMode::ObjectMapper); }},
      {"nobody told", [] { session.heldInput.leftButton = false; }}};
  for (const auto& [how, release] : releases) {
    Choose(TerrainTool::Raising);
    const float before = VertexUnder(50, 50).h;
    session.heldInput.leftButton = true;
    Press(50, 50);
    const float pressed = VertexUnder(50, 50).h;
    EXPECT_FLOAT_EQ(pressed, before + 0.01f * terrain.power) << how;
    HoldForAFrame();
    EXPECT_GT(VertexUnder(50, 50).h, pressed) << how;
    release();
    UpdateCameraFromInput();
    const float released = VertexUnder(50, 50).h;
    Show(EditMode::TerrainMapper);
    HoldForAFrame();
    EXPECT_EQ(VertexUnder(50, 50).h, released) << how;
    ForgetHeldInput();
  }
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(InputTest, ABrushActsAlongItsWayAndGoesWithTheCameraUntilItJumps) {
  Choose(TerrainTool::Raising);
  Click(20, 20);
  Press(80, 20);
  Release(80, 80);  // quicker than the mouse's moves
  Hover(50, 80);
  EXPECT_TRUE(IsRaised(20, 20) && IsRaised(80, 20) && IsRaised(80, 50) && IsRaised(80, 80));
  EXPECT_FALSE(IsRaised(50, 20) || IsRaised(50, 50) || IsRaised(60, 80));
  session.heldInput.leftButton = true;
  LookDownOn(300, 300);
  Press(50, 50);
  EXPECT_EQ(frames, 1) << "one of the new sight comes before";
  EXPECT_TRUE(IsRaised(50, 50));
  LookDownOn(340, 300);
  FollowCamera();
  HoldForAFrame();
  EXPECT_GT(terrain.grid[80][75].h, kFlatHeight) << "the way there";
  LookDownOn(500, 300);
  FollowCamera();
  HoldForAFrame();
  HoldForAFrame();
  EXPECT_TRUE(IsRaised(50, 50));
  EXPECT_EQ(terrain.grid[105][75].h, kFlatHeight) << "no way leads there";
}

TEST_F(InputTest, PointsAreSelectedAndMovedWithTheModifiersOfTheMouseEvent) {
  Choose(TerrainTool::PointManipulation);
  SetModifiers(true, false);
  EXPECT_TRUE(editor.ctrlHeld && session.heldInput.keys[kKeyCtrl]);
  Press(30, 50);
  Drag(60, 50);
  Release(60, 50);
  EXPECT_TRUE(VertexUnder(30, 50).selected && VertexUnder(44, 50).selected);
  SetModifiers(false, false);
  Click(44, 50);
  EXPECT_FALSE(VertexUnder(44, 50).selected);
  Tap(kKeySpace);
  EXPECT_FALSE(VertexUnder(30, 50).selected);
  Click(50, 50);
  TerrainVertex& point = VertexUnder(50, 50);
  const auto dragUpWithShift = [](int pixels) {
    SetModifiers(false, true);
    Press(50, 50);
    Drag(50, 50 - pixels);
    Release(50, 50 - pixels);
  };
  dragUpWithShift(10);
  EXPECT_TRUE(point.selected) << "Shift selects nothing";
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.5f);
  Tap(kKeyNumpadPlus);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.6f);
  Tap(kKeyNumpadMinus), Tap(kKeyNumpadMinus);
  editor.cameraMode = CameraMode::TopDown;
  dragUpWithShift(20);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.4f) << "not from above";
}

TEST_F(InputTest, PaintingFollowsTheLeftButton) {
  Show(EditMode::MaterialMapper);
  materialMapper->currentMaterial = 5;
  materialMapper->materialCellSize = terrain.cellSize;  // as the frame before found
  // Cells are called after the vertex at their end, in rows.
  const auto isPainted = [](int x, int y) {
    const Vector3 ground = GroundUnderCursor(x, y).value();
    return materialMapper->grid[static_cast<std::size_t>(std::ceil(ground.x / terrain.cellSize))]
                               [static_cast<std::size_t>(ground.z / terrain.cellSize)] == 5;
  };
  Press(20, 20);
  Drag(40, 20);
  RouteMouse(MouseButton::Middle, MouseEvent::Move, 40, 60);
  Release(40, 60);
  Hover(40, 80);
  Click(80, 80);
  EXPECT_TRUE(isPainted(20, 20) && isPainted(30, 20) && isPainted(40, 20) && isPainted(80, 80));
  EXPECT_FALSE(isPainted(40, 40) || isPainted(40, 60) || isPainted(40, 80) || isPainted(60, 80));
  Press(60, 40);
  SetEditMode(EditMode::TerrainMapper);
  Show(EditMode::MaterialMapper);
  Hover(90, 40);
  EXPECT_FALSE(isPainted(75, 40)) << "the change of mode ended it";
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
  Tap(kKeyTab);
  EXPECT_TRUE(editor.levelModified && editor.drawObjectsInMappers);
}

TEST_F(InputTest, CtrlReleaseFinishesTheRoadOfTheClicksBefore) {
  int asked = 0;
  shell.createRoadDialog = [&asked] { return ++asked > 0; };
  for (const TerrainTool tool : {TerrainTool::Smoothing, TerrainTool::Road}) {
    Choose(tool);
    RouteKey(kKeyCtrl, true);
    Click(20, 50);
    Click(80, 50);
    EXPECT_EQ(terrain.roadPointCount, tool == TerrainTool::Road ? 2 : 0);
    RouteKey(kKeyCtrl, false);
  }
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(terrain.roadPointCount, 0);
}

TEST_F(InputTest, TheRightButtonTurnsTheCameraWhileItIsHeld) {
  session.heldInput.rightButton = true;
  RouteMouse(MouseButton::Right, MouseEvent::Press, 50, 50);
  RouteMouse(MouseButton::Right, MouseEvent::Move, 90, 50);
  UpdateCameraFromInput();
  const float turned = camera.yaw;
  EXPECT_LT(turned, 180);
  RouteMouse(MouseButton::Right, MouseEvent::Release, 90, 50);
  UpdateCameraFromInput();
  EXPECT_EQ(camera.yaw, turned);
}

// A bunker stands in the middle of the view.
class ObjectInputTest : public EditingTest {
 protected:
  ObjectInputTest() {
    Show(EditMode::ObjectMapper);
    const Vector3 ground = GroundUnderCursor(50, 50).value();
    bunker().position = {1024 - ground.x, ground.y, ground.z};
  }
  static StaticObject& bunker() { return objectStore.objects[0]; }
};

TEST_F(ObjectInputTest, KeysChooseTheToolAndTheMouseUsesIt) {
  Click(50, 50);
  EXPECT_EQ(Selected(), (Flags{true, false, false}));
  const auto dragUp = [](int pixels) {
    Press(50, 50);
    Drag(50, 50 - pixels);
    Release(50, 50 - pixels);
  };
  const float ground = bunker().position.y;
  Tap('C'), dragUp(40);
  EXPECT_FLOAT_EQ(bunker().position.y, ground + 2);
  Tap('B'), dragUp(10);
  EXPECT_FLOAT_EQ(bunker().rotation.y, 5);
  const Vector3 target = GroundUnderCursor(50, 10).value();
  Tap('X'), dragUp(40);
  Hover(80, 80);
  EXPECT_NEAR(bunker().position.x, 1024 - target.x, 0.01);
  EXPECT_NEAR(bunker().position.z, target.z, 0.01);
  Tap(kKeySpace);
  EXPECT_FALSE(bunker().selected);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select);
  EXPECT_TRUE(editor.levelModified);
}

TEST_F(ObjectInputTest, CutLeavesTheObjectAndThePressPlacesACopyUnlessItIsGivenUp) {
  Click(50, 50);
  EXPECT_FALSE(enabled[kCommandPaste]);
  TapWith(kKeyCtrl, 'X');
  EXPECT_TRUE(enabled[kCommandPaste]);
  const std::function<void()> ways[] = {
      [] { Tap(kKeyEscape); }, [] { Tap(kKeySpace); },
      [] { RouteMouse(MouseButton::Right, MouseEvent::Press, 5, 5); }};
  for (const auto& giveUp : ways) {
    TapWith(kKeyCtrl, 'V');
    EXPECT_FALSE(enabled[kCommandCut] || enabled[kCommandPaste]);
    giveUp();
    EXPECT_TRUE(enabled[kCommandCut] && enabled[kCommandPaste]);
    EXPECT_TRUE(bunker().selected) << "Space gave up the paste, not the selection";
  }
  Click(20, 20);
  EXPECT_EQ(objectStore.objects.size(), 3u);
  TapWith(kKeyCtrl, 'V');
  const Vector3 there = GroundUnderCursor(80, 20).value();
  Click(80, 20);
  ASSERT_EQ(objectStore.objects.size(), 4u);
  EXPECT_NEAR(objectStore.objects[3].position.x, 1024 - there.x, 1);
  EXPECT_NEAR(objectStore.objects[3].position.z, there.z, 1);
  EXPECT_TRUE(enabled[kCommandCut] && enabled[kCommandPaste]);
  Click(20, 20);
  EXPECT_EQ(objectStore.objects.size(), 4u) << "once";
}

TEST_F(ObjectInputTest, DeleteWorksInTheObjectMapperOnlyAndADoubleClickEditsWhatIsSelected) {
  int sheets = 0;
  hooks.runPropertySheet = [&sheets](PropertySheet&) { return ++sheets > 0; };
  Click(50, 50);
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 50, 50);
  EXPECT_EQ(sheets, 1);
  SetEditMode(EditMode::TerrainMapper);
  Tap(kKeyDelete);
  EXPECT_EQ(objectStore.objects.size(), 3u);
  Show(EditMode::ObjectMapper);
  RouteMouse(MouseButton::Left, MouseEvent::DoubleClick, 20, 20);
  EXPECT_FALSE(bunker().selected) << "on empty ground it is a press, which deselects";
  Click(50, 50);
  Tap(kKeyDelete);
  EXPECT_EQ(objectStore.objects.size(), 2u);
  EXPECT_EQ(sheets, 1);
}

}  // namespace
}  // namespace mw
