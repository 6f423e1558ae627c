// The scratch folder "ShadowWork" of the game, through which the editor and the game's shadow
// tracer pass tiles, shadows and light maps to each other, and which tiles are to be traced.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "terrain/level_textures.h"

namespace mw {

// The choices of the Detail list: an entry's value is (index + 1) / 2.
inline constexpr std::array<const char*, 8> kShadowDetails{
    "Very Low 0.5 (Fastest)", "Low 1.0",  "Medium-Low 1.5", "Medium 2.0",
    "Medium-Hi 2.5",          "High 3.0", "Very High 3.5",  "Production/Final 4.0"};
float ShadowDetailValue(int index);
// The entry of ShadowPrecision; 0 when no entry has its value.
int ShadowDetailIndex();

// Selects or deselects the tile of a cell of the dialog's grid; false when the cell holds no tile
// of the level.
bool ToggleShadowSelection(int column, int row);
bool IsShadowSelected(int column, int row);
bool IsAnyShadowSelected();
void SelectAllShadows(bool selected);

struct TileIndex {
  int row = 0, column = 0;
};
// In the order in which tiles are generated: column by column.
std::vector<TileIndex> AssignedTiles();
// The assigned tiles that are also selected.
std::vector<TileIndex> TilesToTrace();
// "2 tiles selected: 1x1, 1x2".
std::string DescribeTilesToTrace();

// Folders of the open level in the scratch folder, without a separator at the end.
std::string ScratchTexturesFolder();
std::string ScratchMergedFolder();
std::string ScratchObjectLightMapsFolder();
// Creates the folder and its parents as far as they are missing. False when that fails.
[[nodiscard]] bool MakeScratchFolder(std::string_view path);

// Write through the file layer or to disk. False when not everything could be written.
// "lmList.dat": two bytes, row and column, for each tile to trace.
[[nodiscard]] bool WriteTileList();
// "terrainLightmap.con" and "objectsLightmap.con" of the level, from the templates in the working
// folder's "scripts", with the precision and the sun of the level.
[[nodiscard]] bool WriteLightingScripts();
// Both scripts as the level has them, path and content, which is nothing for one that is not there.
using LightingScripts =
    std::vector<std::pair<std::string, std::optional<std::vector<std::uint8_t>>>>;
LightingScripts ReadLightingScripts();
// Makes the level's scripts what they were when they were read.
[[nodiscard]] bool RestoreLightingScripts(const LightingScripts& scripts);
// Makes the merged tile the level's surface tile.
[[nodiscard]] TileTaken TakeMergedTile(const TileIndex& tile);
// Whether the level has the shadows of terrain or objects of an earlier run.
bool HasShadowBits();
bool HasObjectLightMaps();
// "LightmapShadowBits.lsb" into the level's textures; nothing when there is none.
[[nodiscard]] bool TakeShadowBits();
// Every file of the scratch object light maps into the level.
[[nodiscard]] bool TakeObjectLightMaps();

}  // namespace mw
