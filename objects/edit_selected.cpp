#include "objects/edit_selected.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <deque>
#include <string_view>
#include <utility>
#include <vector>

#include "core/editor_state.h"
#include "core/hooks.h"
#include "core/text.h"
#include "objects/entity_editing.h"
#include "objects/object_history.h"
#include "objects/object_mapper.h"
#include "objects/object_selection.h"
#include "objects/property_sheet.h"
#include "objects/spawn_groups.h"
#include "objects/visibility.h"
#include "platform/prompts.h"

namespace mw {
namespace {

constexpr std::array kAxes{&Vector3::x, &Vector3::y, &Vector3::z};

// The same numbers of many things, as three boxes.
struct VectorRow {
  std::vector<Vector3*> own;
  std::array<float, kAxes.size()> shown{}, before{};

  explicit VectorRow(std::vector<Vector3*> vectors) : own(std::move(vectors)) {
    for (std::size_t i = 0; i < kAxes.size(); ++i) {
      const float first = own.front()->*kAxes[i];
      const auto isFirst = [&](const Vector3* vector) { return vector->*kAxes[i] == first; };
      shown[i] = before[i] = std::ranges::all_of(own, isFirst) ? first : kNoFloat;
    }
  }
  bool IsTyped(std::size_t axis) const {
    return !std::isnan(shown[axis]) && shown[axis] != before[axis];
  }
  bool Store() const {
    bool any = false;
    for (std::size_t i = 0; i < kAxes.size(); ++i) {
      if (!IsTyped(i)) continue;
      for (Vector3* const vector : own) vector->*kAxes[i] = shown[i];
      any = true;
    }
    return any;
  }
};

struct IntegerRow {
  std::vector<std::int32_t*> own;
  std::int32_t shown = 0, before = 0;

  explicit IntegerRow(std::vector<std::int32_t*> integers) : own(std::move(integers)) {
    const auto isFirst = [this](const std::int32_t* integer) { return *integer == *own.front(); };
    shown = before = std::ranges::all_of(own, isFirst) ? *own.front() : kNoInteger;
  }
  bool Store() const {
    if (shown == before || shown == kNoInteger) return false;
    for (std::int32_t* const integer : own) *integer = shown;
    return true;
  }
};

GameModeChoices CommonModes(const std::vector<SpawnInstance*>& instances) {
  GameModeChoices common = ChoicesOf(instances.front()->modes);
  for (const SpawnInstance* const instance : instances) {
    const GameModeChoices own = ChoicesOf(instance->modes);
    for (std::size_t i = 0; i < common.size(); ++i)
      common[i].mixed |= own[i].checked != common[i].checked;
  }
  return common;
}

// What is selected, by what it is. Entities without a template are left out.
struct Selected {
  std::vector<StaticObject*> objects;
  std::vector<SpawnInstance*> instances;
  std::vector<std::pair<SoldierSpawn*, SoldierSpawnTemplate*>> soldiers;
  std::vector<ObjectSpawn*> vehicles;
  std::vector<std::pair<ControlPoint*, ControlPointTemplate*>> points;

  Selected() {
    for (StaticObject& object : objectStore.objects) {
      if (object.selected) objects.push_back(&object);
    }
    for (const EntityTables& table : entities.tables) {
      for (const auto& instance : table.instances) {
        if (instance->selected && TemplateOf(*instance)) Add(*instance);
      }
    }
  }
  void Add(SpawnInstance& instance) {
    instances.push_back(&instance);
    switch (instance.Kind()) {
      case EntityKind::SoldierSpawn:
        soldiers.emplace_back(static_cast<SoldierSpawn*>(&instance),
                              static_cast<SoldierSpawnTemplate*>(TemplateOf(instance)));
        break;
      case EntityKind::ObjectSpawn:
        vehicles.push_back(static_cast<ObjectSpawn*>(&instance));
        break;
      case EntityKind::ControlPoint:
        points.emplace_back(static_cast<ControlPoint*>(&instance),
                            ControlPointTemplateOf(instance));
        break;
    }
  }
  std::size_t Count() const { return objects.size() + instances.size(); }
  bool IsOfSeveralKinds() const {
    return int{!objects.empty()} + int{!soldiers.empty()} + int{!vehicles.empty()} +
               int{!points.empty()} >
           1;
  }
};

struct ControlPointNumber {
  std::string_view label;
  std::int32_t ControlPointTemplate::*number;
  FieldType type = FieldType::Integers;
};
constexpr ControlPointNumber kControlPointNumbers[] = {
    {"radius", &ControlPointTemplate::radius},
    {"team", &ControlPointTemplate::team, FieldType::Team},
    {"areaValue", &ControlPointTemplate::areaValue},
    {"timeToGetControl", &ControlPointTemplate::timeToGetControl},
    {"timeToLoseControl", &ControlPointTemplate::timeToLoseControl},
    {"disableIfEnemyInsideRadius", &ControlPointTemplate::disableIfEnemyInsideRadius},
    {"disableWhenLosingControl", &ControlPointTemplate::disableWhenLosingControl},
    {"loseControlWhenEnemyClose", &ControlPointTemplate::loseControlWhenEnemyClose},
    {"loseControlWhenNotClose", &ControlPointTemplate::loseControlWhenNotClose},
    {"unableToChangeTeam", &ControlPointTemplate::unableToChangeTeam}};

// The sheet with the variables that its fields edit, at places that stay.
class SheetOfMany {
 public:
  explicit SheetOfMany(const Selected& selected) : selected_(selected) {
    sheet.title = FormatText("Edit %i Selected", static_cast<int>(selected.Count()));
    AddPlaces();
    AddObjects();
    AddEntities();
    AddSoldiers();
    AddVehicles();
    AddPoints();
  }

  // Puts what was typed into the records. True if that was anything.
  bool Store() {
    bool any = false;
    if (scale_ && IsScaleTyped() && HasPositiveScale()) {
      any |= scale_->Store();
      for (StaticObject* const object : selected_.objects) object->scaleGiven = true;
    }
    for (const VectorRow* const row : places_) any |= row->Store();
    for (const IntegerRow& row : integers_) any |= row.Store();
    return any | StoreModes();
  }

  PropertySheet sheet;

 private:
  VectorRow* AddVectors(std::string_view label, std::vector<Vector3*> own) {
    VectorRow& row = vectors_.emplace_back(std::move(own));
    const auto count = static_cast<std::int32_t>(row.shown.size());
    MayBeEmpty(AddField(sheet, row.shown.data(), count, FieldType::Floats, label));
    return &row;
  }
  void AddIntegers(std::string_view label, std::vector<std::int32_t*> own,
                   FieldType type = FieldType::Integers, GameModeMask filterModes = 0) {
    IntegerRow& row = integers_.emplace_back(std::move(own));
    PropertyField* const field = AddField(sheet, &row.shown, 1, type, label);
    MayBeEmpty(field);
    if (field) field->filterModes = filterModes;
  }
  static void MayBeEmpty(PropertyField* field) {
    if (field) field->mayBeEmpty = true;
  }
  void AddHeading(std::string_view label) {
    if (selected_.IsOfSeveralKinds()) AddField(sheet, {}, 0, FieldType::Heading, label);
  }

  // Control points have no turn.
  void AddPlaces() {
    std::vector<Vector3*> positions, rotations;
    for (StaticObject* const object : selected_.objects) {
      positions.push_back(&object->position);
      rotations.push_back(&object->rotation);
    }
    for (SpawnInstance* const instance : selected_.instances) {
      positions.push_back(&instance->position);
      if (instance->Kind() != EntityKind::ControlPoint) rotations.push_back(&instance->rotation);
    }
    places_.push_back(AddVectors("Pos", std::move(positions)));
    if (!rotations.empty()) places_.push_back(AddVectors("Rot", std::move(rotations)));
  }
  void AddObjects() {
    if (selected_.objects.empty()) return;
    std::vector<Vector3*> scales;
    for (StaticObject* const object : selected_.objects) scales.push_back(&object->scale);
    AddHeading("Static Objects");
    scale_ = AddVectors("Scale", std::move(scales));
  }
  void AddEntities() {
    if (selected_.instances.empty()) return;
    modes_ = modesBefore_ = CommonModes(selected_.instances);
    AddHeading("Control Points and Spawns");
    AddField(sheet, modes_.data(), kGameModeCount, FieldType::GameModes, "Game Modes");
  }
  void AddSoldiers() {
    if (selected_.soldiers.empty()) return;
    std::vector<std::int32_t*> groups, paratroopers;
    GameModeMask modes = 0;
    for (const auto& [spawn, own] : selected_.soldiers) {
      groups.push_back(&own->group);
      paratroopers.push_back(&own->spawnAsParaTrooper);
      modes |= own->modes;
    }
    AddHeading("Soldier Spawns");
    AddIntegers("Spawn Group", std::move(groups), FieldType::ControlPoint, modes);
    AddIntegers("spawnAsParaTrooper", std::move(paratroopers));
  }
  void AddVehicles() {
    if (selected_.vehicles.empty()) return;
    std::vector<std::int32_t*> points, teams;
    GameModeMask modes = 0;
    for (ObjectSpawn* const spawn : selected_.vehicles) {
      points.push_back(&spawn->osId);
      teams.push_back(&spawn->team);
      modes |= spawn->modes;
    }
    AddHeading("Object Spawns");
    AddIntegers("OsID", std::move(points), FieldType::ControlPointOrNone, modes);
    AddIntegers("Team", std::move(teams), FieldType::Team);
  }
  void AddPoints() {
    if (selected_.points.empty()) return;
    AddHeading("Control Points");
    for (const auto& [label, number, type] : kControlPointNumbers) {
      std::vector<std::int32_t*> numbers;
      for (const auto& [point, own] : selected_.points) numbers.push_back(&(own->*number));
      AddIntegers(label, std::move(numbers), type);
    }
  }

  bool IsScaleTyped() const {
    return scale_->IsTyped(0) || scale_->IsTyped(1) || scale_->IsTyped(2);
  }
  bool HasPositiveScale() const {
    for (std::size_t i = 0; i < kAxes.size(); ++i) {
      if (!scale_->IsTyped(i) || scale_->shown[i] > 0) continue;
      ShowPrompt("A scale must be greater than 0. The scales stay as they were.", "Error",
                 PromptButtons::Ok, PromptIcon::Stop);
      return false;
    }
    return true;
  }

  // Of an instance, with what was chosen for all.
  GameModeMask ModesFor(const SpawnInstance& instance) const {
    GameModeChoices choices = ChoicesOf(instance.modes);
    for (std::size_t i = 0; i < choices.size(); ++i) {
      if (!modes_[i].mixed) choices[i].checked = modes_[i].checked;
    }
    return ModesOf(choices);
  }
  // All or none: without any mode an entity would never be shown or saved.
  bool StoreModes() {
    if (modes_ == modesBefore_) return false;
    const auto isNowhere = [this](const SpawnInstance* one) { return ModesFor(*one) == 0; };
    if (std::ranges::any_of(selected_.instances, isNowhere)) {
      ShowPrompt("At least one game mode is needed. The game modes stay as they were.", "Error",
                 PromptButtons::Ok, PromptIcon::Stop);
      return false;
    }
    for (SpawnInstance* const instance : selected_.instances) instance->modes = ModesFor(*instance);
    for (SpawnInstance* const instance : selected_.instances) FinishEntityEdit(*instance);
    return true;
  }

  const Selected& selected_;
  std::deque<VectorRow> vectors_;
  std::deque<IntegerRow> integers_;
  std::vector<const VectorRow*> places_;
  VectorRow* scale_ = nullptr;
  GameModeChoices modes_{}, modesBefore_{};
};

std::vector<std::int32_t> TeamsOf(const Selected& selected) {
  std::vector<std::int32_t> teams;
  for (const auto& [point, own] : selected.points) teams.push_back(own->team);
  return teams;
}

// The groups of control points that changed sides go with them.
void FollowTeams(const Selected& selected, const std::vector<std::int32_t>& before) {
  for (std::size_t i = 0; i < before.size(); ++i) {
    const auto& [point, own] = selected.points[i];
    if (own->team != before[i])
      GiveSpawnGroupsToTeam(own->spawnGroupId, ModesWithSiblings(*point), own->team);
  }
}

}  // namespace

bool EditSelected() {
  const Selected selected;
  if (selected.Count() == 0) return false;
  if (selected.Count() == 1 && selected.objects.empty()) return selected.instances.front()->Edit();
  const ObjectStep step("Edit Selected");
  SheetOfMany many(selected);
  if (!hooks.runPropertySheet(many.sheet)) return false;
  const std::vector<std::int32_t> teams = TeamsOf(selected);
  if (many.Store()) {
    FollowTeams(selected, teams);
    editor.levelModified = true;
  }
  DeselectHidden();
  ComputePivot();
  return true;
}

}  // namespace mw
