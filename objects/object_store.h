// The one record of the Object Mapper: what can be placed, the meshes in memory, the static objects
// of the level, and what the mapper remembers.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/fixed_string.h"
#include "core/vector3.h"
#include "objects/level_tree.h"
#include "objects/mesh_cache.h"
#include "objects/object_catalogue.h"
#include "objects/object_textures.h"
#include "objects/placement.h"

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
  ScaleHeight = 7
};

struct StaticObject : Placement {
  FixedString<64> name;
  std::int32_t catalogueIndex = -1;
  bool unknown = false;  // the catalogue does not have the name: drawn as a plain box
  Vector3 scale{1, 1, 1};
  bool scaleGiven = false;  // the level's file had a scale line
  Vector3 colour{1, 1, 1};
  bool colorGiven = false;
  std::array<std::uint8_t, 3> boxColour{};  // of standard meshes in the untextured view modes
  std::array<MeshListId, kViewModeCount> lists{};  // of its cached mesh
  std::int32_t meshIndex = -1;                     // in the mesh cache
  TreeItem treeItem = 0;
};

// The mesh that the Object Browser shows.
struct PreviewMesh {
  CachedMesh mesh;
  bool loaded = false;
  Vector3 boxA, boxB;
  float spin = 0;  // degrees
};

struct ObjectStore {
  ObjectCatalogue catalogue;
  std::vector<CachedMesh> meshes;  // at most kMaxCachedMeshes
  ObjectTextureTable textures;
  PreviewMesh preview;

  std::vector<StaticObject> objects;  // at most kMaxStaticObjects

  Vector3 CursorPoint;     // view coordinates; the point of the scene under the mouse
  Vector3 SelectionPivot;  // view coordinates
  std::int32_t hoveredObject = -1, lastHoveredObject = -1;

  // What the status bar was last told to name; other texts may have come since.
  std::string named;
  bool namedIsHovered = false;
  std::string draggedText;  // what it says of what is being dragged

  ObjectTool tool = ObjectTool::Select;
  bool toolsEnabled = false;           // Translate to RotateZ can be chosen
  bool pressChangedSelection = false;  // by the Translate tool, until the button goes up
  bool pressedOnItem = false;          // the same, until the mouse is moved away
  ViewMode viewMode = ViewMode::BoundingBox;
  bool showStandardMeshes = true, showTreeMeshes = true;
  bool showObjectSpawns = true, showSoldierSpawns = true, showControlPoints = true;
  bool snapToGround = true;
};

extern ObjectStore objectStore;

// Puts the record back to what it is at program start, without touching GL.
void ResetObjectStore();

}  // namespace mw
