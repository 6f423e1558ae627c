#include <algorithm>
#include <array>

#include "app/commands.h"
#include "app/input.h"
#include "app/keys.h"
#include "app/modes.h"
#include "app/session.h"
#include "app/shell.h"
#include "app/wheel.h"
#include "core/history.h"
#include "data/mod_config.h"
#include "objects/object_mapper.h"
#include "objects/object_store.h"
#include "terrain/material_mapper.h"
#include "terrain/point_selection.h"
#include "terrain/roads.h"
#include "terrain/terrain.h"
#include "terrain/terrain_tools.h"

namespace mw {
namespace {

constexpr int kInTerrain = static_cast<int>(EditMode::TerrainMapper);
constexpr int kObjects = static_cast<int>(EditMode::ObjectMapper);
constexpr float kMinWaterLevel = 0, kMaxWaterLevel = 255;  // that the keys reach, world units
constexpr float kWaterStep = 1;
constexpr float kKeyHeightStep = 0.1f;  // height units

// The first matching row wins. Those of bookmarks are for keyboards whose digits need Shift, where
// the keys of the commands match none.
constexpr auto kShortcuts = std::to_array<Shortcut>({
    {'1', true, true, kCommandKeepBookmark1, kAnyMode},
    {'2', true, true, kCommandKeepBookmark2, kAnyMode},
    {'3', true, true, kCommandKeepBookmark3, kAnyMode},
    {'4', true, true, kCommandKeepBookmark4, kAnyMode},
    {'5', true, true, kCommandKeepBookmark5, kAnyMode},
    {'6', true, true, kCommandKeepBookmark6, kAnyMode},
    {'7', true, true, kCommandKeepBookmark7, kAnyMode},
    {'8', true, true, kCommandKeepBookmark8, kAnyMode},
    {'9', true, true, kCommandKeepBookmark9, kAnyMode},
    {'1', false, false, kCommandGoToBookmark1, kAnyMode, true},
    {'2', false, false, kCommandGoToBookmark2, kAnyMode, true},
    {'3', false, false, kCommandGoToBookmark3, kAnyMode, true},
    {'4', false, false, kCommandGoToBookmark4, kAnyMode, true},
    {'5', false, false, kCommandGoToBookmark5, kAnyMode, true},
    {'6', false, false, kCommandGoToBookmark6, kAnyMode, true},
    {'7', false, false, kCommandGoToBookmark7, kAnyMode, true},
    {'8', false, false, kCommandGoToBookmark8, kAnyMode, true},
    {'9', false, false, kCommandGoToBookmark9, kAnyMode, true},
    {'A', false, true, kCommandSurfaceAssignments, kAnyMode},
    {'C', false, true, kCommandCopy, kAnyMode},
    {'V', false, true, kCommandPaste, kAnyMode},
    {'X', false, true, kCommandCut, kAnyMode},
    {'I', false, false, kCommandCameraOnTerrain, kAnyMode},
    {'O', false, false, kCommandCameraFly, kAnyMode},
    {'P', false, false, kCommandCameraTopDown, kAnyMode},
    {'J', false, false, kCommandWireframe, kAnyMode},
    {'K', false, false, kCommandTextured, kAnyMode},
    {'L', false, false, kCommandTexturedWireframe, kAnyMode},
    {kKeyHome, false, false, kCommandShowWholeLevel, kAnyMode},
    {'F', false, false, kCommandShowSelection, kAnyMode},
    {'1', false, true, kCommandShowStandardMeshes, kObjects},
    {'2', false, true, kCommandShowTreeMeshes, kObjects},
    {'3', false, true, kCommandShowObjectSpawns, kObjects},
    {'4', false, true, kCommandShowSoldierSpawns, kObjects},
    {'5', false, true, kCommandShowControlPoints, kObjects},
    {'Z', false, false, kCommandSelectObjects, kObjects},
    {'X', false, false, kCommandTranslateObjects, kObjects},
    {'C', false, false, kCommandRaiseLowerObjects, kObjects},
    {'V', false, false, kCommandRotateX, kObjects},
    {'B', false, false, kCommandRotateY, kObjects},
    {'N', false, false, kCommandRotateZ, kObjects},
    {'M', false, false, kCommandSnapToGround, kObjects},
    {'H', false, false, kCommandScatter, kObjects},
    {'G', true, false, kCommandTurnStep, kObjects},
    {'G', false, false, kCommandGridStep, kObjects},
    {'Z', false, false, kCommandCarving, kInTerrain},
    {'X', false, false, kCommandRaising, kInTerrain},
    {'C', false, false, kCommandSmoothing, kInTerrain},
    {'V', false, false, kCommandFlatten, kInTerrain},
    {'B', false, false, kCommandRoad, kInTerrain},
    {'N', false, false, kCommandPointManipulation, kInTerrain},
    {'M', false, false, kCommandAutoSmoothing, kInTerrain},
    {'E', false, false, kCommandBrushEdge, kInTerrain},
});

bool IsLetter(int key) { return key >= 'A' && key <= 'Z'; }

// With Ctrl held a letter is a command of its own and never the tool that it is without.
bool FitsModifiers(const Shortcut& row) {
  if (row.needsShift && !editor.shiftHeld) return false;
  if (row.needsAlt && !session.heldInput.keys[kKeyAlt]) return false;
  return row.needsCtrl ? editor.ctrlHeld : !(editor.ctrlHeld && IsLetter(row.key));
}

const Shortcut* FindShortcut(int key) {
  for (const Shortcut& row : kShortcuts) {
    if (row.key == key && (row.mode == kAnyMode || row.mode == static_cast<int>(editor.editMode)) &&
        FitsModifiers(row)) {
      return &row;
    }
  }
  return nullptr;
}

void RunShortcut(const Shortcut& shortcut) {
  if (shortcut.mode == kInTerrain) {
    PressTerrainControl(static_cast<TerrainControl>(shortcut.command));
    shell.showModeToolbar(EditMode::TerrainMapper);
  } else if (shortcut.mode == kObjects) {
    PressObjectControl(static_cast<ObjectControl>(shortcut.command));
  } else {
    RunCommand(shortcut.command);
  }
}

// Digits set the brush size, with Shift in the Terrain Mapper the tool's power; 0 counts as 10.
void DigitKey(int key) {
  const int number = key == '0' ? 10 : key - '0';
  const int size = std::min(number, kMaxBrushSize);
  if (IsEditMode(EditMode::TerrainMapper)) {
    if (editor.shiftHeld) {
      SetPower(number);
    } else {
      SetBrushSize(size);
    }
  } else if (IsEditMode(EditMode::MaterialMapper)) {
    SetMaterialBrushSize(size);
  } else if (objectStore.tool == ObjectTool::Scatter) {
    SetScatterBrush(size);
  }
  shell.showModeToolbar(editor.editMode);
}

void PointManipulationKey(int key) {
  switch (key) {
    case kKeySpace:
      ClearSelection();
      break;
    case kKeyNumpadPlus:
      MoveSelection(kKeyHeightStep);
      break;
    case kKeyNumpadMinus:
      MoveSelection(-kKeyHeightStep);
      break;
    default:
      break;
  }
}

void ObjectKey(int key) {
  if (key == kKeySpace) {
    DeselectAll();
    UpdateToolButtons(false);
  } else if (key == kKeyDelete) {
    DeleteSelected();
  }
}

void KeyDown(int key) {
  if ((key == kKeyEscape || key == kKeySpace) && GiveUpPaste()) return;
  if (const Shortcut* shortcut = FindShortcut(key)) {
    RunShortcut(*shortcut);
  } else if (key >= '0' && key <= '9') {
    DigitKey(key);
  } else if (key == kKeyBracketLeft || key == kKeyBracketRight) {
    StepBrushSize(key == kKeyBracketLeft ? -1 : 1);
  }
  if (key == kKeyCtrl) editor.ctrlHeld = true;
  if (key == kKeyShift) editor.shiftHeld = true;
  if (key == kKeyAlt) session.heldInput.keys.set(kKeyAlt);
  if (IsEditMode(EditMode::TerrainMapper) && terrain.tool == TerrainTool::PointManipulation) {
    PointManipulationKey(key);
  }
  if (IsEditMode(EditMode::ObjectMapper)) ObjectKey(key);
}

void SetWaterLevel(float level) {
  const HistoryStep step("Water Level", HistoryStep::Run);
  KeepSetting(modConfig.WaterLevel);
  modConfig.WaterLevel = level;
  editor.levelModified = true;
}

// Each way ends at its own bound; a level beyond the other one is not pulled in.
void RaiseWater() {
  if (modConfig.WaterLevel < kMaxWaterLevel)
    SetWaterLevel(std::min(modConfig.WaterLevel + kWaterStep, kMaxWaterLevel));
}

void LowerWater() {
  if (modConfig.WaterLevel > kMinWaterLevel)
    SetWaterLevel(std::max(modConfig.WaterLevel - kWaterStep, kMinWaterLevel));
}

void KeyUp(int key) {
  switch (key) {
    case kKeyTab:
      editor.drawObjectsInMappers = !editor.drawObjectsInMappers;
      break;
    case kKeyCtrl:
      editor.ctrlHeld = false;
      if (IsEditMode(EditMode::TerrainMapper) && terrain.tool == TerrainTool::Road) {
        FinishRoadPoints(shell.createRoadDialog);
      }
      break;
    case kKeyShift:
      editor.shiftHeld = false;
      break;
    case kKeyAlt:
      session.heldInput.keys.reset(kKeyAlt);
      break;
    case kKeyPageUp:
      RaiseWater();
      break;
    case kKeyPageDown:
      LowerWater();
      break;
    default:
      break;
  }
}

}  // namespace

std::span<const Shortcut> ShortcutTable() { return kShortcuts; }

void RouteKey(int key, bool down) {
  if (!editor.viewReady || !editor.levelLoaded) return;
  if (down) {
    KeyDown(key);
  } else {
    KeyUp(key);
  }
}

}  // namespace mw
