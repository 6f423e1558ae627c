// The spawn groups that tie spawns to control points: made, changed and deleted with them. There
// may be groups of one number in different game modes; in one mode a number means one group.
#pragma once

#include <cstdint>
#include <vector>

#include "objects/entities.h"

namespace mw {

// The smallest number, from 1 to 47, that neither a group nor a control point has; 1 when all are
// taken.
std::int32_t FreeSpawnGroupId();
// The same, but that no spawn has either: those of a deleted control point keep its number, and
// would belong to the next one that gets it.
std::int32_t UnusedSpawnGroupId();
bool HasRoomForSpawnGroups(std::size_t count);

// The groups of this number in these modes, cut down to them.
std::vector<SpawnGroup> SpawnGroupsOf(std::int32_t id, GameModeMask modes);
// Gives the groups of this number in these modes to a team. Other modes keep their group as it is.
void GiveSpawnGroupsToTeam(std::int32_t id, GameModeMask modes, std::int32_t team);
// Deletes the control point's groups in those of its modes where no other point has the number.
void DeleteSpawnGroupsOf(const SpawnInstance& controlPoint);

}  // namespace mw
