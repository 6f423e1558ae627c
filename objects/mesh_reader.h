// Geometry from the bytes of mesh files: standard meshes (.sm) and tree meshes (.tm), as far as the
// editor shows them. docs/formats.md describes the files. No file access and no GL; the mesh cache
// makes pictures of what is read here.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/vector3.h"
#include "objects/mesh_drawing.h"

namespace mw {

// What is drawn with one material. Its texture is 0 until somebody finds it.
struct MaterialSurface {
  std::string material;  // a sub-shader's name in a standard mesh, a texture's in a tree mesh
  MeshSurface surface;
};

struct MeshGeometry {
  Vector3 boxA, boxB;     // corners of the bounding box
  MeshSurface collision;  // edges of the first collision mesh; empty without one
  std::vector<MaterialSurface> surfaces;
};

struct StandardMeshGeometry : MeshGeometry {
  bool hasDetail = false;  // has a level of detail, though perhaps without materials
};

struct TreeMeshGeometry : MeshGeometry {
  bool shown = false;                      // false, and nothing else read, for versions but 3
  std::vector<std::string> otherTextures;  // of the groups that are not drawn
};

// Nothing for a file that ends too early, whose indices point past its vertices or whose texture
// groups are too large. Coordinates that are not finite become 0. May throw std::bad_alloc, but
// asks for no more memory than the file's own bytes can fill.
std::optional<StandardMeshGeometry> ReadStandardMesh(std::span<const std::uint8_t> file);
std::optional<TreeMeshGeometry> ReadTreeMesh(std::span<const std::uint8_t> file);

// The six faces of the box that two corners span, looking outwards.
MeshSurface BoxFaces(const Vector3& a, const Vector3& b);

}  // namespace mw
