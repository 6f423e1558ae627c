// Leaves out the triangles of a mesh that cannot show: GL paints a triangle only where the centre
// of a pixel lies in it, and those of a mesh in the distance mostly fall between the centres. Used
// by the drawing of meshes.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/camera.h"
#include "core/vector3.h"
#include "objects/mesh_vertex.h"

namespace mw {

// How eye space becomes pixels.
struct PixelGrid {
  Matrix4 projection{};
  float left = 0, bottom = 0, width = 0, height = 0;  // of the viewport, pixels
  // False where GL looks at more of a pixel than its centre; then every triangle may show.
  bool onlyCentres = false;
};
// That of the current context, projection and viewport.
PixelGrid CurrentPixelGrid();

// A sphere around a mesh.
struct BoundingSphere {
  Vector3 middle;
  float radius = 0;
};
BoundingSphere BoundingSphereOf(std::span<const MeshVertex> vertices);

// Whether so many triangles, within the bounds, are so small on the screen that it pays to look for
// those that show. All of them then lie in front of the viewer. The matrix turns, mirrors and
// stretches the mesh along its own axes.
bool IsFinerThanPixels(std::size_t triangles, const BoundingSphere& bounds,
                       const Matrix4& modelView, const PixelGrid& grid);

// Where the vertices of such a mesh lie between the centres of pixels.
class PixelCoverage {
 public:
  void Project(std::span<const MeshVertex> vertices, const Matrix4& modelView,
               const PixelGrid& grid);
  // Appends the triangles, three indices each, that may show.
  void AppendShown(std::span<const std::uint32_t> triangles,
                   std::vector<std::uint32_t>& shown) const;

 private:
  // Column and row of the last pixel whose centre a vertex lies right of and above, counted from
  // the left and the bottom: with a little added to the vertex, and negative with a little taken
  // away.
  struct Place {
    std::int16_t column, row, minusColumn, minusRow;
  };
  std::vector<Place> places_;
};

}  // namespace mw
