// What the graphics card relies on in a mesh.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "objects/mesh_reader.h"

inline void RequireDrawable(const mw::MeshSurface& surface) {
  const bool lines = surface.kind == mw::MeshSurface::Kind::Lines;
  if (surface.indices.size() % (lines ? 2 : 3) != 0) std::abort();
  for (const std::uint32_t index : surface.indices) {
    if (index >= surface.vertices.size()) std::abort();
  }
}

inline void RequireDrawable(const mw::MeshGeometry& mesh) {
  for (const mw::Vector3& corner : {mesh.boxA, mesh.boxB}) {
    for (const float value : {corner.x, corner.y, corner.z}) {
      if (!std::isfinite(value)) std::abort();
    }
  }
  RequireDrawable(mesh.collision);
  for (const mw::MaterialSurface& surface : mesh.surfaces) RequireDrawable(surface.surface);
}
