// The flags and values that all houses of the editor share: one record, reached directly. Each
// group names who owns it, that is, who changes it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/camera.h"
#include "core/fixed_string.h"
#include "core/history.h"

namespace mw {

enum class EditMode : int { TerrainMapper = 1, ObjectMapper = 2, MaterialMapper = 3 };

struct EditorState {
  // Start-up.
  float installedGameVersion = 0;
  float requiredGameVersion = 1.04f;
  bool running = true;
  // Where what the program brings along and never writes lies (platform/disk.h); empty when all of
  // it is in the working folder.
  std::string sharedFolder;

  // Level lifecycle.
  bool levelLoaded = false;
  bool levelModified = false;
  std::array<float, 3> savedCameraPosition{};  // x stored as WorldSize - x
  bool levelHasWater = true;

  History history;  // of the open level; core/history.h owns it

  // View commands.
  bool ShowGrid = true;
  bool ShowTextures = false;
  bool ReliefShading = false;  // textured ground is the darker the steeper it is

  // View and frames.
  bool viewReady = false;
  float viewWidth = 1, viewHeight = 1;  // pixels of the picture (device pixels)
  float frameSeconds = 0.01f;           // of the previous frame, at least 0.01; 0.1 after a rest
  std::uint32_t lastFrameTime = 0;      // milliseconds since start
  int framesThisSecond = 0, shownFps = 0;
  std::uint32_t nextFpsUpdate = 0;
  bool browserPreviewActive = false;

  // Camera.
  CameraMode cameraMode = CameraMode::Fly;
  float moveSpeed = 20;  // world units per second, 20 ... 100

  // Modes and input.
  EditMode editMode = EditMode::TerrainMapper;
  bool leftHeld = false, rightHeld = false;
  bool ctrlHeld = false, shiftHeld = false;
  int pressX = 0, pressY = 0;          // view pixels of the last button press
  int lastMouseX = 0, lastMouseY = 0;  // view pixels of the last mouse event
  bool pastePending = false;
  bool somethingCopied = false;
  bool drawObjectsInMappers = false;
  bool rubberBandActive = false;
  struct {
    int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  } rubberBand;  // view pixels

  std::uint32_t gameRandom = 1;  // where the game's random numbers are (core/game_random.h)

  // The texture set that generated surfaces take their pictures from.
  FixedString<64> textureSetName = "Default";
};

extern EditorState editor;

bool IsEditMode(EditMode mode);

// Puts `editor`, `camera` and `hooks` back to what they are at program start; steps that are still
// held end nothing. For tests.
void ResetCoreState();

}  // namespace mw
