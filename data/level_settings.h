// A level's environment, kept by the game in three console scripts of the level folder: init.con,
// init/terrain.con and init/skyandsun.con. Reading fills ModConfig; writing replaces the value of
// every line whose command the editor owns, adds lines for what the user changed and no script
// mentions, and keeps every other line.
#pragma once

namespace mw {

// From the scripts of editor.levelFolder; one that no archive holds is skipped. A team skin that
// the configuration does not know is shown as a warning.
void ReadLevelSettings();
// Into the archive that is open for writing, for the scripts that exist. A failure is remembered as
// GameFileError.
void WriteLevelSettings();

}  // namespace mw
