// Static objects to draw without a game, and the plain way to draw them: one display list call per
// object, in the order of their records, with GL's own transformations. For tests and benchmarks.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "objects/mesh_drawing.h"
#include "objects/object_store.h"

namespace mw {

using PictureColour = std::array<std::uint8_t, 3>;

// Colours of the sides that a mesh of boxes turns to +x, -x, +y, -y, +z and -z.
inline constexpr std::array<PictureColour, 6> kSideColours{
    {{200, 40, 40}, {40, 40, 200}, {220, 220, 220}, {60, 60, 60}, {220, 180, 40}, {120, 40, 160}}};

// A texture of six stripes in these colours. Needs the GL context, as all that follows.
unsigned MakeSideTexture();

// Appends a box between two corners; its sides have the colours of MakeSideTexture.
void AddBox(MeshSurface& surface, const Vector3& low, const Vector3& high);
// The letter F, 4 wide, 5 high and 1 deep, with the foot of its stem at the origin. Seen from +z it
// reads right.
MeshSurface LetterF(unsigned texture);
// A surface of this many triangles over a ball, as dense as a real mesh.
MeshSurface Ball(int triangles, float radius, unsigned texture);

// A picture for the program, and the same as a display list for the plain way.
MeshListId MakeSceneMesh(std::span<const MeshSurface> surfaces);
void DeleteSceneMeshes();

// A catalogue entry with this box; its index.
int AddSceneEntry(MeshKind kind, const Vector3& boxA, const Vector3& boxB);
// An object that shows the picture in all view modes.
StaticObject& AddSceneObject(int entry, MeshListId list, const Vector3& levelPosition);

namespace plain {
void DrawStaticObjects();
}

}  // namespace mw
