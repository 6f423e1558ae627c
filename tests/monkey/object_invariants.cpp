// Objects, entities, their meshes and textures, and the level tree that shows them.
#include <QMainWindow>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <cmath>
#include <map>

#include "core/readable_text.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "objects/entities.h"
#include "objects/object_selection.h"
#include "objects/object_store.h"
#include "objects/visibility.h"
#include "tests/monkey/invariants.h"
#include "tools/help_tour/windows.h"

namespace mw::monkey {
namespace {

bool IsFinite(const Vector3& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

template <typename Index, typename Container>
bool IsIndexOrNone(Index index, const Container& container) {
  return index >= -1 && index < static_cast<Index>(container.size());
}

void CheckStaticObjects() {
  Expect(objectStore.objects.size() <= kMaxStaticObjects, "too many objects");
  Expect(objectStore.meshes.size() <= kMaxCachedMeshes, "too many meshes");
  Expect(IsIndexOrNone(objectStore.hoveredObject, objectStore.objects),
         "no such object is hovered");
  Expect(IsIndexOrNone(objectStore.lastHoveredObject, objectStore.objects),
         "no such object was hovered");
  Expect(IsFinite(objectStore.CursorPoint), "the cursor points nowhere");
  for (const StaticObject& object : objectStore.objects) {
    const std::string name = object.name.String();
    Expect(object.catalogueIndex >= -1 && object.catalogueIndex < objectStore.catalogue.entryCount,
           "not in the catalogue: " + name);
    Expect(IsIndexOrNone(object.meshIndex, objectStore.meshes), "its mesh is gone: " + name);
    Expect(!object.selected || IsShown(object), "hidden and selected: " + name);
    Expect(IsFinite(object.position) && IsFinite(object.rotation) && IsFinite(object.scale),
           "stands nowhere: " + name);
  }
}

// References are counted, so they are one per use.
void CheckTextures() {
  const ObjectTextureTable& table = objectStore.textures;
  std::map<int, int> uses;
  for (const CachedMesh& mesh : objectStore.meshes) {
    for (const Subshader& subshader : mesh.subshaders) {
      if (subshader.textureSlot >= 0) ++uses[subshader.textureSlot];
    }
    for (const int slot : mesh.treeTextures) ++uses[slot];
  }
  for (const auto& [slot, count] : uses) {
    const bool used = slot >= 0 && slot < table.count;
    Expect(used && table.slots[static_cast<std::size_t>(slot)].references >= count,
           FormatText("texture %i is used %i times", slot, count));
  }
  Expect(table.count >= 0 && table.count <= kMaxObjectTextures, "too many textures");
}

void CheckEntities() {
  for (const EntityKind kind : kEntityKinds) {
    const EntityTables& tables = entities.Of(kind);
    Expect(tables.templates.size() <= kMaxTemplates && tables.instances.size() <= kMaxInstances,
           "too many entities");
    for (const auto& instance : tables.instances) {
      const std::string name = instance->name.String();
      Expect(instance->Kind() == kind, "an entity of another kind: " + name);
      Expect(TemplateOf(*instance), "has no template: " + name);
      Expect(!instance->selected || IsShown(*instance), "hidden and selected: " + name);
      Expect(IsFinite(instance->position) && IsFinite(instance->rotation),
             "stands nowhere: " + name);
    }
  }
  Expect(entities.spawnGroups.size() <= kMaxSpawnGroups, "too many spawn groups");
  Expect(IsIndexOrNone(entities.hovered.index, entities.Of(entities.hovered.kind).instances),
         "no such entity is hovered");
  Expect(objectStore.tool == ObjectTool::Select || objectStore.toolsEnabled,
         "a tool is chosen that cannot be");
  Expect(objectStore.toolsEnabled == AnySelected(), "the tools do not follow the selection");
}

// Each item of the branch stands for one record, and each record that is to be seen has its item.
class Shown {
 public:
  void Add(TreeItem item, TreeItem parent, const std::string& name) {
    Expect(levelTree.items.contains(item), "not in the tree: " + name);
    Expect(ParentOf(item) == parent, "in another place of the tree: " + name);
    Expect(items_.insert({item, name}).second, "shares its item in the tree: " + name);
  }
  void ExpectNothingElse(TreeItem parent) {
    for (const TreeItem child : ChildrenOf(parent)) {
      Expect(items_.contains(child) || IsFixed(child),
             "stands for nothing: " + NumberedText(child));
    }
  }

 private:
  static bool IsFixed(TreeItem item) {
    const LevelTree::FixedItems& fixed = levelTree.fixed;
    return item == fixed.newControlPoint || item == fixed.newSoldierSpawn ||
           item == fixed.addTemplate || item == fixed.addNewObject;
  }

  std::map<TreeItem, std::string> items_;
};

void CheckRecordsInTree() {
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  Shown shown;
  for (const StaticObject& object : objectStore.objects) {
    const TreeItem parent = ParentOf(object.treeItem);
    shown.Add(object.treeItem, parent == fixed.treeMeshes ? parent : fixed.standardMeshes,
              object.name.String());
  }
  for (const CachedMesh& mesh : objectStore.meshes) {
    if (mesh.treeItem != 0) shown.Add(mesh.treeItem, fixed.cachedObjects, mesh.name.String());
  }
  const std::array roots{fixed.soldierSpawns, fixed.objectSpawns, fixed.controlPoints};
  std::vector<TreeItem> parents{fixed.standardMeshes, fixed.treeMeshes, fixed.cachedObjects};
  for (const EntityKind kind : kEntityKinds) {
    const TreeItem root = roots[static_cast<std::size_t>(kind)];
    parents.push_back(root);
    if (kind == EntityKind::ObjectSpawn) {
      for (const auto& made : entities.Of(kind).templates) {
        if (!(made->modes & entities.ModeFilter)) continue;
        shown.Add(made->treeItem, root, made->name.String());
        parents.push_back(made->treeItem);
      }
    }
    for (const auto& instance : entities.Of(kind).instances) {
      if (!(instance->modes & entities.ModeFilter)) continue;
      const SpawnTemplate* const above = TemplateOf(*instance);
      const bool under =
          kind == EntityKind::ObjectSpawn && above && levelTree.items.contains(above->treeItem);
      shown.Add(instance->treeItem, under ? above->treeItem : root, instance->name.String());
    }
  }
  for (const TreeItem parent : parents) shown.ExpectNothingElse(parent);
}

// The panel shows the same items with the same texts under the same parents.
void CheckTreeWidget() {
  auto* const tree = help::FindMainWindow()->findChild<QTreeWidget*>("levelTree");
  const auto idOf = [](const QTreeWidgetItem* item) {
    return item ? item->data(0, Qt::UserRole).toUInt() : 0;
  };
  std::size_t count = 0;
  for (QTreeWidgetItemIterator at(tree); *at; ++at, ++count) {
    const TreeItem item = idOf(*at);
    const std::string text = (*at)->text(0).toStdString();
    Expect(levelTree.items.contains(item), "only the panel shows " + text);
    Expect(ReadableText(NumberedText(item)) == text, "the panel shows another text: " + text);
    Expect(ParentOf(item) == idOf((*at)->parent()), "the panel shows in another place: " + text);
    Expect((*at)->childCount() == static_cast<int>(ChildrenOf(item).size()),
           "another number of children: " + text);
  }
  Expect(count == levelTree.items.size(), "the panel does not show all items");
}

void CheckTree() {
  Expect(levelTree.notificationsEnabled, "the tree's notifications are left off");
  Expect(!levelTree.suppressObjectSelection, "the tree's selection is left off");
  if (levelTree.items.empty()) return;
  CheckRecordsInTree();
  CheckTreeWidget();
}

}  // namespace

void CheckObjects() {
  CheckStaticObjects();
  CheckTextures();
  CheckEntities();
  CheckTree();
}

}  // namespace mw::monkey
