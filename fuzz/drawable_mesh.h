// What the graphics card relies on in a mesh.
#pragma once

#include <cmath>
#include <cstdint>

#include "fuzz/require.h"
#include "objects/mesh_reader.h"

inline void RequireDrawable(const mw::MeshSurface& surface) {
  const bool lines = surface.kind == mw::MeshSurface::Kind::Lines;
  Require(surface.indices.size() % (lines ? 2 : 3) == 0);
  for (const std::uint32_t index : surface.indices) {
    Require(index < surface.vertices.size());
  }
}

inline void RequireDrawable(const mw::MeshGeometry& mesh) {
  for (const mw::Vector3& corner : {mesh.boxA, mesh.boxB}) {
    for (const float value : {corner.x, corner.y, corner.z}) {
      Require(std::isfinite(value));
    }
  }
  RequireDrawable(mesh.collision);
  for (const mw::MaterialSurface& surface : mesh.surfaces) RequireDrawable(surface.surface);
}
