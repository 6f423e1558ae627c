// What the level tree does when an item is selected, activated, deleted or dragged into the view.
// The panel calls these; it knows no more than its items.
#pragma once

#include <vector>

#include "objects/level_tree.h"

namespace mw {

// The user chose the item: selects what it stands for and moves the camera there. Does nothing
// while the editor itself changes the tree.
void LevelTreeItemSelected(TreeItem item);
// The user chose several items, or changed what is chosen by some: selects what they stand for, and
// leaves the camera where it is. Items that stand for nothing in the level are passed over; if all
// do, nothing changes. No items: nothing is selected any more.
void LevelTreeItemsSelected(const std::vector<TreeItem>& items);
// Double click or Enter. False when the item opens nothing (Enter then expands or collapses it).
bool ActivateLevelTreeItem(TreeItem item);
// The Delete key. True when the item that takes the deleted one's place is chosen in turn.
bool DeleteLevelTreeItem(TreeItem item);
// The same with several items: the objects and entities among them go, and templates without
// spawns.
void DeleteLevelTreeItems(const std::vector<TreeItem>& items);

bool CanDragLevelTreeItem(TreeItem item);
// A drag begins: the Object Mapper becomes the mode and nothing is selected.
void BeginLevelTreeDrag();
// Released over the 3D view at this pixel of it.
void DropLevelTreeItem(TreeItem item, int x, int y);

// Choices of the game mode filter, in the order of its list.
inline constexpr int kModeFilterChoices = 4;
// Shows the entities of the choice's modes. No effect for a choice that the list does not have.
void ChooseModeFilter(int choice);

}  // namespace mw
