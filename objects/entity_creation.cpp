#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <utility>

#include "core/editor_state.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/object_store.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr int kNearControlPoint = 4000;    // world units
constexpr std::int32_t kLastGroupId = 47;  // of those that new spawn groups try

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

// Whether the user may add one more; shows the kind's message when not.
bool HasRoomForTemplate(EntityKind kind) {
  const std::size_t capacity =
      kind == EntityKind::ControlPoint ? kMaxControlPointTemplates : kMaxTemplates;
  if (entities.Of(kind).templates.size() < capacity) return true;
  ShowFull(kind);
  return false;
}

bool HasRoomForInstance(EntityKind kind) {
  if (entities.Of(kind).instances.size() < kMaxInstances) return true;
  ShowFull(kind);
  return false;
}

bool IsTemplateName(EntityKind kind, const EntityName& name) {
  return std::ranges::any_of(entities.Of(kind).templates, [&](const auto& spawnTemplate) {
    return EqualNoCase(spawnTemplate->name, name);
  });
}

ControlPointTemplate* TemplateOfControlPoint(int number) {
  const auto& controlPoints = entities.Of(EntityKind::ControlPoint).instances;
  const auto index = static_cast<std::size_t>(number - 1);
  return index < controlPoints.size() ? ControlPointTemplateOf(*controlPoints[index]) : nullptr;
}

std::int32_t TakeSpawnId() {
  const std::int32_t id = entities.nextSpawnId;
  if (id < std::numeric_limits<std::int32_t>::max()) ++entities.nextSpawnId;
  return id;
}

void AddSoldierSpawnTemplate(const Vector3& position) {
  if (!HasRoomForTemplate(EntityKind::SoldierSpawn)) return;
  auto made = std::make_unique<SoldierSpawnTemplate>();
  made->group = NearestControlPoint(position);
  const ControlPointTemplate* near = TemplateOfControlPoint(made->group);
  const std::string_view owner = near ? near->name.View() : std::string_view();
  made->name = UniqueTemplateName(EntityKind::SoldierSpawn, std::string(owner) + "_Spawn");
  made->modes = entities.ModeFilter;
  made->spawnId = TakeSpawnId();
  entities.Of(EntityKind::SoldierSpawn).templates.push_back(std::move(made));
}

bool IsGroupId(std::int32_t id) {
  return std::ranges::any_of(entities.spawnGroups,
                             [id](const SpawnGroup& group) { return group.id == id; });
}

void AddSpawnGroup() {
  if (entities.spawnGroups.size() >= kMaxSpawnGroups) return ShowFull("Too many spawn groups.");
  SpawnGroup group;
  group.id = 1;
  while (group.id <= kLastGroupId && IsGroupId(group.id)) ++group.id;
  if (group.id > kLastGroupId) group.id = 1;
  group.team = 1;
  group.icon = "test1.tga";
  group.modes = entities.ModeFilter;
  entities.spawnGroups.push_back(group);
}

void AddControlPointTemplate() {
  if (!HasRoomForTemplate(EntityKind::ControlPoint)) return;
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
  entities.Of(EntityKind::ControlPoint).templates.push_back(std::move(made));
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

SpawnInstance& Place(EntityKind kind, int templateIndex) {
  EntityTables& tables = entities.Of(kind);
  auto instance =
      tables.templates[static_cast<std::size_t>(templateIndex)]->CreateInstance(templateIndex);
  instance->position = CursorPlace();
  tables.instances.push_back(std::move(instance));
  editor.levelModified = true;
  return *tables.instances.back();
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

int NearestControlPoint(const Vector3& position) {
  const auto& controlPoints = entities.Of(EntityKind::ControlPoint).instances;
  double nearest = kNearControlPoint;
  int number = 1;
  for (std::size_t i = 0; i < controlPoints.size(); ++i) {
    const double distance = std::trunc(controlPoints[i]->position.DistanceTo(position));
    if (distance > nearest) continue;
    nearest = distance;
    number = static_cast<int>(i) + 1;
  }
  return number;
}

void DropNewEntity(EntityKind kind) {
  if (kind == EntityKind::ObjectSpawn || !HasRoomForInstance(kind)) return;
  if (kind == EntityKind::SoldierSpawn) {
    AddSoldierSpawnTemplate(CursorPlace());
  } else {
    AddSpawnGroup();
    AddControlPointTemplate();
  }
  Place(kind, static_cast<int>(entities.Of(kind).templates.size()) - 1);
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
  auto& spawn = static_cast<ObjectSpawn&>(Place(EntityKind::ObjectSpawn, templateIndex));
  spawn.osId = NearestControlPoint(spawn.position);
  if (const ControlPointTemplate* near = TemplateOfControlPoint(spawn.osId)) {
    spawn.team = near->team;
  }
  return true;
}

void AddObjectSpawnTemplate() {
  if (!HasRoomForTemplate(EntityKind::ObjectSpawn)) return;
  auto made = NewObjectSpawnTemplate();
  const bool accepted = made->Edit(EntityKind::ObjectSpawn);
  editor.levelModified = true;
  if (!accepted) return;
  entities.Of(EntityKind::ObjectSpawn).templates.push_back(std::move(made));
  entities.Of(EntityKind::ObjectSpawn).templates.back()->UpdateTreeItem(EntityKind::ObjectSpawn);
}

}  // namespace mw
