// The points of the height field that the Point Manipulation tool has selected, and the neighbours
// that auto-smoothing moves along with them.
#pragma once

namespace mw {

// Lets the selection box reach to vertex (i, j).
void GrowSelectionBox(int i, int j);

// Toggles every vertex with data between the ground points under view pixels (x0, y0) and (x1, y1),
// which are opposite corners. Nothing happens when one of the pixels shows no point.
void SelectRectangle(int x0, int y0, int x1, int y1);

// Raises the selected points by `delta` height units; with auto-smoothing their neighbours follow.
void MoveSelection(float delta);

void ClearSelection();

// Gives every neighbour of a selected point its distance in whole cells as weight, as far as the
// smoothing range reaches, and lets the selection box cover them.
void ComputeSmoothingWeights();

}  // namespace mw
