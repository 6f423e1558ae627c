#include "objects/mesh_cache.h"

#include <algorithm>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include "core/text.h"
#include "data/game_file.h"
#include "data/mod_config.h"
#include "objects/mesh_reader.h"
#include "objects/object_store.h"
#include "objects/shader_file.h"
#include "platform/gl_context.h"

namespace mw {
namespace {

std::string MeshPath(std::string_view contentPath, std::string_view mesh,
                     std::string_view extension) {
  std::string path = modConfig.GamePath.String() + std::string(contentPath);
  if (!path.ends_with('\\') && !path.ends_with('/')) path += '\\';
  return path.append(mesh).append(extension);
}

MeshListId& ListOf(CachedMesh& mesh, ViewMode mode) {
  return mesh.lists[static_cast<std::size_t>(mode)];
}

// Keeps one reference to the last of the material's textures. False, with none kept, when one of
// them cannot be loaded.
bool AcquireTextures(const ShaderMaterial& material, Subshader& subshader) {
  for (const std::string& name : material.textures) {
    ReleaseObjectTexture(std::exchange(subshader.textureSlot, -1));
    const auto acquired = AcquireObjectTexture(name);
    if (!acquired) return false;
    subshader.textureSlot = acquired->slot;
  }
  return true;
}

void ReleaseSubshaders(CachedMesh& mesh) {
  for (; !mesh.subshaders.empty(); mesh.subshaders.pop_back()) {
    ReleaseObjectTexture(mesh.subshaders.back().textureSlot);
  }
}

// A material with a texture that cannot be loaded is left out. False when a table is full.
bool AddSubshader(const ShaderMaterial& material, CachedMesh& mesh) {
  if (mesh.subshaders.size() >= kMaxSubshaders) return false;
  Subshader subshader;
  subshader.name = material.name;
  subshader.transparent = material.transparent;
  subshader.textureFade = material.textureFade;
  subshader.twoSided = material.twoSided;
  if (!AcquireTextures(material, subshader)) return !objectStore.textures.IsFull();
  mesh.subshaders.push_back(subshader);
  return true;
}

// A missing or malformed shader file leaves the mesh without sub-shaders. False when a table is
// full.
bool LoadShaderFile(std::string_view meshName, CachedMesh& mesh) {
  const auto file = GameFileOpen(MeshPath(modConfig.StandardMeshPath, meshName, ".rs"), "r");
  if (!file) return true;
  const std::string_view text(reinterpret_cast<const char*>(file->data.data()), file->data.size());
  bool hasRoom = true;
  const bool sound = ParseShaderFile(text, [&](const ShaderMaterial& material) {
    hasRoom = hasRoom && AddSubshader(material, mesh);
  });
  if (!sound) ReleaseSubshaders(mesh);
  return hasRoom;
}

// The sub-shader of that name, else the first; null when the mesh has none.
const Subshader* FindSubshader(const CachedMesh& mesh, std::string_view material) {
  if (mesh.subshaders.empty()) return nullptr;
  const auto found = std::ranges::find_if(mesh.subshaders, [&](const Subshader& subshader) {
    return EqualNoCase(subshader.name, material);
  });
  return found == mesh.subshaders.end() ? &mesh.subshaders.front() : &*found;
}

std::vector<MeshSurface> DrawnSurfaces(std::vector<MaterialSurface>& materials,
                                       const CachedMesh& mesh) {
  std::vector<MeshSurface> drawn;
  for (MaterialSurface& material : materials) {
    const Subshader* const subshader = FindSubshader(mesh, material.material);
    if (subshader && subshader->textureFade) continue;
    if (subshader) material.surface.texture = TextureInSlot(subshader->textureSlot);
    drawn.push_back(std::move(material.surface));
  }
  return drawn;
}

// The box becomes the entry's too. The collision mesh, where there is one, has its picture.
void TakeBoxAndCollision(const MeshGeometry& geometry, CatalogueEntry& entry, CachedMesh& mesh) {
  entry.boxA = mesh.boxA = geometry.boxA;
  entry.boxB = mesh.boxB = geometry.boxB;
  const MeshSurface box = BoxFaces(geometry.boxA, geometry.boxB);
  ListOf(mesh, ViewMode::BoundingBox) = CreateMeshList({&box, 1});
  ListOf(mesh, ViewMode::CollisionMesh) = CreateMeshList({&geometry.collision, 1});
}

bool FillStandardMesh(CatalogueEntry& entry, CachedMesh& mesh) {
  const auto file = GameFileOpen(MeshPath(modConfig.StandardMeshPath, entry.meshName, ".sm"), "rb");
  if (!file) return false;
  auto geometry = ReadStandardMesh(file->data);
  if (!geometry || !LoadShaderFile(entry.meshName, mesh)) return false;
  TakeBoxAndCollision(*geometry, entry, mesh);
  MeshListId& detail = ListOf(mesh, ViewMode::DetailMesh);
  detail = geometry->hasDetail ? CreateMeshList(DrawnSurfaces(geometry->surfaces, mesh))
                               : ListOf(mesh, ViewMode::CollisionMesh);
  ListOf(mesh, ViewMode::TexturedMesh) = detail;
  return true;
}

// The texture's GL name in `texture`, 0 when it cannot be loaded. False when the table is full.
bool AcquireTreeTexture(std::string_view name, CachedMesh& mesh, unsigned& texture) {
  const auto acquired = AcquireObjectTexture(name);
  texture = acquired ? acquired->texture : 0;
  if (!acquired) return !objectStore.textures.IsFull();
  mesh.treeTextures.push_back(acquired->slot);
  return true;
}

bool AcquireTreeTextures(TreeMeshGeometry& geometry, CachedMesh& mesh) {
  const auto forSurface = [&](MaterialSurface& drawn) {
    return AcquireTreeTexture(drawn.material, mesh, drawn.surface.texture);
  };
  unsigned notDrawn = 0;
  const auto forOther = [&](const std::string& name) {
    return AcquireTreeTexture(name, mesh, notDrawn);
  };
  return std::ranges::all_of(geometry.surfaces, forSurface) &&
         std::ranges::all_of(geometry.otherTextures, forOther);
}

bool FillTreeMesh(CatalogueEntry& entry, CachedMesh& mesh) {
  const auto file = GameFileOpen(MeshPath(modConfig.TreeMeshPath, entry.meshName, ".tm"), "rb");
  if (!file) return false;
  auto geometry = ReadTreeMesh(file->data);
  if (!geometry) return false;
  if (!geometry->shown) return true;
  if (!AcquireTreeTextures(*geometry, mesh)) return false;
  TakeBoxAndCollision(*geometry, entry, mesh);
  const MeshListId detail = CreateMeshList(DrawnSurfaces(geometry->surfaces, mesh));
  ListOf(mesh, ViewMode::DetailMesh) = ListOf(mesh, ViewMode::TexturedMesh) = detail;
  return true;
}

// `fill` may leave a part of a mesh behind when it fails.
bool LoadMesh(int index, CachedMesh& mesh, bool (*fill)(CatalogueEntry&, CachedMesh&)) {
  mesh = CachedMesh{};
  if (index < 0 || index >= objectStore.catalogue.entryCount) return false;
  CatalogueEntry& entry = objectStore.catalogue.entries[static_cast<std::size_t>(index)];
  mesh.name = entry.name;
  mesh.meshName = entry.meshName;
  MakeViewContextCurrent();
  try {
    if (fill(entry, mesh)) return true;
  } catch (const std::bad_alloc&) {
    // A file too large for this machine is refused like a broken one.
  }
  FreeMesh(mesh);
  return false;
}

// Deletes each list once, however many view modes show it.
void DeleteLists(CachedMesh& mesh) {
  MakeViewContextCurrent();
  std::ranges::sort(mesh.lists);
  MeshListId deleted = 0;
  for (const MeshListId list : mesh.lists) {
    if (list != deleted) DeleteMeshList(list);
    deleted = list;
  }
  mesh.lists = {};
}

}  // namespace

bool LoadStandardMesh(int entry, CachedMesh& mesh) {
  return LoadMesh(entry, mesh, FillStandardMesh);
}

bool LoadTreeMesh(int entry, CachedMesh& mesh) { return LoadMesh(entry, mesh, FillTreeMesh); }

void CacheMeshForObject(int index, StaticObject& object) {
  object.lists = {};
  object.meshIndex = 0;
  ObjectCatalogue& catalogue = objectStore.catalogue;
  if (index < 0 || index >= catalogue.entryCount) return;
  if (objectStore.meshes.size() >= kMaxCachedMeshes) return;
  CatalogueEntry& entry = catalogue.entries[static_cast<std::size_t>(index)];
  if (entry.meshFailed) return;
  CachedMesh mesh;
  const bool loaded = entry.meshKind == MeshKind::TreeMesh ? LoadTreeMesh(index, mesh)
                                                           : LoadStandardMesh(index, mesh);
  entry.meshFailed = !loaded;
  if (!loaded) return;
  mesh.treeItem = InsertItem(levelTree.fixed.cachedObjects, entry.name);
  object.lists = mesh.lists;
  object.meshIndex = static_cast<std::int32_t>(objectStore.meshes.size());
  objectStore.meshes.push_back(std::move(mesh));
}

int FindCachedMesh(std::string_view name) {
  if (name.empty()) return -1;
  const auto& meshes = objectStore.meshes;
  const auto found = std::ranges::find_if(meshes, [&](const CachedMesh& mesh) {
    return EqualNoCase(mesh.name, name) || EqualNoCase(mesh.meshName, name);
  });
  return found == meshes.end() ? -1 : static_cast<int>(found - meshes.begin());
}

int FindMeshByTreeItem(TreeItem item) {
  if (item == 0) return -1;
  const auto& meshes = objectStore.meshes;
  const auto found = std::ranges::find(meshes, item, &CachedMesh::treeItem);
  return found == meshes.end() ? -1 : static_cast<int>(found - meshes.begin());
}

void FreeMesh(CachedMesh& mesh) {
  DeleteItem(mesh.treeItem);
  DeleteLists(mesh);
  for (; !mesh.treeTextures.empty(); mesh.treeTextures.pop_back()) {
    ReleaseObjectTexture(mesh.treeTextures.back());
  }
  ReleaseSubshaders(mesh);
  mesh = CachedMesh{};
}

void ClearMeshes() {
  for (; !objectStore.meshes.empty(); objectStore.meshes.pop_back()) {
    FreeMesh(objectStore.meshes.back());
  }
  for (CatalogueEntry& entry : objectStore.catalogue.entries) entry.meshFailed = false;
  ClearObjectTextures();
}

}  // namespace mw
