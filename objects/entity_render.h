// Drawing of game-mode entities: markers, links to control points, rings.
#pragma once

namespace mw {

// The entities that are shown.
void DrawEntities();
// Finds the one under the cursor, the last one of several.
void FindHoveredEntity();

}  // namespace mw
