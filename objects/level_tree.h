// The level tree: what the level contains, as items with a text under each other. The items are
// kept here; the panel beside the 3D view shows them. Records of objects, meshes and entities hold
// the handle of their own item.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace mw {

// Handle of an item; 0 is none. A handle is never used twice.
using TreeItem = std::uint32_t;

// What shows the items. The panel fills it in; one that is not filled in shows nothing.
struct LevelTreeView {
  std::function<void()> clear = [] {};
  // Before another item of the parent; before 0: as the last one.
  std::function<void(TreeItem item, TreeItem parent, TreeItem before, const std::string& text)>
      insert = [](TreeItem, TreeItem, TreeItem, const std::string&) {};
  std::function<void(TreeItem item, const std::string& text)> setText = [](TreeItem,
                                                                           const std::string&) {};
  std::function<void(TreeItem item)> remove = [](TreeItem) {};
  // Selects the item alone and scrolls to it; 0 clears the selection.
  std::function<void(TreeItem item)> select = [](TreeItem) {};
  // Selects these items and no others, without scrolling.
  std::function<void(const std::vector<TreeItem>& items)> selectAll =
      [](const std::vector<TreeItem>&) {};
  std::function<bool(TreeItem item)> isUnfolded = [](TreeItem) { return false; };
  std::function<void(TreeItem item)> unfold = [](TreeItem) {};
  // "Show All" is chosen again.
  std::function<void()> resetFilter = [] {};
};

struct LevelTree {
  struct FixedItems {
    TreeItem world = 0, lighting = 0, shadows = 0, fog = 0, water = 0;
    TreeItem teams = 0;
    TreeItem controlPoints = 0, newControlPoint = 0;
    TreeItem soldierSpawns = 0, newSoldierSpawn = 0;
    TreeItem objectSpawns = 0, addTemplate = 0;
    TreeItem staticObjects = 0, standardMeshes = 0, treeMeshes = 0;
    TreeItem cachedObjects = 0, addNewObject = 0;
  };
  struct Item {
    TreeItem parent = 0;
    std::vector<TreeItem> children;
    std::string text;
    int number = 1;  // among the items with this text under this parent
  };

  FixedItems fixed;
  LevelTreeView view;
  std::unordered_map<TreeItem, Item> items;
  // Whether the numbers from 1 on are taken, by parent and text.
  std::map<std::pair<TreeItem, std::string>, std::vector<bool>> numbers;
  TreeItem lastItem = 0;

  bool notificationsEnabled = true;      // false while the editor itself selects or moves items
  bool suppressObjectSelection = false;  // set during deletions
  bool userIsChoosing = false;           // the selected items stay as the user chooses them
};

extern LevelTree levelTree;

// Deletes every item, makes the fixed ones, chooses "Show All" and sets the mode filter to it.
void BuildTree();

// Items with the same text under the same parent are shown with numbers: the first one without,
// then (2), (3) and so on; a number that comes free is given away again. `before`: another item of
// the parent; 0 for a place behind all of them.
TreeItem InsertItem(TreeItem parent, std::string_view text, TreeItem before = 0);
// No effect for an item that is not there; an unchanged text is not shown again.
void SetItemText(TreeItem item, std::string_view text);
// Deletes the item with all below it. No effect for 0 and for an item that is gone.
void DeleteItem(TreeItem item);
// Selects the item and scrolls to it, or clears the selection for 0. The tree does not act on it.
void SelectItem(TreeItem item);
// Selects these items alone, where they are in the tree, unless the user is choosing items himself.
// The tree does not act on it.
void SelectItems(const std::vector<TreeItem>& items);

// 0 for an item that is not there.
TreeItem ParentOf(TreeItem item);
// As it is shown, with its number; "" for an item that is not there.
std::string NumberedText(TreeItem item);
// In their places; none of an item that is not there.
std::vector<TreeItem> ChildrenOf(TreeItem parent);

}  // namespace mw
