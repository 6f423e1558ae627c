// Rules about game modes: who can appear where, and what becomes of control points.
#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "core/text.h"
#include "objects/entities.h"
#include "objects/object_catalogue.h"
#include "objects/object_store.h"
#include "objects/rules.h"
#include "objects/spawn_groups.h"

namespace mw {
namespace {

using Instances = std::vector<std::unique_ptr<SpawnInstance>>;
const Instances& Soldiers() { return entities.Of(EntityKind::SoldierSpawn).instances; }
const Instances& Points() { return entities.Of(EntityKind::ControlPoint).instances; }

// The spawn group that a spawn or a control point belongs to.
std::int32_t GroupOf(const SpawnInstance& instance) {
  const SpawnTemplate* const from = TemplateOf(instance);
  return from ? from->group : 0;
}

// The team of the group in that mode; nothing when the mode does not have the group.
std::optional<std::int32_t> TeamOfGroup(std::int32_t group, GameModeMask mode) {
  const auto found = SpawnGroupsOf(group, mode);
  return found.empty() ? std::nullopt : std::optional(found.front().team);
}

bool HasOfGroup(const Instances& instances, std::int32_t group, GameModeMask mode) {
  return std::ranges::any_of(instances, [&](const auto& instance) {
    return (instance->modes & mode) != 0 && GroupOf(*instance) == group;
  });
}

std::string GroupIn(std::int32_t group, GameModeMask modes) {
  return FormatText("group %i in %s", group, ModeList(modes).c_str());
}

using IsWrongIn = std::function<bool(const SpawnInstance& instance, GameModeMask mode)>;
// Those for which it holds in one of the modes that are played, with their group and those modes.
RuleFinds WrongInModes(const Instances& instances, const IsWrongIn& isWrong) {
  RuleFinds finds;
  const GameModeMask played = PlayedModes();
  for (const auto& instance : instances) {
    GameModeMask wrong = 0;
    for (const GameModeMask mode : kFileModes) {
      if ((instance->modes & played & mode) && isWrong(*instance, mode)) wrong |= mode;
    }
    if (wrong) finds.push_back(FindOf(*instance, GroupIn(GroupOf(*instance), wrong)));
  }
  return finds;
}

// What is wrong with a template, for the brackets; nothing when it is not wrong.
using TemplateFault = std::function<std::optional<std::string>(const ObjectSpawnTemplate& from)>;
RuleFinds WrongObjectTemplates(const TemplateFault& faultOf) {
  RuleFinds finds;
  for (const auto& entry : entities.Of(EntityKind::ObjectSpawn).templates) {
    const auto fault = faultOf(static_cast<const ObjectSpawnTemplate&>(*entry));
    if (!fault) continue;
    finds.push_back({"Object spawn template " + entry->name.String(), *fault, entry->treeItem, {}});
  }
  return finds;
}
std::optional<std::string> FaultWhen(bool isWrong, std::string detail = {}) {
  return isWrong ? std::optional(std::move(detail)) : std::nullopt;
}

bool CanSideAppear(std::int32_t side, GameModeMask mode) {
  return std::ranges::any_of(Soldiers(), [&](const auto& spawn) {
    return (spawn->modes & mode) != 0 && TeamOfGroup(GroupOf(*spawn), mode) == side;
  });
}

bool IsUnknown(const EntityName& object) {
  return !object.empty() && FindCatalogueEntry(object) < 0;
}

}  // namespace

RuleFinds SidesWithoutSpawns() {
  RuleFinds finds;
  const GameModeMask played = PlayedModes();
  for (const GameModeMask mode : kFileModes) {
    if (!(played & mode)) continue;
    for (const std::int32_t side : {1, 2}) {
      if (CanSideAppear(side, mode)) continue;
      finds.push_back({"Game mode " + ModeList(mode), FormatText("side %i", side), 0, {}});
    }
  }
  return finds;
}

RuleFinds SpawnsWithoutGroup() {
  return WrongInModes(Soldiers(), [](const SpawnInstance& spawn, GameModeMask mode) {
    return !TeamOfGroup(GroupOf(spawn), mode);
  });
}

// Other modes may do without control points.
RuleFinds GroupsWithoutPoint() {
  return WrongInModes(Soldiers(), [](const SpawnInstance& spawn, GameModeMask mode) {
    const std::int32_t group = GroupOf(spawn);
    return mode == kModeConquest && TeamOfGroup(group, mode) && !HasOfGroup(Points(), group, mode);
  });
}

RuleFinds SpawnIdsTwice() {
  RuleFinds finds;
  std::vector<const SoldierSpawnTemplate*> seen;
  for (const auto& spawn : Soldiers()) {
    const auto* const from = static_cast<const SoldierSpawnTemplate*>(TemplateOf(*spawn));
    if (!from || std::ranges::find(seen, from) != seen.end()) continue;
    const bool isTaken = std::ranges::any_of(seen, [from](const auto* other) {
      return other->spawnId == from->spawnId && (other->modes & from->modes) != 0;
    });
    if (isTaken) finds.push_back(FindOf(*spawn, FormatText("id %i", from->spawnId)));
    seen.push_back(from);
  }
  return finds;
}

RuleFinds PointsWithoutGroup() {
  return WrongInModes(Points(), [](const SpawnInstance& point, GameModeMask mode) {
    return !TeamOfGroup(GroupOf(point), mode);
  });
}

RuleFinds PointsWithoutSpawns() {
  return WrongInModes(Points(), [](const SpawnInstance& point, GameModeMask mode) {
    return !HasOfGroup(Soldiers(), GroupOf(point), mode);
  });
}

RuleFinds PointsOfOneGroup() {
  return WrongInModes(Points(), [](const SpawnInstance& point, GameModeMask mode) {
    return std::ranges::any_of(Points(), [&](const auto& other) {
      return other.get() != &point && (other->modes & mode) && GroupOf(*other) == GroupOf(point);
    });
  });
}

RuleFinds GroupsOfOtherTeam() {
  return WrongInModes(Points(), [](const SpawnInstance& point, GameModeMask mode) {
    const ControlPointTemplate* const from = ControlPointTemplateOf(point);
    const auto team = TeamOfGroup(GroupOf(point), mode);
    return from && team && *team != from->team;
  });
}

RuleFinds PointsWithoutRadius() {
  RuleFinds finds;
  for (const auto& point : Points()) {
    const ControlPointTemplate* const from = ControlPointTemplateOf(*point);
    if (from && from->radius <= 0 && from->unableToChangeTeam == 0) finds.push_back(FindOf(*point));
  }
  return finds;
}

RuleFinds ObjectSpawnsWithoutPoint() {
  RuleFinds finds;
  for (const auto& spawn : entities.Of(EntityKind::ObjectSpawn).instances) {
    const std::int32_t id = static_cast<const ObjectSpawn&>(*spawn).osId;
    if (id == 0 || HasOfGroup(Points(), id, spawn->modes)) continue;
    finds.push_back(FindOf(*spawn, FormatText("OsID %i", id)));
  }
  return finds;
}

RuleFinds TemplatesWithoutObject() {
  return WrongObjectTemplates([](const ObjectSpawnTemplate& from) {
    return FaultWhen(from.team1Object.empty() && from.team2Object.empty());
  });
}

RuleFinds TemplatesOfUnknownObject() {
  if (objectStore.catalogue.entryCount == 0) return {};
  return WrongObjectTemplates([](const ObjectSpawnTemplate& from) {
    for (const EntityName* const object : {&from.team1Object, &from.team2Object}) {
      if (IsUnknown(*object)) return FaultWhen(true, object->String());
    }
    return FaultWhen(false);
  });
}

RuleFinds TemplatesWithTurnedDelays() {
  return WrongObjectTemplates([](const ObjectSpawnTemplate& from) {
    return FaultWhen(from.maxSpawnDelay < from.minSpawnDelay,
                     FormatText("%i and %i seconds", from.maxSpawnDelay, from.minSpawnDelay));
  });
}

RuleFinds UnusedTemplates() {
  return WrongObjectTemplates([](const ObjectSpawnTemplate& from) {
    const auto& spawns = entities.Of(EntityKind::ObjectSpawn).instances;
    return FaultWhen(std::ranges::none_of(
        spawns, [&from](const auto& spawn) { return TemplateOf(*spawn) == &from; }));
  });
}

}  // namespace mw
