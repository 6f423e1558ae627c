// A level's environment, kept by the game in three console scripts of the level folder: init.con,
// init/terrain.con and init/skyandsun.con. Reading fills ModConfig; writing replaces the value of
// every line whose command the editor owns and keeps every other line.
#pragma once

namespace mw {

void ReadLevelSettings();
void WriteLevelSettings();

}  // namespace mw
