// The Object Mapper's tools: selecting, moving, raising, turning and deleting static objects and
// entities with the mouse in the 3D view. Pixels count from the view's top left.
#pragma once

#include <vector>

#include "objects/level_tree.h"
#include "objects/object_controls.h"
#include "objects/placement.h"

namespace mw {

// Buttons of the mapper's toolbar. A disabled tool is not chosen.
void PressObjectControl(ObjectControl control);
// After each change of the selection. Whether anything is selected: chooses the Select tool and
// enables or disables the others; the tree shows the selection.
void UpdateToolButtons(bool anySelected);

// The same after a change that the chosen tool may go on with.
void KeepToolFor(bool anySelected);

// CursorPoint becomes the point of the scene drawn under the pixel, if there is one.
void PickCursorPoint(int x, int y);
// The same, and what is hovered there: the last frame may be from before the mouse came.
void PickHovered(int x, int y);
void DeselectAll();
// The SelectionPivot of what is selected, and every selected item's offset from it.
void ComputePivot();
// Selects one object or entity alone and shows its item in the tree.
void SelectOnly(Placement& item, TreeItem treeItem);

void ToggleSelectAtCursor(int x, int y);
// An item that is not selected becomes so and can be moved at once; on empty ground the selection
// jumps to the pixel.
void PressTranslate(int x, int y);
// The button went up. After a press that changed the selection the tool is Select again.
void ReleaseObjects();
// A move with the button held, by the current tool.
void DragObjects(int x, int y, int previousX, int previousY);
// Opens the hovered and selected item's dialog; false when the double click means something else.
bool EditHovered();
void DeleteSelected();
// Deletes the objects and entities with these items of the tree, and then the templates.
void DeleteByTreeItems(const std::vector<TreeItem>& items);

}  // namespace mw
