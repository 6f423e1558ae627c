// Meshes of catalogue entries, loaded the first time they are needed and shared by all objects that
// show them.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "core/fixed_string.h"
#include "core/vector3.h"
#include "objects/level_tree.h"
#include "objects/mesh_drawing.h"

namespace mw {

inline constexpr int kMaxCachedMeshes = 512, kMaxSubshaders = 64;

enum class ViewMode : std::int32_t {
  BoundingBox = 0,
  CollisionMesh = 1,
  DetailMesh = 2,
  TexturedMesh = 3
};
inline constexpr int kViewModeCount = 4;

// A material of a mesh, from its shader file.
struct Subshader {
  FixedString<64> name;
  std::int32_t textureSlot = -1;  // in the ObjectTextureTable; -1 without a texture
  Vector3 tint{1, 1, 1};
  bool transparent = false, textureFade = false, twoSided = false;
};

struct CachedMesh {
  NameText name, meshName;
  Vector3 boxA, boxB;                              // bounding box
  std::array<MeshListId, kViewModeCount> lists{};  // by ViewMode; several may be the same
  std::vector<Subshader> subshaders;               // at most kMaxSubshaders
  std::vector<int> treeTextures;                   // slots that a tree's groups hold
  TreeItem treeItem = 0;                           // under "Cached Objects"
};

struct StaticObject;

// Fill the mesh and the entry's bounding box from the entry's files. False when the mesh file is
// missing or broken or a table is full; the mesh is then empty. What the mesh held before is
// forgotten, so free it first. Without a context its lists are 0.
bool LoadStandardMesh(int entry, CachedMesh& mesh);
bool LoadTreeMesh(int entry, CachedMesh& mesh);
// Gives the object the lists of a newly loaded mesh, or none when it cannot be loaded: then its
// files are not read again until the meshes are cleared.
void CacheMeshForObject(int entry, StaticObject& object);
// Index of the cached mesh with this name or mesh name, whatever the case, or -1.
int FindCachedMesh(std::string_view name);
// Index of the cached mesh with this tree item, or -1.
int FindMeshByTreeItem(TreeItem item);
// Removes the mesh's tree item, deletes its lists and releases its textures; the mesh is then
// empty.
void FreeMesh(CachedMesh& mesh);
// Frees every cached mesh and every object texture.
void ClearMeshes();

}  // namespace mw
