#include "terrain/surface_assignments.h"

#include <algorithm>

#include "core/editor_state.h"
#include "core/text.h"
#include "data/mod_config.h"
#include "terrain/terrain.h"

namespace mw {
namespace {

using Table = decltype(LevelTextures::SurfaceAssigned);

bool Contains(std::int64_t tileRow, std::int64_t tileColumn, int tiles) {
  return tileRow >= 0 && tileRow < tiles && tileColumn >= 0 && tileColumn < tiles;
}

bool& Assigned(std::int64_t tileRow, std::int64_t tileColumn) {
  return levelTextures
      .SurfaceAssigned[static_cast<std::size_t>(tileRow)][static_cast<std::size_t>(tileColumn)];
}

void Replace(const Table& table) {
  const bool isSame = levelTextures.SurfaceAssigned == table && modConfig.TexOffsetX == 0 &&
                      modConfig.TexOffsetY == 0;
  if (isSame) return;
  levelTextures.SurfaceAssigned = table;
  modConfig.TexOffsetX = modConfig.TexOffsetY = 0;
  editor.levelModified = true;
}

}  // namespace

int AssignableTiles() { return std::clamp(modConfig.MaterialSize / kTileCells, 0, kMaxTiles); }

AssignmentCell AssignmentCellAt(int column, int row) {
  using State = AssignmentCell::State;
  AssignmentCell cell;
  cell.tileRow = std::int64_t{column} - modConfig.TexOffsetX;
  cell.tileColumn = std::int64_t{row} - modConfig.TexOffsetY;
  if (cell.tileRow < 0 || cell.tileColumn < 0) {
    cell.state = State::BeforeOffset;
  } else if (Contains(cell.tileRow, cell.tileColumn, kMaxTiles) &&
             Assigned(cell.tileRow, cell.tileColumn)) {
    cell.state = State::Assigned;
  } else if (!HoldsTileOfLevel(cell)) {
    cell.state = State::OutsideLevel;
  }
  return cell;
}

bool HoldsTileOfLevel(const AssignmentCell& cell) {
  return Contains(cell.tileRow, cell.tileColumn, AssignableTiles());
}

bool ToggleAssignment(int column, int row) {
  const AssignmentCell cell = AssignmentCellAt(column, row);
  if (!HoldsTileOfLevel(cell)) return false;
  bool& assigned = Assigned(cell.tileRow, cell.tileColumn);
  assigned = !assigned;
  editor.levelModified = true;
  return true;
}

void AssignAllTiles() {
  Table table{};
  const auto tiles = static_cast<std::size_t>(AssignableTiles());
  for (std::size_t row = 0; row < tiles; ++row) {
    std::fill_n(table[row].begin(), tiles, true);
  }
  Replace(table);
}

void ClearAssignments() { Replace({}); }

void ChooseTextureSetForLevel() {
  levelTextures.textureSetChosen = true;
  editor.levelModified = true;
}

std::string DescribeAssignments() {
  std::string names;
  int count = 0;
  for (int row = 0; row < kMaxTiles; ++row) {
    for (int column = 0; column < kMaxTiles; ++column) {
      if (!Assigned(row, column)) continue;
      names += FormatText("%s%ix%i", count++ == 0 ? ": " : ", ", row, column);
    }
  }
  return FormatText("%i %s assigned", count, count == 1 ? "tile" : "tiles") + names;
}

AssignmentSnapshot TakeAssignmentSnapshot() {
  return {levelTextures.SurfaceAssigned, modConfig.TexOffsetX, modConfig.TexOffsetY,
          levelTextures.textureSetChosen, editor.levelModified};
}

void RestoreAssignments(const AssignmentSnapshot& snapshot) {
  levelTextures.SurfaceAssigned = snapshot.assigned;
  modConfig.TexOffsetX = snapshot.TexOffsetX;
  modConfig.TexOffsetY = snapshot.TexOffsetY;
  levelTextures.textureSetChosen = snapshot.textureSetChosen;
  editor.levelModified = snapshot.levelModified;
}

}  // namespace mw
