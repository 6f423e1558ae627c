#include <algorithm>
#include <array>
#include <utility>

#include "core/text.h"
#include "data/game_path.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "objects/rules.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

constexpr std::array<std::pair<GameModeMask, const char*>, 3> kModeScripts{
    {{kModeConquest, "conquest.con"},
     {kModeCaptureTheFlag, "ctf.con"},
     {kModeTeamDeathMatch, "tdm.con"}}};

const char* KindName(EntityKind kind) {
  switch (kind) {
    case EntityKind::SoldierSpawn:
      return "Soldier spawn ";
    case EntityKind::ObjectSpawn:
      return "Object spawn ";
    case EntityKind::ControlPoint:
      break;
  }
  return "Control point ";
}

}  // namespace

RuleFind FindOf(const SpawnInstance& instance, std::string detail) {
  return {KindName(instance.Kind()) + instance.name.String(), std::move(detail), instance.treeItem,
          instance.position};
}

RuleFind FindOf(const StaticObject& object, std::string detail) {
  // Of several with one name the tree's number tells which.
  std::string name = NumberedText(object.treeItem);
  if (name.empty()) name = object.name.String();
  return {"Object " + name, std::move(detail), object.treeItem, object.position};
}

std::string ModeScriptPath(GameModeMask mode) {
  const auto* const found =
      std::ranges::find(kModeScripts, mode, &std::pair<GameModeMask, const char*>::first);
  return found == kModeScripts.end() ? std::string() : found->second;
}

GameModeMask PlayedModes() {
  GameModeMask played = 0;
  for (const auto& [mode, script] : kModeScripts) {
    if (LevelHasFile(script)) played |= mode;
  }
  return played;
}

std::string ModeList(GameModeMask modes) {
  std::string list;
  for (std::size_t bit = 0; bit < kGameModeLabels.size(); ++bit) {
    if (!(modes >> bit & 1)) continue;
    if (!list.empty()) list += ", ";
    list += kGameModeLabels[bit];
  }
  return list;
}

bool LevelHasFile(std::string_view file) {
  const auto name = NormalGamePath(openLevel.folder.String() + "/" + std::string(file));
  return name && archives.FindHolding(*name, false);
}

bool IsInLevel(const Vector3& place) {
  const auto side = static_cast<float>(modConfig.WorldSize);
  // Written so that a number that is none counts as out of it.
  return place.x >= 0 && place.x <= side && place.z >= 0 && place.z <= side;
}

std::optional<GroundSpan> GroundAround(const Vector3& place) {
  if (!HasUsableTerrain() || !IsInLevel(place)) return std::nullopt;
  const auto toCell = [](float world) {
    return std::clamp(static_cast<int>(world / terrain.cellSize), 0, modConfig.MaterialSize - 1);
  };
  const int i = toCell(static_cast<float>(modConfig.WorldSize) - place.x), j = toCell(place.z);
  const auto [lowest, highest] = std::minmax(
      {DrawnHeight(i, j), DrawnHeight(i + 1, j), DrawnHeight(i, j + 1), DrawnHeight(i + 1, j + 1)});
  return GroundSpan{lowest * modConfig.HeightScale, highest * modConfig.HeightScale};
}

}  // namespace mw
