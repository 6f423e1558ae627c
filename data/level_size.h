// The size of the terrain as the level's scripts state it, and where it comes from when they do
// not.
#pragma once

namespace mw {

// Whether the editor can edit a terrain of MaterialSize over WorldSize.
bool HasSupportedTerrainSize();

// Which sizes a line of the settings scripts gave.
struct SizeLines {
  bool materialSize = false, worldSize = false;
};
// After the scripts were read. Where they give no size that is supported, or the terrain script is
// not whole and they do not give all of it: takes MaterialSize from the length of the level's
// height map, WorldSize as a new level of that size has it, and notes so in the load report. A
// height map with the length of no level's changes nothing.
void CheckTerrainSize(const SizeLines& read, bool terrainScriptIsWhole);

}  // namespace mw
