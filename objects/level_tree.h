// The level tree: what the level contains, as items with a text under each other. The items are
// kept here; the panel beside the 3D view shows them. Records of objects, meshes and entities hold
// the handle of their own item.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace mw {

// Handle of an item; 0 is none. A handle is never used twice.
using TreeItem = std::uint32_t;

// What shows the items. The panel fills it in; one that is not filled in shows nothing.
struct LevelTreeView {
  std::function<void()> clear = [] {};
  std::function<void(TreeItem item, TreeItem parent, const std::string& text)> insert =
      [](TreeItem, TreeItem, const std::string&) {};
  std::function<void(TreeItem item, const std::string& text)> setText = [](TreeItem,
                                                                           const std::string&) {};
  std::function<void(TreeItem item)> remove = [](TreeItem) {};
  // 0 clears the selection.
  std::function<void(TreeItem item)> select = [](TreeItem) {};
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
    int children = 0;
    std::string text;
  };

  FixedItems fixed;
  LevelTreeView view;
  std::unordered_map<TreeItem, Item> items;
  TreeItem lastItem = 0;

  bool notificationsEnabled = true;      // false while the editor itself selects or moves items
  bool suppressObjectSelection = false;  // set during deletions
};

extern LevelTree levelTree;

// Deletes every item, makes the fixed ones, chooses "Show All" and sets the mode filter to it.
void BuildTree();

TreeItem InsertItem(TreeItem parent, std::string_view text);
// No effect for an item that is not there; an unchanged text is not shown again.
void SetItemText(TreeItem item, std::string_view text);
// Deletes the item with all below it. No effect for 0 and for an item that is gone.
void DeleteItem(TreeItem item);
// Selects the item and scrolls to it, or clears the selection for 0. The tree does not act on it.
void SelectItem(TreeItem item);

// 0 and "" for an item that is not there.
TreeItem ParentOf(TreeItem item);
std::string ItemText(TreeItem item);
// In the order in which they were inserted. Looks at all items.
std::vector<TreeItem> ChildrenOf(TreeItem parent);

}  // namespace mw
