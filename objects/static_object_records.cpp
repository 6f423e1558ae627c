#include "objects/static_object_records.h"

#include <utility>
#include <vector>

#include "core/game_random.h"
#include "core/text.h"

namespace mw {
namespace {

// The entry of objects whose name the catalogue does not have.
constexpr std::string_view kDefaultEntry = "default";

std::array<std::uint8_t, 3> RandomBoxColour() {
  const auto green = static_cast<std::uint8_t>(100 - 101 * GameRandom());  // modulo 256
  return {0, green, 255};
}

bool IsTree(std::string_view name) {
  const int entry = FindCatalogueEntry(name);
  if (entry < 0) return false;
  const auto index = static_cast<std::size_t>(entry);
  return objectStore.catalogue.entries[index].meshKind == MeshKind::TreeMesh;
}

}  // namespace

StaticObject NewStaticObject(std::string_view name) {
  StaticObject object;
  object.name = LowerCase(name);
  object.catalogueIndex = CatalogueEntryToShow(object.name);
  object.boxColour = RandomBoxColour();
  return object;
}

int CatalogueEntryToShow(std::string_view name) {
  const int entry = FindCatalogueEntry(name);
  return entry >= 0 ? entry : FindCatalogueEntry(kDefaultEntry);
}

void UseCachedMesh(StaticObject& object, int mesh) {
  object.lists = objectStore.meshes[static_cast<std::size_t>(mesh)].lists;
  object.meshIndex = mesh;
}

void FindMesh(StaticObject& object) {
  if (const int mesh = FindCachedMesh(object.name); mesh >= 0) {
    UseCachedMesh(object, mesh);
  } else if (const int entry = FindCatalogueEntry(object.name); entry >= 0) {
    CacheMeshForObject(entry, object);
  }
}

bool ObjectTableIsFull() { return objectStore.objects.size() >= kMaxStaticObjects; }

void AppendStaticObject(StaticObject object) {
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  object.treeItem =
      InsertItem(IsTree(object.name) ? fixed.treeMeshes : fixed.standardMeshes, object.name);
  objectStore.objects.push_back(std::move(object));
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
  for (const TreeItem item : items) DeleteItem(item);
  return true;
}

}  // namespace mw
