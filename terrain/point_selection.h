// The points of the height field that the Point Manipulation tool has selected, and the neighbours
// that auto-smoothing moves along with them.
#pragma once

namespace mw {

// Lets the selection box reach to vertex (i, j).
void GrowSelectionBox(int i, int j);

// Picks, and toggles the vertex with data that is nearest to the point of the ground under the view
// pixel.
void ToggleVertexUnderCursor(int x, int y);
// Picks, and selects the nearest vertex: where the button is pressed, and then all vertices that
// the way from the last pick passes.
void StartSelecting(int x, int y);
void SelectOnTheWayTo(int x, int y);

// Toggles every vertex with data that the view shows between two pixels: the left upper one and the
// right lower one.
void SelectRectangle(int x0, int y0, int x1, int y1);

// Raises the selected points by `delta` height units; with auto-smoothing their neighbours follow.
void MoveSelection(float delta);

void ClearSelection();

// Gives every neighbour of a selected point its distance in whole cells as weight, as far as the
// smoothing range reaches, and lets the selection box cover them.
void ComputeSmoothingWeights();

}  // namespace mw
