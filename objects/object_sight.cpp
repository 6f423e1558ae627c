#include "objects/object_sight.h"

#include <cmath>

#include "core/camera.h"
#include "objects/entity_markers.h"
#include "objects/visibility.h"

namespace mw {
namespace {

constexpr double kCullRadius = 2.0 / 3;  // of the bounding box's diagonal

CatalogueEntry PlainBoxEntry() {
  CatalogueEntry entry;
  entry.boxA = kPlainBoxLow;
  entry.boxB = kPlainBoxHigh;
  return entry;
}
const CatalogueEntry plainBoxEntry = PlainBoxEntry();

bool IsInFrustum(const Vector3& place, const CatalogueEntry& entry) {
  const double margin = std::trunc(kCullRadius * entry.boxA.DistanceTo(entry.boxB));
  return camera.IsPointVisible(place.x, place.y, place.z, -static_cast<float>(margin));
}

}  // namespace

const CatalogueEntry* EntryOf(const StaticObject& object) {
  if (object.unknown) return &plainBoxEntry;
  if (object.meshIndex < 0 || object.catalogueIndex < 0 ||
      object.catalogueIndex >= objectStore.catalogue.entryCount)
    return nullptr;
  return &objectStore.catalogue.entries[static_cast<std::size_t>(object.catalogueIndex)];
}

const CatalogueEntry* EntryInSight(const StaticObject& object, const Vector3& place) {
  const CatalogueEntry* const entry = EntryOf(object);
  if (!entry || !IsShown(object)) return nullptr;
  return IsInFrustum(place, *entry) ? entry : nullptr;
}

MeshListId ShownListOf(const StaticObject& object) {
  return object.unknown ? PlainBoxList()
                        : object.lists[static_cast<std::size_t>(objectStore.viewMode)];
}

Vector3 ScaleInView(const StaticObject& object) {
  return {-object.scale.x, object.scale.y, object.scale.z};
}

}  // namespace mw
