#include "objects/static_object_records.h"

#include <unordered_map>
#include <utility>
#include <vector>

#include "core/game_random.h"
#include "core/text.h"
#include "objects/object_hover.h"

namespace mw {
namespace {

// The entry of objects whose name the catalogue does not have.
constexpr std::string_view kDefaultEntry = "default";

std::array<std::uint8_t, 3> RandomBoxColour() {
  const auto green = static_cast<std::uint8_t>(100 - 101 * GameRandom());  // modulo 256
  return {0, green, 255};
}

bool IsTree(const StaticObject& object) {
  if (object.unknown) return false;
  const auto index = static_cast<std::size_t>(object.catalogueIndex);
  return objectStore.catalogue.entries[index].meshKind == MeshKind::TreeMesh;
}

}  // namespace

StaticObject NewStaticObject(std::string_view name) {
  StaticObject object;
  object.name = LowerCase(name);
  FindEntry(object);
  object.boxColour = RandomBoxColour();
  return object;
}

void FindEntry(StaticObject& object) {
  object.catalogueIndex = FindCatalogueEntry(object.name);
  object.unknown = object.catalogueIndex < 0;
  if (object.unknown) object.catalogueIndex = FindCatalogueEntry(kDefaultEntry);
}

void UseCachedMesh(StaticObject& object, int mesh) {
  object.lists = objectStore.meshes[static_cast<std::size_t>(mesh)].lists;
  object.meshIndex = mesh;
}

void FindMesh(StaticObject& object) {
  if (const int mesh = FindCachedMesh(object.name); mesh >= 0) {
    UseCachedMesh(object, mesh);
  } else if (!object.unknown) {
    CacheMeshForObject(object.catalogueIndex, object);
  }
}

bool ObjectTableIsFull() { return objectStore.objects.size() >= kMaxStaticObjects; }

TreeItem TreeParentOf(const StaticObject& object) {
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  return IsTree(object) ? fixed.treeMeshes : fixed.standardMeshes;
}

void ShowInTree(StaticObject& object, TreeItem before) {
  const TreeItem parent = TreeParentOf(object);
  if (ParentOf(object.treeItem) == parent) {
    SetItemText(object.treeItem, object.name);
    return;
  }
  DeleteItem(object.treeItem);
  object.treeItem = InsertItem(parent, object.name, before);
}

void ShowInTree(const std::vector<std::size_t>& indices) {
  std::unordered_map<TreeItem, TreeItem> next;  // by parent
  auto& objects = objectStore.objects;
  auto index = indices.rbegin();
  for (std::size_t i = objects.size(); i-- > 0 && index != indices.rend();) {
    StaticObject& object = objects[i];
    if (*index == i) {
      ++index;
      ShowInTree(object, next[TreeParentOf(object)]);
    }
    next[ParentOf(object.treeItem)] = object.treeItem;
  }
}

void AppendStaticObject(StaticObject object) {
  ShowInTree(object);
  objectStore.objects.push_back(object);
}

bool RemoveStaticObjects(const std::function<bool(const StaticObject&)>& isMeant) {
  std::vector<TreeItem> items;
  std::erase_if(objectStore.objects, [&](const StaticObject& object) {
    if (!isMeant(object)) return false;
    items.push_back(object.treeItem);
    return true;
  });
  if (items.empty()) return false;
  objectStore.hoveredObject = objectStore.lastHoveredObject = -1;
  ForgetNamed();
  for (const TreeItem item : items) DeleteItem(item);
  return true;
}

}  // namespace mw
