#include "app/input.h"

#include <utility>

#include "app/keys.h"
#include "app/modes.h"
#include "app/operations.h"
#include "app/shell.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr float kDragHeightPerPixel = 0.05f;  // height units

void PressLeftInTerrain(int x, int y) {
  if (!editor.ctrlHeld && !editor.shiftHeld && terrain->tool == TerrainTool::PointManipulation) {
    operations.pickUnderCursor(x, y, true);
  } else if (terrain->tool == TerrainTool::Flatten) {
    terrain->flattenActive = 1;
  }
}

void PressLeftInObjects(int x, int y) {
  if (operations.objectSelectTool()) {
    operations.toggleSelectAtCursor(x, y);
  } else if (operations.objectTranslateTool()) {
    operations.pressTranslate(x, y, editor.lastMouseX, editor.lastMouseY);
  }
}

void PressLeft(int x, int y) {
  if (editor.pastePending) {
    operations.paste(x, y);
    editor.pastePending = false;
    UpdateClipboardButtons(true);
  } else {
    switch (editor.editMode) {
      case EditMode::TerrainMapper:
        PressLeftInTerrain(x, y);
        break;
      case EditMode::MaterialMapper:
        operations.setPainting(true);
        break;
      case EditMode::ObjectMapper:
        PressLeftInObjects(x, y);
        break;
    }
  }
  editor.leftHeld = true;
}

void Press(MouseButton button, int x, int y) {
  editor.pressX = x;
  editor.pressY = y;
  if (button == MouseButton::Right) editor.rightHeld = true;
  if (button == MouseButton::Left) PressLeft(x, y);
}

void ReleaseLeft(int x, int y) {
  if (IsEditMode(EditMode::TerrainMapper)) {
    if (editor.rubberBandActive) FinishRubberBand(x, y);
    if (terrain->tool == TerrainTool::Flatten) terrain->flattenActive = 0;
    if (terrain->tool == TerrainTool::Road && editor.ctrlHeld) operations.addRoadPoint(x, y);
  } else if (IsEditMode(EditMode::MaterialMapper)) {
    operations.setPainting(false);
  }
  operations.releaseObjects();  // even if the mode has changed since the press
  editor.leftHeld = false;
}

void Release(MouseButton button, int x, int y) {
  if (button == MouseButton::Right) editor.rightHeld = false;
  if (button == MouseButton::Left) ReleaseLeft(x, y);
}

void Hover(int x, int y) {
  switch (editor.editMode) {
    case EditMode::TerrainMapper:
      if (terrain->tool != TerrainTool::PointManipulation) operations.pickUnderCursor(x, y, false);
      terrain->flattenActive = 0;
      break;
    case EditMode::MaterialMapper:
      operations.pickMaterialPoint(x, y);
      operations.setPainting(false);
      break;
    case EditMode::ObjectMapper:
      if (operations.objectSelectTool() || operations.objectTranslateTool() ||
          operations.objectHoverOption()) {
        operations.pickCursorPoint(x, y);
      }
      break;
  }
}

void DragLeftInTerrain(int x, int y) {
  const bool topDown = editor.cameraMode == CameraMode::TopDown;
  if (editor.ctrlHeld && topDown) {
    if (editor.rubberBandActive) {
      UpdateRubberBand(x, y);
    } else {
      StartRubberBand(x, y);
    }
  } else if (!topDown) {
    if (editor.shiftHeld) {
      operations.moveSelection(static_cast<float>(editor.lastMouseY - y) * kDragHeightPerPixel);
    } else if (editor.ctrlHeld && terrain->tool == TerrainTool::PointManipulation) {
      operations.pickUnderCursor(x, y, true);
    }
  }
}

void Move(MouseButton button, int x, int y) {
  shell.focusView();
  Hover(x, y);
  if (button != MouseButton::Left) return;
  switch (editor.editMode) {
    case EditMode::TerrainMapper:
      DragLeftInTerrain(x, y);
      break;
    case EditMode::MaterialMapper:
      operations.setPainting(true);
      break;
    case EditMode::ObjectMapper:
      operations.dragObjects(x, y, editor.lastMouseX, editor.lastMouseY);
      break;
  }
}

void DoubleClick(MouseButton button, int x, int y) {
  if (button == MouseButton::Left && IsEditMode(EditMode::ObjectMapper) &&
      operations.objectSelectTool() && operations.editHovered()) {
    return;
  }
  Press(button, x, y);
}

}  // namespace

void RouteMouse(MouseButton button, MouseEvent event, int x, int y) {
  if (!editor.viewReady || !editor.levelLoaded || !shell.mainWindowActive()) return;
  switch (event) {
    case MouseEvent::Press:
      Press(button, x, y);
      break;
    case MouseEvent::Release:
      Release(button, x, y);
      break;
    case MouseEvent::Move:
      Move(button, x, y);
      break;
    case MouseEvent::DoubleClick:
      DoubleClick(button, x, y);
      break;
  }
  editor.lastMouseX = x;
  editor.lastMouseY = y;
}

void ForgetHeldInput() {
  heldInput = HeldInput{};
  EndStroke();
  operations.releaseObjects();
  editor.ctrlHeld = editor.shiftHeld = false;
  editor.leftHeld = editor.rightHeld = false;
}

void StartRubberBand(int x, int y) {
  editor.rubberBand = {x, y, x, y};
  editor.rubberBandActive = true;
}

void UpdateRubberBand(int x, int y) {
  editor.rubberBand.x1 = x;
  editor.rubberBand.y1 = y;
}

void FinishRubberBand(int x, int y) {
  UpdateRubberBand(x, y);
  auto& band = editor.rubberBand;
  if (band.x0 > band.x1) std::swap(band.x0, band.x1);
  if (band.y0 > band.y1) std::swap(band.y0, band.y1);
  editor.rubberBandActive = false;
  operations.selectRectangle(band.x0, band.y0, band.x1, band.y1);
}

}  // namespace mw
