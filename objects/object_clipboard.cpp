#include "objects/object_clipboard.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
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
#include "objects/visibility.h"
#include "platform/prompts.h"

namespace mw {
namespace {

// Copying

template <class Template>
EntityCopy<Template> CopyOf(const SpawnInstance& instance, const SpawnTemplate& from) {
  return {static_cast<const Template&>(from), instance.modes, instance.position, instance.rotation,
          PivotOffset(instance)};
}

void CopyEntity(const SpawnInstance& instance, const SpawnTemplate& from, CopiedObjects& copied) {
  switch (instance.Kind()) {
    case EntityKind::SoldierSpawn:
      copied.soldierSpawns.push_back(CopyOf<SoldierSpawnTemplate>(instance, from));
      break;
    case EntityKind::ObjectSpawn: {
      const auto& spawn = static_cast<const ObjectSpawn&>(instance);
      copied.objectSpawns.push_back(
          {CopyOf<ObjectSpawnTemplate>(instance, from), spawn.osId, spawn.team});
      break;
    }
    case EntityKind::ControlPoint:
      copied.controlPoints.push_back({CopyOf<ControlPointTemplate>(instance, from),
                                      SpawnGroupsOf(from.group, instance.modes)});
      break;
  }
}

CopiedObjects CopiesOfSelected() {
  ComputePivot();  // something may have moved since it was selected
  CopiedObjects copied;
  for (const StaticObject& object : objectStore.objects) {
    if (object.selected) copied.objects.push_back({object, PivotOffset(object)});
  }
  for (const EntityTables& table : entities.tables) {
    for (const auto& instance : table.instances) {
      const SpawnTemplate* const from = TemplateOf(*instance);
      if (instance->selected && from) CopyEntity(*instance, *from, copied);
    }
  }
  return copied;
}

// Placing

// What is placed, and around which point of the view; without one, where it was copied.
struct Placing {
  const CopiedObjects& copied;
  std::optional<Vector3> point;

  bool IsInPlace() const { return !point; }
  // Level coordinates.
  template <class Template>
  Vector3 PlaceOf(const EntityCopy<Template>& copy) const {
    if (!point) return copy.position;
    return {MirrorX(point->x + copy.offset.x), point->y, point->z + copy.offset.z};
  }
};

// The control points that were placed, with the group of what each is a copy of.
struct PlacedPoint {
  std::int32_t formerGroup;
  GameModeMask modes;
  const ControlPointTemplate* made;
};
using PlacedPoints = std::vector<PlacedPoint>;

// The copy of the control point that had the group; null when it was not copied.
const ControlPointTemplate* CopyOfOwner(std::int32_t formerGroup, GameModeMask modes,
                                        const PlacedPoints& points) {
  const auto isOwner = [&](const PlacedPoint& point) {
    return point.formerGroup == formerGroup && (point.modes & modes) != 0;
  };
  const auto found = std::ranges::find_if(points, isOwner);
  return found != points.end() ? found->made : nullptr;
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

// With all that they have. An object that the catalogue does not have is copied like any other.
void DuplicateObjects(const CopiedObjects& copied) {
  for (const ObjectCopy& copy : copied.objects) {
    StaticObject object = copy.object;
    object.treeItem = 0;
    AppendStaticObject(object);
    editor.levelModified = true;
  }
}

template <class Template>
void FinishCopy(SpawnInstance& placed, const EntityCopy<Template>& copy) {
  placed.rotation = copy.rotation;
  placed.modes = copy.modes;
  placed.UpdateTreeItem();
}

// A copy of the template for one entity alone.
template <class Template>
std::unique_ptr<Template> OwnTemplate(const EntityCopy<Template>& copy) {
  auto made = std::make_unique<Template>(copy.from);
  made->treeItem = 0;
  made->modes = copy.modes;
  return made;
}

// The groups of a copied control point, which has one of its own even if it had none.
std::vector<SpawnGroup> GroupsFor(const ControlPointCopy& copy) {
  if (!copy.groups.empty()) return copy.groups;
  SpawnGroup group = NewSpawnGroup(copy.modes);
  group.team = copy.from.team;
  return {group};
}

bool HasRoomForGroups(std::size_t count) {
  if (HasRoomForSpawnGroups(count)) return true;
  ShowPrompt("Too many spawn groups.", "Error", PromptButtons::Ok, PromptIcon::Stop);
  return false;
}

PlacedPoints PlaceControlPoints(const Placing& placing) {
  constexpr EntityKind kKind = EntityKind::ControlPoint;
  PlacedPoints points;
  for (const ControlPointCopy& copy : placing.copied.controlPoints) {
    if (!HasRoomForEntity(kKind)) break;
    const std::int32_t id = UnusedSpawnGroupId();
    const std::vector<SpawnGroup> groups = GroupsFor(copy);
    if (!HasRoomForGroups(groups.size())) break;
    for (SpawnGroup group : groups) {
      group.id = id;
      entities.spawnGroups.push_back(group);
    }
    auto made = OwnTemplate(copy);
    made->name = UniqueTemplateName(kKind, WithoutNumber(copy.from.name));
    made->controlPointName = made->name;
    made->group = made->spawnGroupId = made->objectSpawnerId = id;
    points.push_back({copy.from.group, copy.modes, made.get()});
    FinishCopy(PlaceEntity(kKind, std::move(made), placing.PlaceOf(copy)), copy);
  }
  return points;
}

void PlaceSoldierSpawns(const Placing& placing, const PlacedPoints& points) {
  for (const SoldierSpawnCopy& copy : placing.copied.soldierSpawns) {
    if (!HasRoomForEntity(EntityKind::SoldierSpawn)) return;
    const Vector3 position = placing.PlaceOf(copy);
    auto made = OwnTemplate(copy);
    if (const auto* const owner = CopyOfOwner(copy.from.group, copy.modes, points)) {
      GiveToControlPoint(*made, owner);
    } else if (placing.IsInPlace()) {
      GiveOwnName(*made);
    } else {
      GiveToControlPoint(*made, NearestControlPoint(position, copy.modes));
    }
    FinishCopy(PlaceEntity(EntityKind::SoldierSpawn, std::move(made), position), copy);
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

void PlaceObjectSpawns(const Placing& placing, const PlacedPoints& points) {
  for (const ObjectSpawnCopy& copy : placing.copied.objectSpawns) {
    if (!HasRoomForInstance(EntityKind::ObjectSpawn)) return;
    const int templateIndex = TemplateFor(copy);
    if (templateIndex < 0) return;
    const Vector3 position = placing.PlaceOf(copy);
    auto& spawn =
        static_cast<ObjectSpawn&>(PlaceEntity(EntityKind::ObjectSpawn, templateIndex, position));
    if (const auto* const owner = CopyOfOwner(copy.osId, copy.modes, points)) {
      GiveToControlPoint(spawn, owner);
    } else if (placing.IsInPlace()) {
      spawn.osId = copy.osId;
    } else {
      GiveToControlPoint(spawn, NearestControlPoint(position, copy.modes));
    }
    if (placing.IsInPlace()) spawn.team = copy.team;
    FinishCopy(spawn, copy);
  }
}

void PlaceEntities(const Placing& placing) {
  const PlacedPoints points = PlaceControlPoints(placing);
  PlaceSoldierSpawns(placing, points);
  PlaceObjectSpawns(placing, points);
}

// Whether all of it fits into the level; after a message when not.
bool HasRoomFor(const CopiedObjects& copied) {
  std::size_t groups = 0;
  for (const ControlPointCopy& copy : copied.controlPoints)
    groups += std::max<std::size_t>(copy.groups.size(), 1);
  return HasRoomForObjects(copied.objects.size()) &&
         (copied.controlPoints.empty() ||
          (HasRoomForEntity(EntityKind::ControlPoint, copied.controlPoints.size()) &&
           HasRoomForGroups(groups))) &&
         (copied.soldierSpawns.empty() ||
          HasRoomForEntity(EntityKind::SoldierSpawn, copied.soldierSpawns.size())) &&
         HasRoomForInstance(EntityKind::ObjectSpawn, copied.objectSpawns.size());
}

// The last ones of the tables, from the counts on.
struct TableSizes {
  std::size_t objects = objectStore.objects.size();
  std::array<std::size_t, kEntityKinds.size()> instances{};

  TableSizes() {
    for (std::size_t kind = 0; kind < instances.size(); ++kind)
      instances[kind] = entities.tables[kind].instances.size();
  }
};

void SelectAllBehind(const TableSizes& before) {
  DeselectAll();
  auto& objects = objectStore.objects;
  for (std::size_t i = before.objects; i < objects.size(); ++i) objects[i].selected = true;
  for (std::size_t kind = 0; kind < before.instances.size(); ++kind) {
    const auto& instances = entities.tables[kind].instances;
    for (std::size_t i = before.instances[kind]; i < instances.size(); ++i)
      instances[i]->selected = true;
  }
  DeselectHidden();
  ComputePivot();
}

}  // namespace

void CopySelected() {
  objectStore.copied = CopiesOfSelected();
  editor.somethingCopied = AnySelected();
}

void PasteCopied(int x, int y) {
  const ObjectStep step("Paste");
  PickCursorPoint(x, y);
  const Vector3 point = objectStore.CursorPoint;
  PasteObjects(point);
  PlaceEntities({objectStore.copied, point});
}

bool DuplicateSelected() {
  const CopiedObjects copied = CopiesOfSelected();
  if (!HasRoomFor(copied)) return false;
  const ObjectStep step("Duplicate");
  const TableSizes before;
  DuplicateObjects(copied);
  PlaceEntities({copied, std::nullopt});
  SelectAllBehind(before);
  KeepToolFor(AnySelected());
  return true;
}

void ForgetCopied() {
  objectStore.copied = {};
  editor.somethingCopied = editor.pastePending = false;
}

}  // namespace mw
