// Which surface tiles the level has: the table as the Surface Map Assignments dialog shows and
// edits it.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "terrain/level_textures.h"

namespace mw {

// Tiles per side that can be assigned: those of the level, kMaxTiles at most.
int AssignableTiles();

// A cell of the dialog's grid, kMaxTiles cells per side. Columns run from the left along the tile
// rows, rows run from the bottom along the tile columns.
struct AssignmentCell {
  enum class State { Assigned, Free, OutsideLevel, BeforeOffset };
  State state = State::Free;
  std::int64_t tileRow = 0, tileColumn = 0;
};
AssignmentCell AssignmentCellAt(int column, int row);
// Whether it is a cell of the level's tiles, assigned or free.
bool HoldsTileOfLevel(const AssignmentCell& cell);

// Each of these sets editor.levelModified when it changes something.
// Switches the tile of a cell; false when the cell holds no tile of the level.
bool ToggleAssignment(int column, int row);
// All tiles of the level, with offsets 0.
void AssignAllTiles();
// No tile, with offsets 0.
void ClearAssignments();
// The level gets the detail and environment textures of the current texture set when it is saved.
void ChooseTextureSetForLevel();
// "2 tiles assigned: 1x1, 1x2".
std::string DescribeAssignments();

// The table, its offsets and the choice of a set at one moment, to go back to.
struct AssignmentSnapshot {
  decltype(LevelTextures::SurfaceAssigned) assigned;
  std::int32_t TexOffsetX = 0, TexOffsetY = 0;
  bool textureSetChosen = false;
  bool levelModified = false;
};
AssignmentSnapshot TakeAssignmentSnapshot();
void RestoreAssignments(const AssignmentSnapshot& snapshot);

}  // namespace mw
