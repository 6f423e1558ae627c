// The shapes that stand in the 3D view for what has no mesh: game-mode entities, and objects that
// the catalogue does not have. Used by their drawing.
#pragma once

#include "objects/entities.h"
#include "objects/mesh_drawing.h"

namespace mw {

struct MarkerLists {
  MeshListId faces = 0, edges = 0;  // to be drawn in colours of their own
};

// The marker of a kind. Made at the first call; the context must be current.
const MarkerLists& MarkerOf(EntityKind kind);
// A flat ring of lines with an outer radius of 1 and an inner one of 0.9, about the vertical axis.
MeshListId RingList();
// A plain box on the ground.
inline constexpr Vector3 kPlainBoxLow{-1, 0, -1}, kPlainBoxHigh{1, 2, 1};
MeshListId PlainBoxList();
// Forgets and frees all; they are made again when they are asked for.
void ReleaseEntityMarkers();

}  // namespace mw
