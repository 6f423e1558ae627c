#include "objects/level_tree.h"

#include <algorithm>
#include <utility>

#include "objects/entities.h"

namespace mw {

namespace {

void TakeNumber(LevelTree::Item& item) {
  std::vector<bool>& taken = levelTree.numbers[{item.parent, item.text}];
  const auto free = std::ranges::find(taken, false);
  item.number = static_cast<int>(free - taken.begin()) + 1;
  if (free == taken.end()) {
    taken.push_back(true);
  } else {
    *free = true;
  }
}

void GiveNumberBack(const LevelTree::Item& item) {
  const auto found = levelTree.numbers.find({item.parent, item.text});
  if (found == levelTree.numbers.end()) return;
  std::vector<bool>& taken = found->second;
  taken[static_cast<std::size_t>(item.number) - 1] = false;
  while (!taken.empty() && !taken.back()) taken.pop_back();
  if (taken.empty()) levelTree.numbers.erase(found);
}

std::string NumberedTextOf(const LevelTree::Item& item) {
  if (item.number == 1) return item.text;
  return item.text + " (" + std::to_string(item.number) + ")";
}

}  // namespace

void BuildTree() {
  levelTree.items.clear();
  levelTree.numbers.clear();
  levelTree.view.clear();
  LevelTree::FixedItems& fixed = levelTree.fixed;
  fixed.world = InsertItem(0, "World");
  fixed.lighting = InsertItem(fixed.world, "Lighting");
  fixed.shadows = InsertItem(fixed.world, "Shadows");
  fixed.fog = InsertItem(fixed.world, "Fog Settings");
  fixed.water = InsertItem(fixed.world, "Water Settings");
  fixed.teams = InsertItem(0, "Teams");
  fixed.controlPoints = InsertItem(0, "Control Points");
  fixed.newControlPoint = InsertItem(fixed.controlPoints, "Drag New Control Point");
  fixed.soldierSpawns = InsertItem(0, "Soldier Spawns");
  fixed.newSoldierSpawn = InsertItem(fixed.soldierSpawns, "Drag New Soldier Spawn");
  fixed.objectSpawns = InsertItem(0, "Object Spawns");
  fixed.addTemplate = InsertItem(fixed.objectSpawns, "Add Template");
  fixed.staticObjects = InsertItem(0, "Static Objects");
  fixed.standardMeshes = InsertItem(fixed.staticObjects, "Standard Meshes");
  fixed.treeMeshes = InsertItem(fixed.staticObjects, "Tree Meshes");
  fixed.cachedObjects = InsertItem(0, "Cached Objects");
  fixed.addNewObject = InsertItem(fixed.cachedObjects, "Add New Object");
  entities.ModeFilter = kAllModes;
  levelTree.view.resetFilter();
}

TreeItem InsertItem(TreeItem parent, std::string_view text, TreeItem before) {
  const TreeItem item = ++levelTree.lastItem;
  if (const auto above = levelTree.items.find(parent); above != levelTree.items.end()) {
    std::vector<TreeItem>& children = above->second.children;
    children.insert(std::ranges::find(children, before), item);
  }
  LevelTree::Item& record = levelTree.items[item];
  record.parent = parent;
  record.text = text;
  TakeNumber(record);
  levelTree.view.insert(item, parent, before, NumberedTextOf(record));
  return item;
}

void SetItemText(TreeItem item, std::string_view text) {
  const auto found = levelTree.items.find(item);
  if (found == levelTree.items.end() || found->second.text == text) return;
  GiveNumberBack(found->second);
  found->second.text = text;
  TakeNumber(found->second);
  levelTree.view.setText(item, NumberedTextOf(found->second));
}

void DeleteItem(TreeItem item) {
  const auto found = levelTree.items.find(item);
  if (found == levelTree.items.end()) return;
  for (const TreeItem child : ChildrenOf(item)) DeleteItem(child);
  const auto above = levelTree.items.find(found->second.parent);
  if (above != levelTree.items.end()) std::erase(above->second.children, item);
  levelTree.view.remove(item);
  GiveNumberBack(found->second);
  levelTree.items.erase(item);
}

void SelectItem(TreeItem item) {
  const bool enabled = std::exchange(levelTree.notificationsEnabled, false);
  levelTree.view.select(item);
  levelTree.notificationsEnabled = enabled;
}

void SelectItems(const std::vector<TreeItem>& items) {
  if (levelTree.userIsChoosing) return;
  const bool enabled = std::exchange(levelTree.notificationsEnabled, false);
  levelTree.view.selectAll(items);
  levelTree.notificationsEnabled = enabled;
}

TreeItem ParentOf(TreeItem item) {
  const auto found = levelTree.items.find(item);
  return found == levelTree.items.end() ? 0 : found->second.parent;
}

std::string NumberedText(TreeItem item) {
  const auto found = levelTree.items.find(item);
  return found == levelTree.items.end() ? std::string() : NumberedTextOf(found->second);
}

std::vector<TreeItem> ChildrenOf(TreeItem parent) {
  const auto found = levelTree.items.find(parent);
  return found == levelTree.items.end() ? std::vector<TreeItem>() : found->second.children;
}

}  // namespace mw
