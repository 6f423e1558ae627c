// Drawing of game-mode entities: markers, links to control points, rings.
#pragma once

namespace mw {

// The entities that are shown; finds the hovered one and shows its name.
void DrawEntities();
// Finds the hovered one without a frame.
void FindHoveredEntity();

}  // namespace mw
