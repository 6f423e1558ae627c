#include "objects/mesh_cache.h"

namespace mw {

bool LoadStandardMesh(int, CachedMesh&) { return false; }
bool LoadTreeMesh(int, CachedMesh&) { return false; }
void CacheMeshForObject(int, StaticObject&) {}
int FindCachedMesh(std::string_view) { return -1; }
int FindMeshByTreeItem(TreeItem) { return -1; }
void FreeMesh(CachedMesh&) {}
void ClearMeshes() {}

}  // namespace mw
