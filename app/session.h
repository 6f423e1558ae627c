// What the shell remembers between events, apart from the flags that all houses share (`editor`).
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "app/keys.h"
#include "app/mini_map.h"
#include "app/mini_map_look.h"
#include "app/recovery.h"
#include "core/editor_state.h"
#include "core/vector3.h"
#include "platform/modules.h"

namespace mw {

// What decides which point of the scene is under a pixel.
struct Outlook {
  Vector3 position;
  float yaw = 0, pitch = 0;
  CameraMode cameraMode = CameraMode::Fly;
  EditMode mode = EditMode::TerrainMapper;
  friend bool operator==(const Outlook&, const Outlook&) = default;
};

// The backup whose name the status bar is to show.
struct NewBackup {
  std::string name;         // empty: none
  std::uint32_t since = 0;  // milliseconds
};

// An item of the level tree on its way into the view; there is only one at a time.
struct TreeItemDrag {
  bool underWay = false;
  std::optional<std::array<int, 2>> droppedAt;  // view pixels
};

struct Session {
  Module surfacePlugin, materialPlugin;
  HeldInput heldInput;
  Outlook pictured;  // that of the frame drawn last
  TreeItemDrag treeItemDrag;
  MiniMapWindowPicture miniMapWindow;
  MiniMapLook miniMapLook;
  Recovery recovery;
  NewBackup newBackup;
  int undoPauses = 0;             // how many UndoPause live
  std::uint32_t nextReading = 0;  // milliseconds; when the status bar's reading is due
};
extern Session session;

// Puts `shell` and `session` back to what they are at program start.
void ResetAppState();
// The same for every house, the lowest first. For tests; the program starts like this.
void ResetProgramState();

}  // namespace mw
