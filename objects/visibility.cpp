#include "objects/visibility.h"

#include <utility>

#include "core/hooks.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"

namespace mw {
namespace {

// An object that the catalogue does not have is listed with the standard meshes.
MeshKind KindOf(const StaticObject& object) {
  const ObjectCatalogue& catalogue = objectStore.catalogue;
  if (object.unknown || object.catalogueIndex < 0 || object.catalogueIndex >= catalogue.entryCount)
    return MeshKind::StandardMesh;
  return catalogue.entries[static_cast<std::size_t>(object.catalogueIndex)].meshKind;
}

void SwitchOn(bool& shown) {
  if (!std::exchange(shown, true)) hooks.refreshObjectToolbar();
}

}  // namespace

bool& ShowSwitchOf(MeshKind kind) {
  return kind == MeshKind::TreeMesh ? objectStore.showTreeMeshes : objectStore.showStandardMeshes;
}

bool& ShowSwitchOf(EntityKind kind) {
  if (kind == EntityKind::SoldierSpawn) return objectStore.showSoldierSpawns;
  if (kind == EntityKind::ObjectSpawn) return objectStore.showObjectSpawns;
  return objectStore.showControlPoints;
}

bool IsShown(const StaticObject& object) { return ShowSwitchOf(KindOf(object)); }

bool IsShown(const SpawnInstance& instance) {
  return ShowSwitchOf(instance.Kind()) && (instance.modes & entities.ModeFilter) != 0;
}

void ShowKindOf(const StaticObject& object) { SwitchOn(ShowSwitchOf(KindOf(object))); }
void ShowKindOf(const SpawnInstance& instance) { SwitchOn(ShowSwitchOf(instance.Kind())); }

void DeselectHidden() {
  bool any = false;
  const auto deselect = [&any](Placement& item) { any |= std::exchange(item.selected, false); };
  for (StaticObject& object : objectStore.objects) {
    if (!IsShown(object)) deselect(object);
  }
  for (const EntityTables& table : entities.tables) {
    for (const auto& instance : table.instances) {
      if (!IsShown(*instance)) deselect(*instance);
    }
  }
  if (!any) return;
  ComputePivot();
  UpdateToolButtons(AnySelected());
}

}  // namespace mw
