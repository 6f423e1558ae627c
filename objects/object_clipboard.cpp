// Copy and Paste of the Object Mapper.
#include <cmath>
#include <string>
#include <vector>

#include "core/editor_state.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/static_object_records.h"
#include "objects/static_objects.h"

namespace mw {
namespace {

struct ObjectCopy {
  std::string name;
  Vector3 rotation, offset;
};

struct EntityCopy {
  int templateIndex = -1;
  Vector3 offset;
};

// Everything is gathered before anything is pasted: the tables grow meanwhile.
std::vector<ObjectCopy> CopiedObjects() {
  std::vector<ObjectCopy> copies;
  for (const StaticObject& object : objectStore.objects) {
    if (object.copied)
      copies.push_back({object.name.String(), object.rotation, PivotOffset(object)});
  }
  return copies;
}

std::vector<EntityCopy> CopiedEntities(EntityKind kind) {
  std::vector<EntityCopy> copies;
  for (const auto& instance : entities.Of(kind).instances) {
    if (instance->copied) copies.push_back({instance->templateIndex, PivotOffset(*instance)});
  }
  return copies;
}

void PasteObjects(const std::vector<ObjectCopy>& copies, const Vector3& point) {
  for (const ObjectCopy& copy : copies) {
    const float x = std::trunc(copy.offset.x + point.x);
    const float z = std::trunc(copy.offset.z + point.z);
    const bool placed = PlaceStaticObject(copy.name, x, z, copy.rotation);
    if (!placed && ObjectTableIsFull()) return;  // the message came; the rest would repeat it
  }
}

// An object spawn gets its own template; the other kinds get new ones.
void PasteEntities(EntityKind kind, const std::vector<EntityCopy>& copies, const Vector3& point) {
  for (const EntityCopy& copy : copies) {
    const bool full = entities.Of(kind).instances.size() >= kMaxInstances;
    objectStore.CursorPoint = {point.x + copy.offset.x, point.y, point.z + copy.offset.z};
    if (kind == EntityKind::ObjectSpawn) {
      DropTemplateAt(copy.templateIndex);
    } else {
      DropNewEntity(kind);
    }
    if (full) return;  // the message came; the rest would repeat it
  }
}

}  // namespace

void CopySelected() {
  ComputePivot();  // something may have moved since it was selected
  ForEachPlacement([](Placement& item) { item.copied = item.selected; });
  editor.somethingCopied = AnySelected();
}

void PasteCopied(int x, int y) {
  PickCursorPoint(x, y);
  const Vector3 point = objectStore.CursorPoint;
  PasteObjects(CopiedObjects(), point);
  for (const EntityKind kind : kEntityKinds) PasteEntities(kind, CopiedEntities(kind), point);
  objectStore.CursorPoint = point;
}

}  // namespace mw
