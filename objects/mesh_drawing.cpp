#include "objects/mesh_drawing.h"

namespace mw {

MeshListId CreateMeshList(std::span<const MeshSurface>) { return 0; }
void DeleteMeshList(MeshListId) {}
void CallMeshList(MeshListId) {}
void BindMeshList(MeshListId) {}
void DrawBoundMeshList() {}
void UnbindMeshList() {}

}  // namespace mw
