#include "objects/spawn_groups.h"

#include <algorithm>

namespace mw {
namespace {

constexpr std::int32_t kLastGroupId = 47;  // of those that new spawn groups try

bool IsTaken(std::int32_t id) {
  const auto& points = entities.Of(EntityKind::ControlPoint).templates;
  return std::ranges::find(entities.spawnGroups, id, &SpawnGroup::id) !=
             entities.spawnGroups.end() ||
         std::ranges::any_of(points, [id](const auto& point) { return point->group == id; });
}

bool HasSpawns(std::int32_t id) {
  const auto hasOsId = [id](const auto& spawn) {
    return static_cast<const ObjectSpawn&>(*spawn).osId == id;
  };
  return std::ranges::any_of(entities.Of(EntityKind::SoldierSpawn).templates,
                             [id](const auto& from) { return from->group == id; }) ||
         std::ranges::any_of(entities.Of(EntityKind::ObjectSpawn).instances, hasOsId);
}

// The control point's modes, without those where another point has its number.
GameModeMask OwnModesOf(const SpawnInstance& controlPoint, std::int32_t id) {
  GameModeMask modes = controlPoint.modes;
  for (const auto& other : entities.Of(EntityKind::ControlPoint).instances) {
    const ControlPointTemplate* const from = ControlPointTemplateOf(*other);
    if (other.get() != &controlPoint && from && from->spawnGroupId == id) modes &= ~other->modes;
  }
  return modes;
}

}  // namespace

std::int32_t FreeSpawnGroupId() {
  for (std::int32_t id = 1; id <= kLastGroupId; ++id) {
    if (!IsTaken(id)) return id;
  }
  return 1;
}

std::int32_t UnusedSpawnGroupId() {
  for (std::int32_t id = 1; id <= kLastGroupId; ++id) {
    if (!IsTaken(id) && !HasSpawns(id)) return id;
  }
  return FreeSpawnGroupId();
}

bool HasRoomForSpawnGroups(std::size_t count) {
  return entities.spawnGroups.size() + count <= kMaxSpawnGroups;
}

std::vector<SpawnGroup> SpawnGroupsOf(std::int32_t id, GameModeMask modes) {
  std::vector<SpawnGroup> found;
  for (SpawnGroup group : entities.spawnGroups) {
    group.modes &= modes;
    if (group.id == id && group.modes != 0) found.push_back(group);
  }
  return found;
}

void GiveSpawnGroupsToTeam(std::int32_t id, GameModeMask modes, std::int32_t team) {
  auto& groups = entities.spawnGroups;
  for (std::size_t i = groups.size(); i-- > 0;) {
    SpawnGroup rest = groups[i];
    if (rest.id != id || !(rest.modes & modes) || rest.team == team) continue;
    rest.modes &= ~modes;
    groups[i].team = team;
    // Without room for two the group stays one, of the new team in all its modes.
    if (rest.modes == 0 || !HasRoomForSpawnGroups(1)) continue;
    groups[i].modes &= modes;
    groups.push_back(rest);
  }
}

void DeleteSpawnGroupsOf(const SpawnInstance& controlPoint) {
  const ControlPointTemplate* const from = ControlPointTemplateOf(controlPoint);
  if (!from) return;
  const std::int32_t id = from->spawnGroupId;
  const GameModeMask freed = OwnModesOf(controlPoint, id);
  for (SpawnGroup& group : entities.spawnGroups) {
    if (group.id == id) group.modes &= ~freed;
  }
  std::erase_if(entities.spawnGroups, [](const SpawnGroup& group) { return group.modes == 0; });
}

}  // namespace mw
