#include <algorithm>
#include <optional>
#include <unordered_map>
#include <vector>

#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_history.h"
#include "objects/object_hover.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/visibility.h"
#include "platform/prompts.h"

namespace mw {
namespace {

struct FoundInstance {
  EntityKind kind;
  int index;
};

// Index of the record with this item, or -1.
template <typename Records>
int FindByTreeItem(const Records& records, TreeItem item) {
  const auto found = std::ranges::find_if(
      records, [item](const auto& record) { return record->treeItem == item; });
  return item != 0 && found != records.end() ? static_cast<int>(found - records.begin()) : -1;
}

SpawnInstance* InstanceAt(const FoundInstance& found) {
  return entities.Of(found.kind).instances[static_cast<std::size_t>(found.index)].get();
}

std::optional<FoundInstance> FindInstance(TreeItem item) {
  for (const EntityKind kind : kEntityKinds) {
    const int index = FindByTreeItem(entities.Of(kind).instances, item);
    if (index >= 0) return FoundInstance{kind, index};
  }
  return std::nullopt;
}

bool IsInTree(TreeItem item) { return levelTree.items.contains(item); }

TreeItem RootOf(EntityKind kind) {
  switch (kind) {
    case EntityKind::SoldierSpawn:
      return levelTree.fixed.soldierSpawns;
    case EntityKind::ObjectSpawn:
      return levelTree.fixed.objectSpawns;
    case EntityKind::ControlPoint:
      return levelTree.fixed.controlPoints;
  }
  return 0;
}

// Shows the item with its label under the parent, before another item there, or takes it away.
void ShowItem(TreeItem& item, TreeItem parent, TreeItem before, std::string_view name,
              GameModeMask modes) {
  const bool shown = (modes & entities.ModeFilter) != 0;
  if (!shown || ParentOf(item) != parent) {
    DeleteItem(item);
    item = 0;
  }
  if (!shown) return;
  const std::string label = NameWithModes(name, modes);
  if (IsInTree(item)) {
    SetItemText(item, label);
  } else {
    item = InsertItem(parent, label, before);
  }
}

// Only object spawns have their templates in the tree. One that comes back is as it was: folded or
// not.
void ShowTemplate(SpawnTemplate& spawnTemplate, EntityKind kind, TreeItem before = 0) {
  if (kind != EntityKind::ObjectSpawn) return;
  const TreeItem item = spawnTemplate.treeItem;
  if (IsInTree(item)) spawnTemplate.unfolded = levelTree.view.isUnfolded(item);
  ShowItem(spawnTemplate.treeItem, RootOf(kind), before, spawnTemplate.name, spawnTemplate.modes);
}

TreeItem ParentFor(const SpawnInstance& instance) {
  const SpawnTemplate* const above = TemplateOf(instance);
  return above && IsInTree(above->treeItem) ? above->treeItem : RootOf(instance.Kind());
}

void ShowInstance(SpawnInstance& instance, TreeItem before = 0) {
  ShowItem(instance.treeItem, ParentFor(instance), before, instance.name, instance.modes);
}

// For every record the item before which its own belongs: that of the next record in the tree under
// the same parent, or 0.
template <typename Records, typename Parent>
std::vector<TreeItem> FollowingItems(const Records& records, Parent parentOf) {
  std::vector<TreeItem> following(records.size());
  std::unordered_map<TreeItem, TreeItem> next;  // by parent
  for (std::size_t i = records.size(); i-- > 0;) {
    const TreeItem parent = parentOf(*records[i]), item = records[i]->treeItem;
    following[i] = next[parent];
    if (IsInTree(item) && ParentOf(item) == parent) next[parent] = item;
  }
  return following;
}

// Items that come back take the place that their record has among the others.
void RefreshTreeItemsOf(EntityKind kind) {
  EntityTables& tables = entities.Of(kind);
  auto following = FollowingItems(tables.templates, [kind](const auto&) { return RootOf(kind); });
  for (std::size_t i = 0; i < following.size(); ++i)
    ShowTemplate(*tables.templates[i], kind, following[i]);
  following = FollowingItems(tables.instances, ParentFor);
  for (std::size_t i = 0; i < following.size(); ++i)
    ShowInstance(*tables.instances[i], following[i]);
  for (const auto& spawnTemplate : tables.templates) {
    if (spawnTemplate->unfolded && IsInTree(spawnTemplate->treeItem))
      levelTree.view.unfold(spawnTemplate->treeItem);
  }
}

void DeleteObjectSpawnTemplate(int index) {
  if (IsTemplateUsed(EntityKind::ObjectSpawn, index)) {
    ShowPrompt("Can't delete a template with spawns under it.", "Error", PromptButtons::Ok,
               PromptIcon::Stop);
    return;
  }
  DeleteTemplate(EntityKind::ObjectSpawn, index);
}

}  // namespace

void SpawnTemplate::UpdateTreeItem(EntityKind kind) { ShowTemplate(*this, kind); }

void SpawnInstance::UpdateTreeItem() { ShowInstance(*this); }

void RefreshTreeItems() {
  for (const EntityKind kind : kEntityKinds) RefreshTreeItemsOf(kind);
}

void SetModeFilter(GameModeMask modes) {
  entities.ModeFilter = modes;
  DeselectHidden();
  RefreshTreeItems();
}

int FindObjectSpawnTemplate(TreeItem item) {
  return FindByTreeItem(entities.Of(EntityKind::ObjectSpawn).templates, item);
}

void DeleteByTreeItem(TreeItem item) {
  const ObjectStep step("Delete");
  if (const auto found = FindInstance(item)) {
    const bool wasSelected = InstanceAt(*found)->selected;
    DeleteInstance(found->kind, found->index);
    if (wasSelected) UpdateToolButtons(AnySelected());
    return;
  }
  const int index = FindObjectSpawnTemplate(item);
  if (index >= 0) DeleteObjectSpawnTemplate(index);
}

bool EditByTreeItem(TreeItem item) {
  if (const auto found = FindInstance(item)) {
    InstanceAt(*found)->Edit();
    return true;
  }
  const int index = FindObjectSpawnTemplate(item);
  if (index < 0) return false;
  entities.Of(EntityKind::ObjectSpawn)
      .templates[static_cast<std::size_t>(index)]
      ->Edit(EntityKind::ObjectSpawn);
  return true;
}

bool SelectFromTree(TreeItem item) {
  const auto found = FindInstance(item);
  if (!found) return false;
  SpawnInstance& instance = *InstanceAt(*found);
  ShowKindOf(instance);
  SelectOnly(instance, item);
  FocusCameraOn(instance.position.x, instance.position.y, instance.position.z);
  NameInStatusBar(StatusTextOf(instance));
  return true;
}

}  // namespace mw
