// The ground under mouse and keys, by what the level holds then.
#include "app/input.h"

#include <chrono>
#include <gmock/gmock.h>
#include <thread>

#include "app/camera_control.h"
#include "app/editing_fixture.h"
#include "app/session.h"
#include "objects/object_mapper.h"

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
  static std::uint32_t MaterialUnder(int x, int y) {
    const Vector3 ground = GroundUnderCursor(x, y).value();
    // Cells are called after the vertex at their end, in rows.
    return materialMapper->grid[static_cast<std::size_t>(std::ceil(ground.x / terrain.cellSize))]
                               [static_cast<std::size_t>(ground.z / terrain.cellSize)];
  }
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

TEST_F(InputTest, TheSameKeyIsAnotherToolInEachMode) {
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
  objectStore.toolsEnabled = true;
  for (const auto& [key, tool, objectTool] : rows) {
    for (const EditMode mode : kModes) {
      editor.editMode = mode;
      shownToolbar = {};
      Tap(key);
      if (mode == EditMode::TerrainMapper) {
        EXPECT_EQ(shownToolbar, mode) << "with the new tool";
      }
    }
    EXPECT_EQ(terrain.tool, tool) << key;
    EXPECT_EQ(objectStore.tool, objectTool) << key;
  }
  editor.editMode = EditMode::TerrainMapper;
  Tap('M');
  EXPECT_FALSE(terrain.autoSmoothing);
  EXPECT_TRUE(objectStore.snapToGround);
}

TEST_F(InputTest, WithCtrlALetterIsACommandInEveryModeAndNeverATool) {
  editor.cameraMode = CameraMode::TopDown;
  objectStore.toolsEnabled = objectStore.objects[1].selected = true;
  for (const EditMode mode : kModes) {
    editor.editMode = mode;
    editor.somethingCopied = false;
    for (const char letter : {'Z', 'Y', 'B', 'M', 'O', 'C'}) TapWith(kKeyCtrl, letter);
    EXPECT_TRUE(editor.somethingCopied);
  }
  EXPECT_EQ(editor.cameraMode, CameraMode::TopDown);
  EXPECT_EQ(terrain.tool, TerrainTool::PointManipulation);
  EXPECT_EQ(objectStore.tool, ObjectTool::Select);
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
  EXPECT_EQ(terrain.brushSize, 4);
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
  Drag(70, 60);
  EXPECT_TRUE(editor.rubberBandActive);
  Drag(30, 40);
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
  Release(60, 40);
  EXPECT_TRUE(IsRaised(60, 40));
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

TEST_F(InputTest, EveryPressOfABrushActsWhereItIsAndAlongItsWay) {
  Choose(TerrainTool::Raising);
  Click(20, 20);
  Press(80, 20);
  Release(80, 80);  // quicker than the mouse's moves
  Hover(50, 80);
  EXPECT_TRUE(IsRaised(20, 20) && IsRaised(80, 20) && IsRaised(80, 50) && IsRaised(80, 80));
  EXPECT_FALSE(IsRaised(50, 20) || IsRaised(50, 50) || IsRaised(60, 80));
}

TEST_F(InputTest, APressActsOnWhatTheCameraSeesNowAndGoesWithItUntilItJumps) {
  Choose(TerrainTool::Raising);
  session.heldInput.leftButton = true;
  LookDownOn(400, 400);
  Press(50, 50);
  EXPECT_EQ(frames, 1) << "one of the new sight comes before";
  EXPECT_TRUE(IsRaised(50, 50));
  EXPECT_EQ(terrain.grid[128][128].h, kFlatHeight);
  LookDownOn(440, 400);
  FollowCamera();
  HoldForAFrame();
  EXPECT_GT(terrain.grid[105][100].h, kFlatHeight) << "the way there";
  EXPECT_TRUE(IsRaised(50, 50));
  LookDownOn(600, 400);
  FollowCamera();
  HoldForAFrame();
  HoldForAFrame();
  EXPECT_TRUE(IsRaised(50, 50));
  EXPECT_EQ(terrain.grid[130][100].h, kFlatHeight) << "no way leads there";
}

TEST_F(InputTest, PointsAreSelectedWithTheModifiersOfTheMouseEvent) {
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
  const int before = CountSelectedVertices();
  SetModifiers(false, true);
  Click(70, 70);
  EXPECT_EQ(CountSelectedVertices(), before) << "Shift selects nothing";
  Tap(kKeySpace);
  EXPECT_EQ(CountSelectedVertices(), 0);
}

TEST_F(InputTest, ShiftDragAndKeypadMoveSelectedPointsButNotFromAbove) {
  Choose(TerrainTool::PointManipulation);
  Click(50, 50);
  TerrainVertex& point = VertexUnder(50, 50);
  RouteKey(kKeyShift, true);
  Press(50, 50);
  Drag(50, 40);
  Release(50, 40);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.5f);
  Tap(kKeyNumpadPlus);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.6f);
  Tap(kKeyNumpadMinus);
  Tap(kKeyNumpadMinus);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.4f);
  editor.cameraMode = CameraMode::TopDown;
  Press(50, 50);
  Drag(50, 30);
  Release(50, 30);
  EXPECT_FLOAT_EQ(point.h, kFlatHeight + 0.4f);
}

TEST_F(InputTest, PaintingFollowsTheLeftButton) {
  Show(EditMode::MaterialMapper);
  materialMapper->currentMaterial = 5;
  materialMapper->materialCellSize = terrain.cellSize;  // as the frame before found
  Press(20, 20);
  Drag(40, 20);
  RouteMouse(MouseButton::Middle, MouseEvent::Move, 40, 60);
  Release(40, 60);
  Hover(40, 80);
  Click(80, 80);
  for (const auto& [x, y] : {std::pair{20, 20}, {30, 20}, {40, 20}, {80, 80}})
    EXPECT_EQ(MaterialUnder(x, y), 5u) << x << " " << y;
  for (const auto& [x, y] : {std::pair{40, 40}, {40, 60}, {40, 80}, {60, 80}})
    EXPECT_NE(MaterialUnder(x, y), 5u) << x << " " << y;
  Press(60, 40);
  SetEditMode(EditMode::TerrainMapper);
  Show(EditMode::MaterialMapper);
  RouteMouse(MouseButton::Left, MouseEvent::Release, 60, 40);
  Hover(90, 40);
  EXPECT_NE(MaterialUnder(75, 40), 5u) << "the change of mode ended it";
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

TEST_F(InputTest, CtrlReleaseFinishesTheRoadOfTheClicksBefore) {
  int asked = 0;
  shell.createRoadDialog = [&asked] { return ++asked > 0; };
  for (const TerrainTool tool : {TerrainTool::Smoothing, TerrainTool::Road}) {
    Choose(tool);
    VertexUnder(20, 50).h = 150;
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

}  // namespace
}  // namespace mw
