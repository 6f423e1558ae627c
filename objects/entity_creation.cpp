#include "objects/entity_creation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "core/editor_state.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_history.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/object_store.h"
#include "objects/property_choices.h"
#include "objects/spawn_groups.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr int kNearControlPoint = 4000;  // world units
// Of spawns that no control point is near: the first that will come has it.
constexpr std::int32_t kFirstGroup = 1;

void ShowFull(const char* text) { ShowPrompt(text, "Error", PromptButtons::Ok, PromptIcon::Stop); }

void ShowFull(EntityKind kind) {
  switch (kind) {
    case EntityKind::SoldierSpawn:
      return ShowFull("Too many soldier spawn templates.");
    case EntityKind::ObjectSpawn:
      return ShowFull("Too many object spawn templates.");
    case EntityKind::ControlPoint:
      return ShowFull("Too many control point templates.");
  }
}

bool IsTemplateName(EntityKind kind, const EntityName& name) {
  return std::ranges::any_of(entities.Of(kind).templates, [&](const auto& spawnTemplate) {
    return EqualNoCase(spawnTemplate->name, name);
  });
}

std::int32_t TakeSpawnId() {
  const std::int32_t id = entities.nextSpawnId;
  if (id < std::numeric_limits<std::int32_t>::max()) ++entities.nextSpawnId;
  return id;
}

std::unique_ptr<SoldierSpawnTemplate> NewSoldierSpawnTemplate(const Vector3& position) {
  auto made = std::make_unique<SoldierSpawnTemplate>();
  made->modes = entities.ModeFilter;
  GiveToControlPoint(*made, NearestControlPoint(position, made->modes));
  return made;
}

// Without room for one more the new control point shares the last group.
void AddSpawnGroup() {
  if (!HasRoomForSpawnGroups(1)) return ShowFull("Too many spawn groups.");
  entities.spawnGroups.push_back(NewSpawnGroup(entities.ModeFilter));
}

std::unique_ptr<ControlPointTemplate> NewControlPointTemplate() {
  auto made = std::make_unique<ControlPointTemplate>();
  made->name = UniqueTemplateName(EntityKind::ControlPoint, "New_Control_Point");
  made->controlPointName = made->name;
  made->modes = entities.ModeFilter;
  const auto& groups = entities.spawnGroups;
  made->team = groups.empty() ? 1 : groups.back().team;
  made->group = groups.empty() ? 1 : groups.back().id;
  made->spawnGroupId = made->objectSpawnerId = made->group;
  made->radius = 50;
  made->areaValue = 20;
  made->timeToGetControl = made->timeToLoseControl = 10;
  made->loseControlWhenEnemyClose = 1;
  made->geometry = "flagbase_m1";
  made->addTemplate = "AnimatedFlag";
  made->hasCollisionPhysics = 1;
  made->teamGeometry1 = "flagge_m1";
  made->teamGeometry2 = "flagus_m1";
  made->relativePosition = {0, 8.2f, 0};
  return made;
}

std::unique_ptr<ObjectSpawnTemplate> NewObjectSpawnTemplate() {
  auto made = std::make_unique<ObjectSpawnTemplate>();
  made->name = UniqueTemplateName(EntityKind::ObjectSpawn, "New_Object_Spawn");
  made->modes = entities.ModeFilter;
  made->team1Object = "object1";
  made->team2Object = "object2";
  made->minSpawnDelay = 10;
  made->maxSpawnDelay = 20;
  made->timeToLive = 45;
  made->distance = 40;
  made->damageWhenLost = 10;
  return made;
}

template <typename Instance>
std::unique_ptr<Instance> InstanceOf(const SpawnTemplate& spawnTemplate, int templateIndex) {
  auto instance = std::make_unique<Instance>();
  instance->name = spawnTemplate.name;
  instance->modes = spawnTemplate.modes;
  instance->templateIndex = templateIndex;
  instance->UpdateTreeItem();
  return instance;
}

Vector3 CursorPlace() {
  const Vector3& cursor = objectStore.CursorPoint;
  return {MirrorX(cursor.x), cursor.y, cursor.z};
}

}  // namespace

std::unique_ptr<SpawnInstance> SoldierSpawnTemplate::CreateInstance(int templateIndex) {
  return InstanceOf<SoldierSpawn>(*this, templateIndex);
}

std::unique_ptr<SpawnInstance> ObjectSpawnTemplate::CreateInstance(int templateIndex) {
  auto instance = InstanceOf<ObjectSpawn>(*this, templateIndex);
  instance->team = 1;
  return instance;
}

std::unique_ptr<SpawnInstance> ControlPointTemplate::CreateInstance(int templateIndex) {
  return InstanceOf<ControlPoint>(*this, templateIndex);
}

EntityName UniqueTemplateName(EntityKind kind, std::string_view base) {
  for (int number = 1;; ++number) {
    const std::string digits = std::to_string(number);
    const EntityName name =
        std::string(base.substr(0, EntityName::kCapacity - digits.size())) + digits;
    if (!IsTemplateName(kind, name)) return name;
  }
}

bool HasRoomForInstance(EntityKind kind, std::size_t count) {
  if (entities.Of(kind).instances.size() + count <= kMaxInstances) return true;
  ShowFull(kind);
  return false;
}

bool HasRoomForTemplate(EntityKind kind, std::size_t count) {
  const std::size_t capacity =
      kind == EntityKind::ControlPoint ? kMaxControlPointTemplates : kMaxTemplates;
  if (entities.Of(kind).templates.size() + count <= capacity) return true;
  ShowFull(kind);
  return false;
}

bool HasRoomForEntity(EntityKind kind, std::size_t count) {
  return HasRoomForInstance(kind, count) && HasRoomForTemplate(kind, count);
}

SpawnInstance& PlaceEntity(EntityKind kind, int templateIndex, const Vector3& position) {
  EntityTables& tables = entities.Of(kind);
  auto instance =
      tables.templates[static_cast<std::size_t>(templateIndex)]->CreateInstance(templateIndex);
  instance->position = position;
  tables.instances.push_back(std::move(instance));
  editor.levelModified = true;
  return *tables.instances.back();
}

SpawnInstance& PlaceEntity(EntityKind kind, std::unique_ptr<SpawnTemplate> made,
                           const Vector3& position) {
  auto& templates = entities.Of(kind).templates;
  templates.push_back(std::move(made));
  return PlaceEntity(kind, static_cast<int>(templates.size()) - 1, position);
}

SpawnGroup NewSpawnGroup(GameModeMask modes) {
  SpawnGroup group;
  group.id = FreeSpawnGroupId();
  group.team = 1;
  group.icon = "test1.tga";
  group.modes = modes;
  return group;
}

const ControlPointTemplate* NearestControlPoint(const Vector3& position, GameModeMask modes) {
  const ControlPointTemplate* found = nullptr;
  double nearest = kNearControlPoint;
  for (const auto& point : entities.Of(EntityKind::ControlPoint).instances) {
    const double distance = std::trunc(point->position.DistanceTo(position));
    if (distance > nearest || !(point->modes & modes)) continue;
    nearest = distance;
    found = ControlPointTemplateOf(*point);
  }
  return found;
}

void GiveToControlPoint(SoldierSpawnTemplate& made, const ControlPointTemplate* owner) {
  made.group = owner ? owner->group : kFirstGroup;
  const std::string name = owner ? owner->name.String() : std::string();
  made.name = UniqueTemplateName(EntityKind::SoldierSpawn, name + "_Spawn");
  made.spawnId = TakeSpawnId();
}

void GiveToControlPoint(ObjectSpawn& spawn, const ControlPointTemplate* owner) {
  spawn.osId = owner ? owner->group : kFirstGroup;
  spawn.team = owner ? owner->team : 1;
}

std::string WithoutNumber(const EntityName& name) {
  const std::string text = name.String();
  return text.substr(0, text.find_last_not_of("0123456789") + 1);
}

void GiveOwnName(SoldierSpawnTemplate& made) {
  made.name = UniqueTemplateName(EntityKind::SoldierSpawn, WithoutNumber(made.name));
  made.spawnId = TakeSpawnId();
}

void DropNewEntity(EntityKind kind) {
  if (kind == EntityKind::ObjectSpawn || !HasRoomForEntity(kind)) return;
  const Vector3 position = CursorPlace();
  if (kind == EntityKind::SoldierSpawn) {
    PlaceEntity(kind, NewSoldierSpawnTemplate(position), position);
  } else {
    AddSpawnGroup();
    PlaceEntity(kind, NewControlPointTemplate(), position);
  }
  UpdateToolButtons(AnySelected());
}

bool DropTemplate(TreeItem templateItem) {
  return DropTemplateAt(FindObjectSpawnTemplate(templateItem));
}

bool DropTemplateAt(int templateIndex) {
  const EntityTables& tables = entities.Of(EntityKind::ObjectSpawn);
  if (templateIndex < 0 || static_cast<std::size_t>(templateIndex) >= tables.templates.size()) {
    return false;
  }
  if (!HasRoomForInstance(EntityKind::ObjectSpawn)) return false;
  auto& spawn =
      static_cast<ObjectSpawn&>(PlaceEntity(EntityKind::ObjectSpawn, templateIndex, CursorPlace()));
  GiveToControlPoint(spawn, NearestControlPoint(spawn.position, spawn.modes));
  return true;
}

void AddObjectSpawnTemplate() {
  if (!HasRoomForTemplate(EntityKind::ObjectSpawn)) return;
  const ObjectStep step("Add Object Spawn Template");
  auto made = NewObjectSpawnTemplate();
  // What the sheet shows first is what OK means for a vehicle that nobody chose.
  if (const auto vehicles = VehicleNames(); !vehicles.empty()) {
    made->team1Object = made->team2Object = vehicles.front();
  }
  if (!made->Edit(EntityKind::ObjectSpawn)) return;
  editor.levelModified = true;
  entities.Of(EntityKind::ObjectSpawn).templates.push_back(std::move(made));
  entities.Of(EntityKind::ObjectSpawn).templates.back()->UpdateTreeItem(EntityKind::ObjectSpawn);
}

}  // namespace mw
