#include "terrain/material_map.h"

#include <algorithm>
#include <string>
#include <vector>

#include "core/parallel.h"
#include "core/text.h"
#include "data/game_file.h"
#include "data/level_map.h"
#include "data/mod_config.h"
#include "data/open_level.h"
#include "terrain/ground_history.h"

namespace mw {

const std::array<const char*, kMaterialCount> kMaterialNames{
    "Default",      "Water",       "Dry Grass", "Wet Grass",     "Dry Dirt", "Wet Dirt",
    "Mud",          "Outside Map", "Gravel",    "Frozen Ground", "Dry Sand", "Wet Sand",
    "Rock Surface", "Sand Road",   "Dirt Road", "Paved Road"};

namespace {

std::size_t MaterialMapBytes() {
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize);
  return side * side;
}

std::string MaterialMapPath() {
  return FormatText("%s\\materialmap.raw", openLevel.folder.c_str());
}

// Calls visit(cell, offset) with every cell that carries data and its place in the file, on several
// cores. Rows of the grid are columns of the file, so some are gone through together: then what
// lies side by side in either of them is met while it is at hand.
template <typename Visit>
void ForEachDataCell(Visit visit) {
  constexpr std::size_t kTogether = 64;
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize);
  MaterialGrid::Row* const rows = materialMapper->grid.begin();
  SpreadOverCores((side + kTogether - 1) / kTogether, [=](std::size_t task) {
    const std::size_t first = task * kTogether + 1, end = std::min(first + kTogether, side + 1);
    for (std::size_t j = 0; j < side; ++j) {
      for (std::size_t i = first; i < end; ++i) visit(rows[i][j], j * side + side - i);
    }
  });
}

// A plug-in may leave negative numbers: of those the absolute value counts.
std::uint8_t StoredMaterial(std::uint32_t material) {
  const bool negative = (material & 0x80000000u) != 0;
  return static_cast<std::uint8_t>(negative ? 0u - material : material);
}

}  // namespace

void CreateMaterialMapper() { materialMapper = std::make_unique<MaterialMapper>(); }

void DestroyMaterialMapper() { materialMapper.reset(); }

void LoadMaterialMap() {
  if (!materialMapper || !HasUsableSize()) return;
  const auto side = static_cast<std::size_t>(modConfig.MaterialSize);
  const auto map = LoadLevelMap(LevelPart::MaterialMap, MaterialMapPath(), side, side);
  const std::uint8_t* const stored = map ? map->data.data() : nullptr;
  ForEachDataCell(
      [stored](std::uint32_t& cell, std::size_t offset) { cell = stored ? stored[offset] : 0u; });
  MarkMaterialsChanged();
}

bool SaveMaterialMap() {
  if (!materialMapper || !HasUsableSize()) return false;
  std::vector<std::uint8_t> bytes(MaterialMapBytes());
  ForEachDataCell([to = bytes.data()](const std::uint32_t& cell, std::size_t offset) {
    to[offset] = StoredMaterial(cell);
  });
  return SaveGameFileBytes(MaterialMapPath(), bytes);
}

void MarkMaterialsChanged() {
  if (materialMapper) ++materialMapper->edits;
}

void SetMaterial(std::uint32_t material, int i, int j) {
  if (!materialMapper || i < 0 || j < 0 || i >= kGridCapacity || j >= kGridCapacity) return;
  KeepMaterial(i, j);
  materialMapper->grid[i][j] = material;
  MarkMaterialsChanged();
}

}  // namespace mw
