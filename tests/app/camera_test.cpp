#include <gtest/gtest.h>

#include "app/camera_control.h"
#include "app/input.h"
#include "app/session.h"
#include "app/shell_fixture.h"
#include "core/hooks.h"
#include "objects/placement.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

class CameraTest : public ShellTest {
 protected:
  CameraTest() {
    camera.position.Set(500, 100, 500);
    editor.frameSeconds = 0.1f;
  }
  void Hold(std::initializer_list<int> keys) {
    session.heldInput.keys.reset();
    for (const int key : keys) session.heldInput.keys.set(static_cast<std::size_t>(key));
  }
};

TEST_F(CameraTest, StartsLookingAlongPositiveZ) {
  const Camera fresh;
  EXPECT_NEAR(fresh.direction.x, 0, 1e-6);
  EXPECT_NEAR(fresh.direction.y, 0, 1e-6);
  EXPECT_NEAR(fresh.direction.z, 1, 1e-6);
}

TEST_F(CameraTest, MovesAlongItsPitchInFlyModeAndAlongTheAxesFromAbove) {
  camera.pitch = -30;
  camera.UpdateDirection();
  editor.cameraMode = CameraMode::Fly;
  MoveCameraForward(-10);
  EXPECT_NEAR(camera.position.y, 95, 1e-4);
  EXPECT_NEAR(camera.position.z, 500 + 8.6603, 1e-3);
  StrafeCamera(-10);
  EXPECT_NEAR(camera.position.y, 95, 1e-4) << "strafing keeps the height";
  EXPECT_NEAR(camera.position.x, 500 + 8.6603, 1e-3);

  editor.cameraMode = CameraMode::TopDown;
  camera.position.Set(500, 100, 500);
  MoveCameraForward(-10);
  StrafeCamera(-10);
  EXPECT_EQ(camera.position, (Vector3{510, 100, 510}));
}

TEST_F(CameraTest, AcceleratesWhileKeysAreHeldAndRestsWhenTheyAreNot) {
  editor.cameraMode = CameraMode::TopDown;
  Hold({'W', 'D'});
  UpdateCameraFromInput();
  EXPECT_EQ(camera.position, (Vector3{498, 100, 502})) << "two units up and to the right";
  EXPECT_FLOAT_EQ(editor.moveSpeed, 30) << "two keys accelerate once";
  for (int i = 0; i < 20; ++i) UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(editor.moveSpeed, 100);
  Hold({});
  UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(editor.moveSpeed, 20);
}

TEST_F(CameraTest, CtrlMakesLettersCommandsButNotArrows) {
  editor.cameraMode = CameraMode::TopDown;
  Hold({'S', kKeyCtrl});
  UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(camera.position.z, 500) << "Ctrl+S saves, and only saves";
  Hold({kKeyDown, kKeyCtrl});
  UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(camera.position.z, 498);
}

TEST_F(CameraTest, WithoutTheFocusKeysDoNothingButButtonsAreReleased) {
  shell.viewHasFocus = [] { return false; };
  editor.leftHeld = editor.rightHeld = true;
  Hold({'W'});
  UpdateCameraFromInput();
  EXPECT_EQ(camera.position, (Vector3{500, 100, 500}));
  EXPECT_FALSE(editor.leftHeld);
  EXPECT_FALSE(editor.rightHeld);
}

TEST_F(CameraTest, TurnsFasterFarFromThePressPoint) {
  editor.rightHeld = session.heldInput.rightButton = true;
  editor.pressX = editor.pressY = 100;
  editor.lastMouseX = 81;   // 19 pixels to the left: 4 whole units
  editor.lastMouseY = 103;  // 3 pixels down: none
  UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(camera.yaw, 180.4f);
  EXPECT_FLOAT_EQ(camera.pitch, 0);
}

TEST_F(CameraTest, FromAboveTheRightDragChangesTheHeightWithinItsBounds) {
  editor.cameraMode = CameraMode::TopDown;
  editor.rightHeld = session.heldInput.rightButton = true;
  editor.lastMouseY = -100000;
  UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(camera.position.y, 512);
  editor.lastMouseY = 100000;
  UpdateCameraFromInput();
  EXPECT_FLOAT_EQ(camera.position.y, 0);
}

TEST_F(CameraTest, ModesSetPitchAndHeight) {
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
}

TEST_F(CameraTest, StaysOverTheLevel) {
  editor.cameraMode = CameraMode::Fly;
  camera.position.Set(-5, 9000, 2000);
  camera.pitch = 88;
  ClampCamera();
  EXPECT_EQ(camera.position, (Vector3{0, 9000, 1024})) << "the height is free in fly mode";
  EXPECT_FLOAT_EQ(camera.pitch, 80);
}

TEST_F(CameraTest, FocusMirrorsLevelCoordinates) {
  bool repainted = false;
  hooks.invalidateMiniMap = [&] { repainted = true; };
  FocusCameraOn(100, 20, 300);
  EXPECT_EQ(camera.position, (Vector3{924, 55, 350}));
  EXPECT_FLOAT_EQ(camera.pitch, -35);
  EXPECT_TRUE(repainted);
}

TEST_F(CameraTest, TheWholeLevelIsSeenFromNoHigherThanTheFarPlaneAllows) {
  editor.viewWidth = 1200;
  editor.viewHeight = 800;
  struct Case {
    int worldSize;
    float height, cameraHeight;
  };
  // Flat ground; half the level over the tangent of half the view's angle, or the far plane.
  for (const Case& c : {Case{256, 100, 50 + 128 / 0.41421356f}, Case{1024, 100, 50 + 349},
                        Case{1024, 256, 128 + 349}}) {
    modConfig.WorldSize = c.worldSize;
    InitGrid();
    for (int i = 1; i <= 256; ++i) {
      for (int j = 0; j < 256; ++j) SetHeight(i, j, c.height);
    }
    RouteKey(kKeyHome, true);
    EXPECT_EQ(editor.cameraMode, CameraMode::TopDown);
    EXPECT_EQ(camera.position.x, static_cast<float>(c.worldSize) / 2);
    EXPECT_EQ(camera.position.z, static_cast<float>(c.worldSize) / 2);
    EXPECT_NEAR(camera.position.y, c.cameraHeight, 0.1f) << c.worldSize << ' ' << c.height;
  }
  SetHeight(3, 3, 0);
  RouteKey(kKeyHome, true);
  EXPECT_NEAR(camera.position.y, 349, 0.1f) << "the lowest ground counts";
}

}  // namespace
}  // namespace mw
