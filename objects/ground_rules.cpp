// Rules about the ground, its materials and its pictures.
#include <algorithm>

#include "core/text.h"
#include "data/mod_config.h"
#include "objects/rules.h"
#include "terrain/material_map.h"
#include "terrain/surface_assignments.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

// Calls act(i, j) for the level's samples until it returns true. Whether it did.
template <typename Act>
bool AnySample(Act act) {
  for (int i = 1; i <= modConfig.MaterialSize; ++i) {
    for (int j = 0; j < modConfig.MaterialSize; ++j) {
      if (act(i, j)) return true;
    }
  }
  return false;
}

// Level coordinates of a point of the grid, on the ground.
Vector3 PlaceOf(int i, int j) {
  const float x = static_cast<float>(i) * terrain.cellSize;
  return {static_cast<float>(modConfig.WorldSize) - x, DrawnHeight(i, j) * modConfig.HeightScale,
          static_cast<float>(j) * terrain.cellSize};
}

// Where the ground is that shows the tile in this cell of the assignments.
std::optional<Vector3> PlaceOfTile(int cellColumn, int cellRow) {
  constexpr int kMiddle = kTileCells / 2;
  if (!HasUsableTerrain()) return std::nullopt;
  // Tile rows count against the rows of the grid.
  return PlaceOf(modConfig.MaterialSize - cellColumn * kTileCells - kMiddle,
                 cellRow * kTileCells + kMiddle);
}

// The tiles without a file that are assigned, or are not.
RuleFinds MissingTiles(AssignmentCell::State state) {
  RuleFinds finds;
  for (int column = 0; column < AssignableTiles(); ++column) {
    for (int row = 0; row < AssignableTiles(); ++row) {
      const AssignmentCell cell = AssignmentCellAt(column, row);
      if (cell.state != state) continue;
      const auto tileRow = static_cast<int>(cell.tileRow);
      const auto tileColumn = static_cast<int>(cell.tileColumn);
      if (LevelHasFile(FormatText("textures/Tx0%ix0%i.dds", tileRow, tileColumn))) continue;
      finds.push_back(
          {FormatText("Surface tile %ix%i", tileRow, tileColumn), {}, 0, PlaceOfTile(column, row)});
    }
  }
  // A level that is not painted yet is told of once.
  constexpr std::size_t kMostListed = 8;
  if (finds.size() > kMostListed) {
    finds.front().detail = FormatText("nor have %zu others", finds.size() - 1);
    finds.resize(1);
  }
  return finds;
}

RuleFinds OfLevelWhen(bool isWrong) {
  if (!isWrong) return {};
  return {{"The level", {}, 0, {}}};
}

}  // namespace

RuleFinds GroundWithoutScale() {
  if (modConfig.HeightScale > 0) return {};
  return {{"The level", FormatText("%g", static_cast<double>(modConfig.HeightScale)), 0, {}}};
}

RuleFinds GroundUnderWater() {
  if (!HasUsableTerrain() || modConfig.HeightScale <= 0) return {};
  const float water = modConfig.WaterLevel / modConfig.HeightScale;
  if (AnySample([water](int i, int j) { return DrawnHeight(i, j) > water; })) return {};
  return {{"The ground", "", levelTree.fixed.water, {}}};
}

RuleFinds UnknownMaterials() {
  if (!HasUsableTerrain() || !materialMapper) return {};
  RuleFinds finds;
  int count = 0;
  AnySample([&](int i, int j) {
    const std::uint32_t material =
        materialMapper->grid[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
    if (material < kMaterialCount) return false;
    if (count++ == 0) finds.push_back({"The ground", {}, 0, PlaceOf(i, j)});
    return false;
  });
  if (count > 0) finds.front().detail = FormatText("%i cells", count);
  return finds;
}

RuleFinds TilesWithoutTexture() { return MissingTiles(AssignmentCell::State::Free); }

RuleFinds TilesNotMade() { return MissingTiles(AssignmentCell::State::Assigned); }

RuleFinds LevelsWithoutDetail() { return OfLevelWhen(!LevelHasFile("textures/detail.dds")); }

RuleFinds LevelsWithoutMap() { return OfLevelWhen(!LevelHasFile("textures/ingamemap.dds")); }

}  // namespace mw
