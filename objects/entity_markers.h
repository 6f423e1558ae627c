// The shapes that stand for game-mode entities in the 3D view. Used by their drawing.
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
// Forgets and frees all; they are made again when they are asked for.
void ReleaseEntityMarkers();

}  // namespace mw
