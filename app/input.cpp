#include "app/input.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "app/keys.h"
#include "app/modes.h"
#include "app/session.h"
#include "app/shell.h"
#include "app/undo.h"
#include "core/history.h"
#include "objects/object_clipboard.h"
#include "objects/object_mapper.h"
#include "objects/object_store.h"
#include "objects/scatter.h"
#include "objects/select_many.h"
#include "platform/clock.h"
#include "terrain/brush_stroke.h"
#include "terrain/material_mapper.h"
#include "terrain/point_selection.h"
#include "terrain/roads.h"
#include "terrain/terrain.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

constexpr float kDragHeightPerPixel = 0.05f;  // height units

Outlook CurrentOutlook() {
  return {camera.position, camera.yaw, camera.pitch, editor.cameraMode, editor.editMode};
}

// Whether the camera was put elsewhere, rather than moved.
bool IsJump(const Outlook& from, const Outlook& to) {
  constexpr float kFarthestMove = 60;  // world units that keys move the camera by in one frame
  return from.cameraMode != to.cameraMode || from.position.DistanceTo(to.position) > kFarthestMove;
}

bool IsFromAbove() { return editor.cameraMode == CameraMode::TopDown; }

bool HasPointTool() { return terrain.tool == TerrainTool::PointManipulation; }

bool HasTranslateTool() { return objectStore.tool == ObjectTool::Translate; }

bool HasScatterTool() { return objectStore.tool == ObjectTool::Scatter; }

bool HasSelectTool() { return objectStore.tool == ObjectTool::Select; }

// The ways of the brushes: none leads to the next pick.
void LiftBrushes() {
  LiftBrush();
  LiftMaterialBrush();
  LiftScatter();
}

void PressLeftInTerrain(int x, int y) {
  if (!HasPointTool()) {
    PickUnderCursor(x, y);
    PressBrush(MillisecondsNow());
  } else if (!editor.ctrlHeld && !editor.shiftHeld) {
    ToggleVertexUnderCursor(x, y);
  } else if (editor.ctrlHeld && !editor.shiftHeld && !IsFromAbove()) {
    StartSelecting(x, y);
  }
}

void PressLeftInObjects(int x, int y) {
  if (HasSelectTool()) {
    ToggleSelectAtCursor(x, y);
  } else if (HasTranslateTool()) {
    PressTranslate(x, y);
  } else if (HasScatterTool()) {
    PressScatter(x, y);
  }
}

void PressLeft(int x, int y) {
  if (editor.pastePending) {
    PasteCopied(x, y);
    editor.pastePending = false;
    UpdateClipboardButtons(true);
  } else {
    switch (editor.editMode) {
      case EditMode::TerrainMapper:
        PressLeftInTerrain(x, y);
        break;
      case EditMode::MaterialMapper:
        StopPainting();
        PickMaterialPoint(x, y);
        StartPainting();
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
  if (button == MouseButton::Right) {
    GiveUpPaste();
    editor.rightHeld = true;
  }
  if (button == MouseButton::Left) PressLeft(x, y);
  ShowUndoSteps();
}

void PickInTerrain(int x, int y) {
  if (HasPointTool()) return;
  PickUnderCursor(x, y);
  MoveBrush();
}

void PickInObjects(int x, int y) {
  if (HasSelectTool() || HasTranslateTool()) PickCursorPoint(x, y);
  if (HasScatterTool()) PickScatter(x, y);
}

void Hover(int x, int y) {
  switch (editor.editMode) {
    case EditMode::TerrainMapper:
      PickInTerrain(x, y);
      break;
    case EditMode::MaterialMapper:
      StopPainting();
      PickMaterialPoint(x, y);
      break;
    case EditMode::ObjectMapper:
      PickInObjects(x, y);
      break;
  }
}

void DragPoints(int x, int y) {
  if (editor.ctrlHeld && IsFromAbove()) {
    if (!editor.rubberBandActive) StartRubberBand(editor.pressX, editor.pressY);
    UpdateRubberBand(x, y);
  } else if (!IsFromAbove() && editor.shiftHeld) {
    const int pixelsUp = editor.lastMouseY - y;
    if (pixelsUp != 0) MoveSelection(static_cast<float>(pixelsUp) * kDragHeightPerPixel);
  } else if (!IsFromAbove() && editor.ctrlHeld) {
    SelectOnTheWayTo(x, y);
  }
}

// A rectangle of things, from above. A hand is never quite still: a click is not yet one.
void DragBand(int x, int y) {
  constexpr int kStill = 4;  // pixels
  if (!editor.rubberBandActive) {
    const int way = std::abs(x - editor.pressX) + std::abs(y - editor.pressY);
    if (!editor.ctrlHeld || !IsFromAbove() || way < kStill) return;
    StartRubberBand(editor.pressX, editor.pressY);
  }
  UpdateRubberBand(x, y);
}

void DragLeft(int x, int y) {
  switch (editor.editMode) {
    case EditMode::TerrainMapper:
      PickInTerrain(x, y);
      if (HasPointTool()) DragPoints(x, y);
      break;
    case EditMode::MaterialMapper:
      PickMaterialPoint(x, y);
      StartPainting();
      break;
    case EditMode::ObjectMapper:
      PickInObjects(x, y);
      if (HasSelectTool()) {
        DragBand(x, y);
      } else {
        DragObjects(x, y, editor.lastMouseX, editor.lastMouseY);
      }
      break;
  }
}

void ReleaseLeft(int x, int y) {
  // What the mouse passed since its last event belongs to the stroke or drag.
  if (editor.leftHeld && (x != editor.lastMouseX || y != editor.lastMouseY)) DragLeft(x, y);
  if (editor.rubberBandActive) FinishRubberBand(x, y);
  if (IsEditMode(EditMode::TerrainMapper) && terrain.tool == TerrainTool::Road && editor.ctrlHeld) {
    AddRoadPoint(x, y);
  }
  EndStroke();
  EndHistoryRun();
  ReleaseObjects();  // even if the mode has changed since the press
  editor.leftHeld = false;
}

void Release(MouseButton button, int x, int y) {
  if (button == MouseButton::Right) editor.rightHeld = false;
  if (button == MouseButton::Left) ReleaseLeft(x, y);
  ShowUndoSteps();
}

void Move(MouseButton button, int x, int y) {
  shell.focusView();
  if (button == MouseButton::Left)
    DragLeft(x, y);
  else
    Hover(x, y);
}

void DoubleClick(MouseButton button, int x, int y) {
  if (button == MouseButton::Left && IsEditMode(EditMode::ObjectMapper) && HasSelectTool() &&
      EditHovered()) {
    return;
  }
  Press(button, x, y);
}

}  // namespace

bool ViewTakesInput() { return editor.viewReady && editor.levelLoaded && shell.mainWindowActive(); }

void ShowCurrentOutlook() {
  if (!(session.pictured == CurrentOutlook())) shell.renderFrameNow();
}

void RouteMouse(MouseButton button, MouseEvent event, int x, int y) {
  if (!ViewTakesInput()) return;
  ShowCurrentOutlook();
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
  session.heldInput = HeldInput{};
  EndStroke();
  ReleaseObjects();
  editor.ctrlHeld = editor.shiftHeld = false;
  editor.leftHeld = editor.rightHeld = false;
  ShowUndoSteps();
}

void SetModifiers(bool ctrl, bool shift, bool alt) {
  editor.ctrlHeld = ctrl;
  editor.shiftHeld = shift;
  session.heldInput.keys.set(kKeyCtrl, ctrl);
  session.heldInput.keys.set(kKeyShift, shift);
  session.heldInput.keys.set(kKeyAlt, alt);
}

void FollowCamera() {
  const Outlook before = std::exchange(session.pictured, CurrentOutlook());
  if (before == session.pictured) return;
  if (IsJump(before, session.pictured)) LiftBrushes();
  const int x = editor.lastMouseX, y = editor.lastMouseY;
  switch (editor.editMode) {
    case EditMode::TerrainMapper:
      PickInTerrain(x, y);
      if (editor.leftHeld && HasPointTool() && !IsFromAbove()) DragPoints(x, y);
      break;
    case EditMode::MaterialMapper:
      PickMaterialPoint(x, y);
      break;
    case EditMode::ObjectMapper:
      PickInObjects(x, y);
      if (editor.leftHeld && (HasTranslateTool() || HasScatterTool())) DragObjects(x, y, x, y);
      break;
  }
}

void StartRubberBand(int x, int y) {
  editor.rubberBand = {x, y, x, y};
  editor.rubberBandActive = true;
}

void UpdateRubberBand(int x, int y) {
  editor.rubberBand.x1 = std::clamp(x, 0, std::max(static_cast<int>(editor.viewWidth) - 1, 0));
  editor.rubberBand.y1 = std::clamp(y, 0, std::max(static_cast<int>(editor.viewHeight) - 1, 0));
}

void FinishRubberBand(int x, int y) {
  UpdateRubberBand(x, y);
  auto& band = editor.rubberBand;
  if (band.x0 > band.x1) std::swap(band.x0, band.x1);
  if (band.y0 > band.y1) std::swap(band.y0, band.y1);
  editor.rubberBandActive = false;
  if (IsEditMode(EditMode::ObjectMapper)) {
    SelectInRectangle(band.x0, band.y0, band.x1, band.y1);
  } else {
    SelectRectangle(band.x0, band.y0, band.x1, band.y1);
  }
}

}  // namespace mw
