#include <gtest/gtest.h>

#include "app/camera_control.h"
#include "app/input.h"
#include "app/session.h"
#include "app/shell_fixture.h"
#include "core/hooks.h"
#include "objects/placement.h"

namespace mw {
namespace {

class CameraTest : public ShellTest {
 protected:
  CameraTest() {
    camera.position.Set(500, 100, 500);
    editor.frameSeconds = 0.1f;
    hooks.invalidateMiniMap = [this] { ++repainted; };
  }
  void Hold(std::initializer_list<int> keys) {
    session.heldInput.keys.reset();
    for (const int key : keys) session.heldInput.keys.set(static_cast<std::size_t>(key));
    UpdateCameraFromInput();
  }
  int repainted = 0;
};

TEST_F(CameraTest, MovesAlongItsPitchInFlyModeAndAlongTheAxesFromAbove) {
  const Camera fresh;
  EXPECT_NEAR(fresh.direction.x, 0, 1e-6);
  EXPECT_NEAR(fresh.direction.y, 0, 1e-6);
  EXPECT_NEAR(fresh.direction.z, 1, 1e-6);
  camera.pitch = -30;
  camera.UpdateDirection();
  editor.cameraMode = CameraMode::Fly;
  MoveCameraForward(-10);
  EXPECT_NEAR(camera.position.y, 95, 1e-4);
  EXPECT_NEAR(camera.position.z, 500 + 8.6603, 1e-3);
  StrafeCamera(-10);
  EXPECT_NEAR(camera.position.y, 95, 1e-4) << "strafing keeps the height";
  EXPECT_NEAR(camera.position.x, 500 + 8.6603, 1e-3);
}

// From above, where a step of a tenth of a second is two units; up in the picture is larger z.
TEST_F(CameraTest, HeldKeysMoveItAndItsMarkOnTheMiniMap) {
  const struct {
    std::initializer_list<int> keys;
    float x, z;  // the way it goes
  } cases[] = {{{'W'}, 0, 2},
               {{kKeyUp}, 0, 2},
               {{'S'}, 0, -2},
               {{kKeyDown}, 0, -2},
               {{'A'}, 2, 0},
               {{kKeyLeft}, 2, 0},
               {{'D'}, -2, 0},
               {{kKeyRight}, -2, 0},
               {{'W', 'D'}, -2, 2},
               {{'W', 'S'}, 0, 0},
               {{'W', kKeyShift}, 0, 5},
               {{'S', kKeyCtrl}, 0, 0},  // saves, and only saves
               {{kKeyDown, kKeyCtrl}, 0, -2},
               {{}, 0, 0}};
  editor.cameraMode = CameraMode::TopDown;
  for (const auto& [keys, x, z] : cases) {
    SCOPED_TRACE(testing::PrintToString(std::vector<int>(keys)));
    camera.position.Set(500, 100, 500);
    editor.moveSpeed = 20;
    repainted = 0;
    Hold(keys);
    EXPECT_EQ(camera.position, (Vector3{500 + x, 100, 500 + z}));
    EXPECT_TRUE(repainted > 0 || (x == 0 && z == 0));
  }
}

TEST_F(CameraTest, AcceleratesWhileKeysAreHeldAndRestsWhenTheyAreNot) {
  Hold({'W', 'D'});
  EXPECT_FLOAT_EQ(editor.moveSpeed, 30) << "two keys accelerate once";
  for (int i = 0; i < 20; ++i) UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(editor.moveSpeed, 100);
  Hold({});
  EXPECT_FLOAT_EQ(editor.moveSpeed, 20);
}

TEST_F(CameraTest, WithoutTheFocusKeysDoNothingButButtonsAreReleased) {
  shell.viewHasFocus = [] { return false; };
  editor.leftHeld = editor.rightHeld = true;
  Hold({'W'});
  EXPECT_EQ(camera.position, (Vector3{500, 100, 500}));
  EXPECT_FALSE(editor.leftHeld || editor.rightHeld);
}

TEST_F(CameraTest, TheRightDragTurnsFasterFarFromThePressPointAndChangesTheHeightFromAbove) {
  const struct {
    int left, up;  // pixels from the press point
    float yaw, pitch;
  } cases[] = {{3, 3, 0, 0}, {19, -3, 0.4f, 0}, {-40, 0, -1, 0}, {0, 80, 0, 2}, {0, -8, 0, -0.2f}};
  session.heldInput.rightButton = true;
  editor.pressX = editor.pressY = 100;
  for (const auto& [left, up, yaw, pitch] : cases) {
    editor.rightHeld = true;
    camera.yaw = 180;
    camera.pitch = 0;
    camera.UpdateDirection();
    const Vector3 before = camera.direction;
    repainted = 0;
    editor.lastMouseX = 100 - left;
    editor.lastMouseY = 100 - up;
    UpdateCameraFromInput();
    EXPECT_FLOAT_EQ(camera.yaw, 180 + yaw);
    EXPECT_FLOAT_EQ(camera.pitch, pitch);
    EXPECT_EQ(repainted, yaw != 0 || pitch != 0);
    EXPECT_EQ(camera.direction == before, repainted == 0) << "it looks where it is turned";
  }
  editor.cameraMode = CameraMode::TopDown;
  for (const auto& [mouse, height] : {std::pair{-100000, 512.0f}, {100000, 0.0f}}) {
    editor.lastMouseY = mouse;
    UpdateCameraFromInput();
    EXPECT_FLOAT_EQ(camera.position.y, height) << "its bounds";
  }
}

TEST_F(CameraTest, ModesSetPitchAndHeightAndKeepItOverTheLevel) {
  terrain.grid[125][125].h = 60;
  SetCameraMode(CameraMode::Fly);
  EXPECT_FLOAT_EQ(camera.pitch, -25);
  EXPECT_FLOAT_EQ(camera.position.y, (60 + 4) * 0.5f + 50);
  SetCameraMode(CameraMode::TopDown);
  EXPECT_FLOAT_EQ(camera.position.y, 255);
  camera.yaw = 20;
  ClampCamera();
  EXPECT_FLOAT_EQ(camera.pitch, -90);
  EXPECT_FLOAT_EQ(camera.yaw, 180);
  SetCameraMode(CameraMode::OnTerrain);
  EXPECT_FLOAT_EQ(camera.pitch, 0);
  editor.cameraMode = CameraMode::Fly;
  camera.position.Set(-5, 9000, 2000);
  camera.pitch = 88;
  ClampCamera();
  EXPECT_EQ(camera.position, (Vector3{0, 9000, 1024})) << "the height is free in fly mode";
  EXPECT_FLOAT_EQ(camera.pitch, 80);
}

TEST_F(CameraTest, FocusMirrorsLevelCoordinates) {
  FocusCameraOn(100, 20, 300);
  EXPECT_EQ(camera.position, (Vector3{924, 55, 350}));
  EXPECT_FLOAT_EQ(camera.pitch, -35);
  EXPECT_GT(repainted, 0);
}

TEST_F(CameraTest, TheWholeLevelIsSeenFromNoHigherThanTheFarPlaneAllows) {
  editor.viewWidth = 1200;
  editor.viewHeight = 800;
  const struct {
    int worldSize;
    float height, lowest, cameraHeight;
  } cases[] = {{256, 100, 100, 50 + 128 / 0.41421356f},  // half the view's angle
               {1024, 100, 100, 50 + 349},               // the far plane
               {1024, 256, 256, 128 + 349},
               {1024, 256, 0, 349}};
  for (const auto& [worldSize, height, lowest, cameraHeight] : cases) {
    modConfig.WorldSize = worldSize;
    InitGrid();
    for (int i = 1; i <= 256; ++i) {
      for (int j = 0; j < 256; ++j) SetHeight(i, j, height);
    }
    SetHeight(3, 3, lowest);
    RouteKey(kKeyHome, true);
    const float middle = static_cast<float>(worldSize) / 2;
    EXPECT_EQ(editor.cameraMode, CameraMode::TopDown);
    EXPECT_EQ(camera.position.x, middle);
    EXPECT_EQ(camera.position.z, middle);
    EXPECT_NEAR(camera.position.y, cameraHeight, 0.1f) << worldSize << ' ' << height;
  }
}

}  // namespace
}  // namespace mw
