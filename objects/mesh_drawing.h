// Pictures of meshes on the graphics card. A picture is kept in vertex and index buffers that are
// filled once, when its mesh is loaded, and is called by its identifier as often as it stands in
// the level.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "objects/mesh_vertex.h"
#include "objects/pixel_coverage.h"

namespace mw {

// One run of primitives with one texture.
struct MeshSurface {
  enum class Kind { Triangles, Lines };
  Kind kind = Kind::Triangles;
  unsigned texture = 0;  // GL name; 0 draws untextured
  float lineWidth = 1;
  std::vector<MeshVertex> vertices;
  std::vector<std::uint32_t> indices;  // 3 for a triangle, 2 for a line; all below vertices.size()
};

using MeshColour = std::array<std::uint8_t, 3>;  // red, green, blue

// Identifier of a mesh's picture; 0 is none.
using MeshListId = std::uint32_t;

// 0 when there is no context, nothing to draw or no room on the card.
MeshListId CreateMeshList(std::span<const MeshSurface> surfaces);
void DeleteMeshList(MeshListId list);  // no effect for 0
// Deletes every picture, before the context goes. Their identifiers draw nothing from then on.
void DeleteAllMeshLists();
// The picture's triangles, three indices each, until it is deleted; none of a picture with lines.
struct MeshTriangles {
  std::span<const MeshVertex> vertices;
  std::span<const std::uint32_t> indices;
};
MeshTriangles TrianglesOf(MeshListId list);
// Draws the picture with the current matrix and colour. Does nothing for 0.
void CallMeshList(MeshListId list);

// The same in two steps, for those who draw one picture many times: binding once, drawing often.
void BindMeshList(MeshListId list);
void DrawBoundMeshList();
// With this matrix and colour; both may or may not be current afterwards. Of a mesh that is small
// on the screen only the triangles that can show are drawn, at the latest when it is unbound.
void DrawBoundMeshListAt(const Matrix4& modelView, const MeshColour& colour, const PixelGrid& grid);
void UnbindMeshList();

}  // namespace mw
