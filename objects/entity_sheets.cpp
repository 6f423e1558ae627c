#include <algorithm>
#include <array>
#include <limits>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/text.h"
#include "objects/entities.h"
#include "objects/entity_editing.h"
#include "objects/object_history.h"
#include "objects/property_sheet.h"
#include "objects/spawn_groups.h"
#include "objects/visibility.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr auto kNameLength = static_cast<std::int32_t>(EntityName::kCapacity);

// A sheet works on copies. After OK they are compared with what they were taken from: what the user
// did not change stays, down to its last digit and to characters that a new name may not have.
using VectorCopy = std::array<float, 3>;

VectorCopy CopyOf(const Vector3& vector) { return {vector.x, vector.y, vector.z}; }
Vector3 VectorOf(const VectorCopy& copy) { return {copy[0], copy[1], copy[2]}; }

struct InstanceCopy {
  VectorCopy position, rotation;
  GameModeChoices modes;

  explicit InstanceCopy(const SpawnInstance& instance)
      : position(CopyOf(instance.position)),
        rotation(CopyOf(instance.rotation)),
        modes(ChoicesOf(instance.modes)) {}
  bool operator==(const InstanceCopy&) const = default;
};

PropertyField* AddText(PropertySheet& sheet, EntityName& text, std::string_view label) {
  return AddField(sheet, TextOf(text), kNameLength, FieldType::Text, label);
}

void AddVehicle(PropertySheet& sheet, EntityName& name, std::string_view label) {
  AddField(sheet, TextOf(name), kNameLength, FieldType::Vehicle, label);
}

void AddInteger(PropertySheet& sheet, std::int32_t& value, std::string_view label,
                FieldType type = FieldType::Integers) {
  AddField(sheet, &value, 1, type, label);
}

void AddVector(PropertySheet& sheet, VectorCopy& vector, std::string_view label) {
  AddField(sheet, vector.data(), static_cast<std::int32_t>(vector.size()), FieldType::Floats,
           label);
}

// A choice among the control point templates that share one of these modes.
void AddControlPoint(PropertySheet& sheet, std::int32_t& groupId, FieldType type,
                     GameModeMask filterModes, std::string_view label) {
  if (PropertyField* field = AddField(sheet, &groupId, 1, type, label)) {
    field->filterModes = filterModes;
  }
}

void AddGameModes(PropertySheet& sheet, GameModeChoices& modes) {
  AddField(sheet, modes.data(), kGameModeCount, FieldType::GameModes, "Game Modes");
}

// After a change of a template: its instances are called like it, and the tree shows it.
void PassNameOn(SpawnTemplate& renamed, EntityKind kind) {
  renamed.UpdateTreeItem(kind);
  for (const auto& instance : entities.Of(kind).instances) {
    if (TemplateOf(*instance) != &renamed) continue;
    instance->name = renamed.name;
    instance->UpdateTreeItem();
  }
}

void CleanIfChanged(EntityName& name, const EntityName& before) {
  if (!(name == before)) CleanName(name);
}

void FinishName(SpawnTemplate& renamed, EntityKind kind) {
  MakeNameUnique(renamed, kind);
  PassNameOn(renamed, kind);
}

// What every edit of an instance ends with. Without any game mode it would never be shown or saved.
void FinishEdit(SpawnInstance& instance, const InstanceCopy& edited) {
  instance.position = VectorOf(edited.position);
  instance.rotation = VectorOf(edited.rotation);
  const GameModeMask chosen = ModesOf(edited.modes);
  if (chosen != 0) instance.modes = chosen;
  FinishEntityEdit(instance);
  DeselectHidden();
  editor.levelModified = true;
  if (chosen == 0) {
    ShowPrompt("At least one game mode is needed. The game modes stay as they were.", "Error",
               PromptButtons::Ok, PromptIcon::Stop);
  }
}

void AddControlPointFields(PropertySheet& sheet, ControlPointTemplate& point,
                           VectorCopy& relativePosition) {
  AddText(sheet, point.name, "Name");
  AddText(sheet, point.controlPointName, "controlPointName");
  AddInteger(sheet, point.radius, "radius");
  AddInteger(sheet, point.team, "team", FieldType::Team);
  AddInteger(sheet, point.areaValue, "areaValue");
  AddInteger(sheet, point.timeToGetControl, "timeToGetControl");
  AddInteger(sheet, point.timeToLoseControl, "timeToLoseControl");
  AddInteger(sheet, point.disableIfEnemyInsideRadius, "disableIfEnemyInsideRadius");
  AddInteger(sheet, point.disableWhenLosingControl, "disableWhenLosingControl");
  AddInteger(sheet, point.loseControlWhenEnemyClose, "loseControlWhenEnemyClose");
  AddInteger(sheet, point.loseControlWhenNotClose, "loseControlWhenNotClose");
  AddInteger(sheet, point.unableToChangeTeam, "unableToChangeTeam");
  AddText(sheet, point.geometry, "geometry");
  AddInteger(sheet, point.hasCollisionPhysics, "hasCollisionPhysics");
  AddText(sheet, point.addTemplate, "addTemplate");
  AddText(sheet, point.teamGeometry1, "teamGeometry 1");
  AddText(sheet, point.teamGeometry2, "teamGeometry 2");
  AddVector(sheet, relativePosition, "relative position");
}

void CleanChangedNames(ControlPointTemplate& point, const ControlPointTemplate& before) {
  for (EntityName ControlPointTemplate::*name :
       {&ControlPointTemplate::controlPointName, &ControlPointTemplate::geometry,
        &ControlPointTemplate::addTemplate, &ControlPointTemplate::teamGeometry1,
        &ControlPointTemplate::teamGeometry2}) {
    CleanIfChanged(point.*name, before.*name);
  }
  CleanIfChanged(point.name, before.name);
}

// Delays that the user changed: none is negative, and the longest is longer than the shortest.
void CorrectDelays(ObjectSpawnTemplate& edited, const ObjectSpawnTemplate& before) {
  if (edited.minSpawnDelay == before.minSpawnDelay && edited.maxSpawnDelay == before.maxSpawnDelay)
    return;
  constexpr std::int32_t kLongest = std::numeric_limits<std::int32_t>::max();
  edited.minSpawnDelay = std::clamp(edited.minSpawnDelay, 0, kLongest - 1);
  edited.maxSpawnDelay = std::max(edited.maxSpawnDelay, edited.minSpawnDelay + 1);
}

// The catalogue's names are in lower case.
void LowerIfChanged(EntityName& object, const EntityName& before) {
  if (!(object == before)) object = LowerCase(object);
}

}  // namespace

void FinishEntityEdit(SpawnInstance& instance) {
  WidenTemplateModes(instance);
  if (SpawnTemplate* own = TemplateOf(instance)) {
    FinishName(*own, instance.Kind());
  } else {
    instance.UpdateTreeItem();
  }
}

bool SpawnTemplate::Edit(EntityKind) { return false; }

bool ObjectSpawnTemplate::Edit(EntityKind kind) {
  const ObjectStep step("Edit Object Spawn Template");
  ObjectSpawnTemplate copy = *this;
  PropertySheet sheet;
  sheet.title = "Edit Object Spawn Template";
  AddText(sheet, copy.name, "Name");
  AddVehicle(sheet, copy.team1Object, "Team 1 Object");
  AddVehicle(sheet, copy.team2Object, "Team 2 Object");
  AddInteger(sheet, copy.minSpawnDelay, "minSpawnDelay");
  AddInteger(sheet, copy.maxSpawnDelay, "maxSpawnDelay");
  AddInteger(sheet, copy.spawnDelayAtStart, "spawnDelayAtStart");
  AddInteger(sheet, copy.timeToLive, "timeToLive");
  AddInteger(sheet, copy.distance, "distance");
  AddInteger(sheet, copy.damageWhenLost, "damageWhenLost");
  AddInteger(sheet, copy.maxNrOfObjectSpawned, "maxNrOfObjectSpawned");
  if (!hooks.runPropertySheet(sheet)) return false;
  if (copy == *this) return true;

  CorrectDelays(copy, *this);
  LowerIfChanged(copy.team1Object, team1Object);
  LowerIfChanged(copy.team2Object, team2Object);
  CleanIfChanged(copy.name, name);
  *this = copy;
  FinishName(*this, kind);
  editor.levelModified = true;
  return true;
}

bool SoldierSpawn::Edit() {
  auto* own = static_cast<SoldierSpawnTemplate*>(TemplateOf(*this));
  if (!own) return false;
  const ObjectStep step("Edit Soldier Spawn");
  SoldierSpawnTemplate templateCopy = *own;
  InstanceCopy copy(*this);
  PropertySheet sheet;
  sheet.title = "Edit Soldier Spawn";
  AddText(sheet, templateCopy.name, "Name");
  AddControlPoint(sheet, templateCopy.group, FieldType::ControlPoint, own->modes, "Spawn Group");
  AddInteger(sheet, templateCopy.spawnId, "SpawnID");
  AddInteger(sheet, templateCopy.spawnAsParaTrooper, "spawnAsParaTrooper");
  AddVector(sheet, copy.position, "Pos");
  AddVector(sheet, copy.rotation, "Rot");
  AddGameModes(sheet, copy.modes);
  if (!hooks.runPropertySheet(sheet)) return false;
  if (templateCopy == *own && copy == InstanceCopy(*this)) return true;

  CleanIfChanged(templateCopy.name, own->name);
  *own = templateCopy;
  KeepSpawnIdFree(own->spawnId);
  FinishEdit(*this, copy);
  return true;
}

bool ObjectSpawn::Edit() {
  const ObjectStep step("Edit Object Spawn");
  EntityName shownName = name;
  std::int32_t controlPoint = osId, side = team;
  InstanceCopy copy(*this);
  PropertySheet sheet;
  sheet.title = "Edit Object Spawn";
  if (PropertyField* field = AddText(sheet, shownName, "Name")) field->editable = false;
  AddVector(sheet, copy.position, "Pos");
  AddVector(sheet, copy.rotation, "Rot");
  AddControlPoint(sheet, controlPoint, FieldType::ControlPointOrNone, modes, "OsID");
  AddInteger(sheet, side, "Team", FieldType::Team);
  AddGameModes(sheet, copy.modes);
  if (!hooks.runPropertySheet(sheet)) return false;
  if (controlPoint == osId && side == team && copy == InstanceCopy(*this)) return true;

  osId = controlPoint;
  team = side;
  FinishEdit(*this, copy);
  return true;
}

bool ControlPoint::Edit() {
  ControlPointTemplate* own = ControlPointTemplateOf(*this);
  if (!own) return false;
  const ObjectStep step("Edit Control Point");
  ControlPointTemplate templateCopy = *own;
  VectorCopy relativePosition = CopyOf(own->relativePosition);
  InstanceCopy copy(*this);
  PropertySheet sheet;
  sheet.title = "Edit Control Point";
  AddControlPointFields(sheet, templateCopy, relativePosition);
  AddVector(sheet, copy.position, "Pos");
  AddGameModes(sheet, copy.modes);
  if (!hooks.runPropertySheet(sheet)) return false;
  templateCopy.relativePosition = VectorOf(relativePosition);
  if (templateCopy == *own && copy == InstanceCopy(*this)) return true;

  CleanChangedNames(templateCopy, *own);
  const bool changedSides = templateCopy.team != own->team;
  *own = templateCopy;
  FinishEdit(*this, copy);
  if (changedSides) GiveSpawnGroupsToTeam(own->spawnGroupId, ModesWithSiblings(*this), own->team);
  return true;
}

}  // namespace mw
