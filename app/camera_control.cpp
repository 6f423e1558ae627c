#include "app/camera_control.h"

#include <GL/gl.h>
#include <algorithm>

#include "app/keys.h"
#include "app/modes.h"
#include "app/session.h"
#include "app/shell.h"
#include "core/hooks.h"
#include "data/mod_config.h"
#include "platform/clock.h"
#include "terrain/brush_stroke.h"
#include "terrain/ground_ray.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr float kRestSpeed = 20, kTopSpeed = 100;  // world units per second
constexpr float kAcceleration = 100;               // world units per second squared
constexpr float kShiftFactor = 2.5f;
constexpr float kMaxPitch = 80;  // degrees, but straight down from above
constexpr float kTopDownHeight = 255;
constexpr int kPixelsPerTurnUnit = 4;

bool Held(int key) { return session.heldInput.keys[static_cast<std::size_t>(key)]; }

// A movement key, by its letter (not while Ctrl makes it a command) or its arrow.
bool Moves(char letter, int arrow) {
  return (Held(letter) && !editor.ctrlHeld && !Held(kKeyCtrl)) || Held(arrow);
}

// Flight that moves stays above the ground as it is drawn.
void KeepClearance() {
  constexpr float kClearance = 2;  // world units
  if (editor.cameraMode != CameraMode::Fly || Held(kKeyAlt) || !HasUsableTerrain()) return;
  const float ground = DrawnGroundHeight(camera.position.x, camera.position.z);
  camera.position.y = std::max(camera.position.y, ground + kClearance);
}

void MoveFromKeys() {
  const float factor = editor.shiftHeld ? kShiftFactor : 1.0f;
  const float step = editor.moveSpeed * editor.frameSeconds * factor;
  const bool forward = Moves('W', kKeyUp), back = Moves('S', kKeyDown);
  const bool left = Moves('A', kKeyLeft), right = Moves('D', kKeyRight);
  if (forward) MoveCameraForward(-step);
  if (back) MoveCameraForward(step);
  if (left) StrafeCamera(-step);
  if (right) StrafeCamera(step);
  if (forward || back || left || right) {
    editor.moveSpeed = std::min(editor.moveSpeed + kAcceleration * editor.frameSeconds, kTopSpeed);
  } else {
    editor.moveSpeed = kRestSpeed;
  }
}

// The turn rate grows with the distance from the press point, like a joystick's.
void TurnFromMouse() {
  const auto offset = [](int pressed, int last) {
    const int units = (pressed - last) / kPixelsPerTurnUnit;
    return static_cast<float>(units) * editor.frameSeconds;
  };
  const float dx = offset(editor.pressX, editor.lastMouseX);
  const float dy = offset(editor.pressY, editor.lastMouseY);
  if (editor.cameraMode == CameraMode::TopDown) {
    camera.position.y = std::clamp(camera.position.y + dy, 0.0f, kTopDownMaxHeight);
    return;
  }
  if (dx != 0) TurnCamera(dx);
  if (dy != 0) TiltCamera(dy);
}

// Its release went to another window.
void LoseLeftButton() {
  EndStroke();
  editor.leftHeld = false;
}

Matrix4 CurrentMatrix(GLenum which) {
  Matrix4 matrix;
  glGetFloatv(which, matrix.data());
  return matrix;
}

}  // namespace

void TurnCamera(float deltaYaw) {
  camera.yaw += deltaYaw;
  camera.UpdateDirection();
  hooks.invalidateMiniMap();
}

void TiltCamera(float deltaPitch) {
  camera.pitch += deltaPitch;
  camera.UpdateDirection();
  hooks.invalidateMiniMap();
}

void MoveCameraForward(float distance) {
  if (editor.cameraMode == CameraMode::TopDown) {
    camera.position.z -= distance;
  } else {
    camera.position -= camera.direction * distance;
    KeepClearance();
  }
  hooks.invalidateMiniMap();
}

void StrafeCamera(float distance) {
  if (editor.cameraMode == CameraMode::TopDown) {
    camera.position.x -= distance;
  } else {
    camera.position.x -= distance * camera.direction.z;
    camera.position.z += distance * camera.direction.x;
    KeepClearance();
  }
  hooks.invalidateMiniMap();
}

void SetCameraMode(CameraMode mode) {
  constexpr float kFlyPitch = -25, kFlyClearance = 50;
  switch (mode) {
    case CameraMode::OnTerrain:
      camera.pitch = 0;
      break;
    case CameraMode::Fly:
      camera.pitch = kFlyPitch;
      camera.position.y = HeightUnderCamera(4) + kFlyClearance;
      break;
    case CameraMode::TopDown:
      camera.position.y = kTopDownHeight;
      break;
  }
  camera.UpdateDirection();
  editor.cameraMode = mode;
}

void ClampCamera() {
  if (editor.cameraMode == CameraMode::TopDown) {
    camera.pitch = -90;
    camera.yaw = 180;
    camera.roll = 0;
  } else {
    camera.pitch = std::clamp(camera.pitch, -kMaxPitch, kMaxPitch);
  }
  const auto worldSize = static_cast<float>(std::max(modConfig.WorldSize, 0));
  camera.position.x = std::clamp(camera.position.x, 0.0f, worldSize);
  camera.position.z = std::clamp(camera.position.z, 0.0f, worldSize);
}

void LookAlongLevel() {
  camera.roll = 0;
  camera.pitch = 0;
  camera.yaw = 180;
  camera.UpdateDirection();
}

void ApplyCamera() {
  ClampCamera();
  glRotatef(-camera.pitch, 1, 0, 0);
  glRotatef(-camera.yaw, 0, 1, 0);
  glRotatef(-camera.roll, 0, 0, 1);
  glTranslatef(-camera.position.x, -camera.position.y, -camera.position.z);
  camera.UpdateDirection();
  camera.ExtractFrustum(CurrentMatrix(GL_PROJECTION_MATRIX), CurrentMatrix(GL_MODELVIEW_MATRIX));
}

void UpdateCameraFromInput() {
  if (editor.leftHeld && !session.heldInput.leftButton) LoseLeftButton();
  if (!session.heldInput.rightButton) editor.rightHeld = false;
  editor.shiftHeld = Held(kKeyShift);
  if (!shell.viewHasFocus()) return;
  // First what acts on the ground that is on the screen.
  if (editor.leftHeld && IsEditMode(EditMode::TerrainMapper)) HoldBrush(MillisecondsNow());
  MoveFromKeys();
  if (editor.rightHeld) TurnFromMouse();
}

}  // namespace mw
