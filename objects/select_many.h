// Selecting many objects and entities at once in the Object Mapper. What is hidden is never
// selected.
#pragma once

namespace mw {

int SelectedCount();
// Selects, besides what is selected, all objects that one of the selected has the name of, all
// spawns of the same templates, and all soldier spawns or control points when one of them is
// selected.
void SelectAllOfThisKind();
// Selects what is not, and only that.
void InvertSelection();
// Selects what stands within a rectangle of the view, besides what is selected. View pixels, the
// sides included; x0 <= x1, y0 <= y1.
void SelectInRectangle(int x0, int y0, int x1, int y1);

}  // namespace mw
