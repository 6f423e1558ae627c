// A corner of a mesh's triangles, for those who draw meshes.
#pragma once

#include "core/vector3.h"

namespace mw {

struct MeshVertex {
  Vector3 position;
  float u = 0, v = 0;
  friend bool operator==(const MeshVertex&, const MeshVertex&) = default;
};

}  // namespace mw
