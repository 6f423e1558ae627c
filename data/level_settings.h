// A level's environment, kept by the game in three console scripts of the level folder: init.con,
// init/terrain.con and init/skyandsun.con. Reading fills ModConfig; writing replaces the value of
// every line whose command the editor owns, adds lines for what the user changed and no script
// mentions, and keeps every other line.
#pragma once

#include <string>
#include <vector>

namespace mw {

// From the scripts of openLevel.folder. One that is missing or damaged, and a team skin that the
// configuration does not know, are noted in the load report; the level's size then comes from the
// height map (data/level_size.h).
void ReadLevelSettings();
// Into the archive that is open for writing, for the scripts that exist and were read whole. False
// when one of them could not be written.
[[nodiscard]] bool WriteLevelSettings();
// Commands of settings that the user changed and that were not written then: no script has a line
// for them, nor a place for one.
const std::vector<std::string>& SettingsNotSaved();

}  // namespace mw
