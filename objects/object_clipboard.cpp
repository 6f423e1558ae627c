#include "objects/object_clipboard.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/editor_state.h"
#include "objects/entity_creation.h"
#include "objects/entity_editing.h"
#include "objects/object_history.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/spawn_groups.h"
#include "objects/static_object_records.h"
#include "objects/static_objects.h"
#include "platform/prompts.h"

namespace mw {
namespace {

// Copying

template <class Template>
EntityCopy<Template> CopyOf(const SpawnInstance& instance, const SpawnTemplate& from) {
  return {static_cast<const Template&>(from), instance.modes, instance.rotation,
          PivotOffset(instance)};
}

void CopyEntity(const SpawnInstance& instance, const SpawnTemplate& from) {
  switch (instance.Kind()) {
    case EntityKind::SoldierSpawn:
      objectStore.copied.soldierSpawns.push_back(CopyOf<SoldierSpawnTemplate>(instance, from));
      break;
    case EntityKind::ObjectSpawn:
      objectStore.copied.objectSpawns.push_back({CopyOf<ObjectSpawnTemplate>(instance, from),
                                                 static_cast<const ObjectSpawn&>(instance).osId});
      break;
    case EntityKind::ControlPoint:
      objectStore.copied.controlPoints.push_back({CopyOf<ControlPointTemplate>(instance, from),
                                                  SpawnGroupsOf(from.group, instance.modes)});
      break;
  }
}

// Pasting

// Where the middle of the copies goes; view coordinates.
Vector3 PlaceOf(const Vector3& offset, const Vector3& point) {
  return {MirrorX(point.x + offset.x), point.y, point.z + offset.z};
}

// The control points that this paste made, with the group of what each is a copy of.
struct PastedPoint {
  std::int32_t formerGroup;
  GameModeMask modes;
  const ControlPointTemplate* made;
};
using PastedPoints = std::vector<PastedPoint>;

const ControlPointTemplate* OwnerOf(std::int32_t formerGroup, GameModeMask modes,
                                    const Vector3& position, const PastedPoints& points) {
  const auto isOwner = [&](const PastedPoint& point) {
    return point.formerGroup == formerGroup && (point.modes & modes) != 0;
  };
  const auto found = std::ranges::find_if(points, isOwner);
  return found != points.end() ? found->made : NearestControlPoint(position, modes);
}

void PasteObjects(const Vector3& point) {
  for (const auto& [object, offset] : objectStore.copied.objects) {
    const float x = std::trunc(offset.x + point.x);
    const float z = std::trunc(offset.z + point.z);
    if (PlaceStaticObject(object.name, x, z, object.rotation)) {
      StaticObject& placed = objectStore.objects.back();
      placed.scale = object.scale;
      placed.scaleGiven = object.scaleGiven;
      placed.colour = object.colour;
      placed.colorGiven = object.colorGiven;
    } else if (ObjectTableIsFull()) {
      return;  // the message came; the rest would repeat it
    }
  }
}

template <class Template>
void FinishPaste(SpawnInstance& pasted, const EntityCopy<Template>& copy) {
  pasted.rotation = copy.rotation;
  pasted.modes = copy.modes;
  pasted.UpdateTreeItem();
}

// A copy of the template for one entity alone.
template <class Template>
std::unique_ptr<Template> OwnTemplate(const EntityCopy<Template>& copy) {
  auto made = std::make_unique<Template>(copy.from);
  made->treeItem = 0;
  made->modes = copy.modes;
  return made;
}

// The name that a copy's number comes after.
std::string WithoutNumber(const EntityName& name) {
  const std::string text = name.String();
  return text.substr(0, text.find_last_not_of("0123456789") + 1);
}

// The groups of a copied control point under a new number; false, after a message, without room.
bool AddGroups(const ControlPointCopy& copy, std::int32_t id) {
  std::vector<SpawnGroup> groups = copy.groups;
  if (groups.empty()) {
    groups = {NewSpawnGroup(copy.modes)};
    groups.front().team = copy.from.team;
  }
  if (!HasRoomForSpawnGroups(groups.size())) return false;
  for (SpawnGroup& group : groups) {
    group.id = id;
    entities.spawnGroups.push_back(group);
  }
  return true;
}

PastedPoints PasteControlPoints(const Vector3& point) {
  constexpr EntityKind kKind = EntityKind::ControlPoint;
  PastedPoints points;
  for (const ControlPointCopy& copy : objectStore.copied.controlPoints) {
    if (!HasRoomForEntity(kKind)) break;
    const std::int32_t id = UnusedSpawnGroupId();
    if (!AddGroups(copy, id)) {
      ShowPrompt("Too many spawn groups.", "Error", PromptButtons::Ok, PromptIcon::Stop);
      break;
    }
    auto made = OwnTemplate(copy);
    made->name = UniqueTemplateName(kKind, WithoutNumber(copy.from.name));
    made->controlPointName = made->name;
    made->group = made->spawnGroupId = made->objectSpawnerId = id;
    points.push_back({copy.from.group, copy.modes, made.get()});
    FinishPaste(PlaceEntity(kKind, std::move(made), PlaceOf(copy.offset, point)), copy);
  }
  return points;
}

void PasteSoldierSpawns(const Vector3& point, const PastedPoints& points) {
  for (const SoldierSpawnCopy& copy : objectStore.copied.soldierSpawns) {
    if (!HasRoomForEntity(EntityKind::SoldierSpawn)) return;
    const Vector3 position = PlaceOf(copy.offset, point);
    auto made = OwnTemplate(copy);
    GiveToControlPoint(*made, OwnerOf(copy.from.group, copy.modes, position, points));
    FinishPaste(PlaceEntity(EntityKind::SoldierSpawn, std::move(made), position), copy);
  }
}

// Index of the template that the copied object spawn has, which is made again when it was deleted
// since; -1, after a message, without room.
int TemplateFor(const ObjectSpawnCopy& copy) {
  auto& templates = entities.Of(EntityKind::ObjectSpawn).templates;
  const auto isMeant = [&copy](const auto& candidate) {
    return (candidate->modes & copy.modes) == copy.modes &&
           EqualNoCase(candidate->name, copy.from.name);
  };
  const auto found = std::ranges::find_if(templates, isMeant);
  if (found != templates.end()) return static_cast<int>(found - templates.begin());
  if (!HasRoomForTemplate(EntityKind::ObjectSpawn)) return -1;
  templates.push_back(OwnTemplate(copy));
  MakeNameUnique(*templates.back(), EntityKind::ObjectSpawn);
  templates.back()->UpdateTreeItem(EntityKind::ObjectSpawn);
  return static_cast<int>(templates.size()) - 1;
}

void PasteObjectSpawns(const Vector3& point, const PastedPoints& points) {
  for (const ObjectSpawnCopy& copy : objectStore.copied.objectSpawns) {
    if (!HasRoomForInstance(EntityKind::ObjectSpawn)) return;
    const int templateIndex = TemplateFor(copy);
    if (templateIndex < 0) return;
    const Vector3 position = PlaceOf(copy.offset, point);
    auto& spawn =
        static_cast<ObjectSpawn&>(PlaceEntity(EntityKind::ObjectSpawn, templateIndex, position));
    GiveToControlPoint(spawn, OwnerOf(copy.osId, copy.modes, position, points));
    FinishPaste(spawn, copy);
  }
}

}  // namespace

void CopySelected() {
  ComputePivot();  // something may have moved since it was selected
  objectStore.copied = {};
  for (const StaticObject& object : objectStore.objects) {
    if (object.selected) objectStore.copied.objects.push_back({object, PivotOffset(object)});
  }
  for (const EntityTables& table : entities.tables) {
    for (const auto& instance : table.instances) {
      const SpawnTemplate* const from = TemplateOf(*instance);
      if (instance->selected && from) CopyEntity(*instance, *from);
    }
  }
  editor.somethingCopied = AnySelected();
}

void PasteCopied(int x, int y) {
  const ObjectStep step("Paste");
  PickCursorPoint(x, y);
  const Vector3 point = objectStore.CursorPoint;
  PasteObjects(point);
  const PastedPoints points = PasteControlPoints(point);
  PasteSoldierSpawns(point, points);
  PasteObjectSpawns(point, points);
}

void ForgetCopied() {
  objectStore.copied = {};
  editor.somethingCopied = editor.pastePending = false;
}

}  // namespace mw
