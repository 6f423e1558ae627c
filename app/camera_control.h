// How the camera moves: its three modes, and the step that keys and mouse make in every frame.
#pragma once

#include "core/camera.h"

namespace mw {

inline constexpr float kTopDownMaxHeight = 512;  // world units that the mouse reaches

void TurnCamera(float deltaYaw);    // degrees
void TiltCamera(float deltaPitch);  // degrees
// World units against the view, and to its right; from above down the picture and to the left. In
// flight they keep a little above the ground unless Alt is held.
void MoveCameraForward(float distance);
void StrafeCamera(float distance);
void SetCameraMode(CameraMode mode);
// Straight ahead along z, as the camera looks at a level that was just opened.
void LookAlongLevel();
// Limits the camera, multiplies its transform onto the model-view matrix and extracts the frustum.
void ApplyCamera();
// The limits alone: pitch by mode, position to the level.
void ClampCamera();
// One frame's movement from held keys and mouse buttons.
void UpdateCameraFromInput();

}  // namespace mw
