#include "app/level_tree_actions.h"

namespace mw {

void LevelTreeItemSelected(TreeItem) {}
bool ActivateLevelTreeItem(TreeItem) { return false; }
void DeleteLevelTreeItem(TreeItem) {}
bool CanDragLevelTreeItem(TreeItem) { return false; }
void BeginLevelTreeDrag() {}
void DropLevelTreeItem(TreeItem, int, int) {}
void ChooseModeFilter(int) {}

}  // namespace mw
