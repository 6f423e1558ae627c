#include "app/wheel.h"

#include <algorithm>
#include <cmath>

#include "app/camera_control.h"
#include "app/input.h"
#include "app/modes.h"
#include "app/shell.h"
#include "core/editor_state.h"
#include "core/hooks.h"
#include "objects/object_store.h"
#include "terrain/material_map.h"
#include "terrain/material_mapper.h"
#include "terrain/terrain.h"
#include "terrain/terrain_tools.h"
#include "terrain/world_point.h"

namespace mw {
namespace {

constexpr float kMovePerNotch = 10;    // world units
constexpr float kZoomPerNotch = 0.8f;  // share of the way to the ground that is left
constexpr float kLeastHeight = 2;      // world units above the ground

// Straight down, so that the point under the mouse stays there.
void ZoomTo(const Vector3& point, int notches) {
  const float above = camera.position.y - point.y;
  if (above <= 0) return;
  const float highest = std::max(kTopDownMaxHeight, camera.position.y) - point.y;
  const float next = std::clamp(above * std::pow(kZoomPerNotch, static_cast<float>(notches)),
                                std::min(kLeastHeight, above), std::max(highest, above));
  camera.position = point + (camera.position - point) * (next / above);
  hooks.invalidateMiniMap();
}

void MoveByWheel(int notches, int x, int y) {
  if (editor.cameraMode != CameraMode::TopDown) {
    MoveCameraForward(-kMovePerNotch * static_cast<float>(notches));
    return;
  }
  const auto ground = GroundUnderCursor(x, y);
  ZoomTo(ground ? *ground : Vector3{camera.position.x, 0, camera.position.z}, notches);
}

}  // namespace

void StepBrushSize(int steps) {
  if (IsEditMode(EditMode::TerrainMapper)) {
    SetBrushSize(terrain.brushSize + steps);
  } else if (IsEditMode(EditMode::MaterialMapper) && materialMapper) {
    SetMaterialBrushSize(static_cast<int>(materialMapper->brushSize) + steps);
  } else if (IsEditMode(EditMode::ObjectMapper) && objectStore.tool == ObjectTool::Scatter) {
    SetScatterBrush(objectStore.scatter.brush.size + steps);
  } else {
    return;
  }
  shell.showModeToolbar(editor.editMode);
}

void StepPower(int steps) {
  if (!IsEditMode(EditMode::TerrainMapper)) return;
  SetPower(static_cast<int>(terrain.power) + steps);
  shell.showModeToolbar(editor.editMode);
}

void RouteWheel(int notches, int x, int y) {
  if (!ViewTakesInput()) return;
  ShowCurrentOutlook();
  if (editor.ctrlHeld) {
    StepBrushSize(notches);
  } else if (editor.shiftHeld) {
    StepPower(notches);
  } else {
    MoveByWheel(notches, x, y);
  }
}

}  // namespace mw
