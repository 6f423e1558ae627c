// The one record of the Object Mapper: what can be placed, the meshes in memory, the static objects
// of the level, and what the mapper remembers.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/camera.h"
#include "core/fixed_string.h"
#include "core/history.h"
#include "core/vector3.h"
#include "objects/copied_objects.h"
#include "objects/mesh_cache.h"
#include "objects/object_browser.h"
#include "objects/object_catalogue.h"
#include "objects/object_textures.h"
#include "objects/scatter.h"
#include "objects/static_object.h"

namespace mw {

inline constexpr int kMaxStaticObjects = 2048;

enum class ObjectTool : std::int32_t {
  Select = 0,
  Translate = 1,
  RaiseLower = 2,
  RotateX = 3,
  RotateY = 4,
  RotateZ = 5,
  ScaleWidth = 6,
  ScaleHeight = 7,
  Scatter = 8
};

// The mesh that the Object Browser shows.
struct PreviewMesh {
  CachedMesh mesh;
  bool loaded = false;
  Vector3 boxA, boxB;
  float spin = 0;       // degrees
  Camera cameraBefore;  // of BeginPreview
};

struct ObjectStore {
  ObjectCatalogue catalogue;
  std::vector<CachedMesh> meshes;  // at most kMaxCachedMeshes
  ObjectTextureTable textures;
  BrowserFilter browserFilter;
  PreviewMesh preview;

  std::vector<StaticObject> objects;  // at most kMaxStaticObjects
  CopiedObjects copied;               // by Copy, for Paste

  Vector3 CursorPoint;     // view coordinates; the point of the scene under the mouse
  Vector3 SelectionPivot;  // view coordinates
  std::int32_t hoveredObject = -1, lastHoveredObject = -1;

  // What the status bar was last told to name; other texts may have come since.
  std::string named;
  bool namedIsHovered = false;
  HeldStep dragStep;        // of the history: what the mouse drags
  std::string draggedText;  // what it says of what is being dragged

  ObjectTool tool = ObjectTool::Select;
  Scatter scatter;
  bool toolsEnabled = false;           // Translate to RotateZ can be chosen
  bool pressChangedSelection = false;  // by the Translate tool, until the button goes up
  bool pressedOnItem = false;          // the same, until the mouse is moved away
  ViewMode viewMode = ViewMode::BoundingBox;
  bool showStandardMeshes = true, showTreeMeshes = true;
  bool showObjectSpawns = true, showSoldierSpawns = true, showControlPoints = true;
  bool snapToGround = true;
  int gridStep = 0;    // world units between the places that things are moved to; 0 = anywhere
  int turnStep = 15;   // degrees, of turning with Shift
  float turnRest = 0;  // degrees that the mouse turned, but no whole step yet
};

extern ObjectStore objectStore;

}  // namespace mw
