// Pictures of meshes on the graphics card. A picture is kept in vertex and index buffers that are
// filled once, when its mesh is loaded, and is called by its identifier as often as it stands in
// the level.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/vector3.h"

namespace mw {

struct MeshVertex {
  Vector3 position;
  float u = 0, v = 0;
  friend bool operator==(const MeshVertex&, const MeshVertex&) = default;
};

// One run of primitives with one texture.
struct MeshSurface {
  enum class Kind { Triangles, Lines };
  Kind kind = Kind::Triangles;
  unsigned texture = 0;  // GL name; 0 draws untextured
  float lineWidth = 1;
  std::vector<MeshVertex> vertices;
  std::vector<std::uint32_t> indices;  // 3 for a triangle, 2 for a line; all below vertices.size()
};

// Identifier of a mesh's picture; 0 is none.
using MeshListId = std::uint32_t;

// 0 when there is no context, nothing to draw or no room on the card.
MeshListId CreateMeshList(std::span<const MeshSurface> surfaces);
void DeleteMeshList(MeshListId list);  // no effect for 0
// Deletes every picture, before the context goes. Their identifiers draw nothing from then on.
void DeleteAllMeshLists();
// Draws the picture with the current matrix and colour. Does nothing for 0.
void CallMeshList(MeshListId list);

// The same in two steps, for those who draw one picture many times: binding once, drawing often.
void BindMeshList(MeshListId list);
void DrawBoundMeshList();
void UnbindMeshList();

}  // namespace mw
