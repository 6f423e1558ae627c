// A static object of the level.
#pragma once

#include <array>
#include <cstdint>

#include "core/fixed_string.h"
#include "core/vector3.h"
#include "objects/level_tree.h"
#include "objects/mesh_cache.h"
#include "objects/placement.h"

namespace mw {

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

}  // namespace mw
