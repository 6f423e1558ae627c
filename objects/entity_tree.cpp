#include <algorithm>
#include <optional>

#include "objects/entities.h"
#include "objects/entity_editing.h"
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

// Shows the item with its label under the parent, or takes it away.
void ShowItem(TreeItem& item, TreeItem parent, std::string_view name, GameModeMask modes) {
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
    item = InsertItem(parent, label);
  }
}

template <typename Record>
bool IsMissing(const Record& record) {
  return (record->modes & entities.ModeFilter) != 0 && !IsInTree(record->treeItem);
}

// Items that come back would stand behind the others: all are then inserted again, in the order of
// their records.
void RemoveItemsOutOfOrder(EntityKind kind) {
  const EntityTables& tables = entities.Of(kind);
  const bool missing = std::ranges::any_of(tables.instances, [](auto& i) { return IsMissing(i); });
  const bool templatesMissing =
      kind == EntityKind::ObjectSpawn &&
      std::ranges::any_of(tables.templates, [](auto& t) { return IsMissing(t); });
  if (!missing && !templatesMissing) return;
  for (const auto& instance : tables.instances) DeleteItem(instance->treeItem);
  for (const auto& spawnTemplate : tables.templates) DeleteItem(spawnTemplate->treeItem);
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

void SpawnTemplate::UpdateTreeItem(EntityKind kind) {
  if (kind == EntityKind::ObjectSpawn) ShowItem(treeItem, RootOf(kind), name, modes);
}

void SpawnInstance::UpdateTreeItem() {
  const SpawnTemplate* above = TemplateOf(*this);
  const bool underTemplate = above && IsInTree(above->treeItem);
  ShowItem(treeItem, underTemplate ? above->treeItem : RootOf(Kind()), name, modes);
}

void RefreshTreeItems() {
  for (const EntityKind kind : kEntityKinds) {
    RemoveItemsOutOfOrder(kind);
    for (const auto& spawnTemplate : entities.Of(kind).templates) {
      spawnTemplate->UpdateTreeItem(kind);
    }
    for (const auto& instance : entities.Of(kind).instances) instance->UpdateTreeItem();
  }
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
  SetStatusText(1, StatusTextOf(instance));
  return true;
}

}  // namespace mw
