// The game-mode script files of a level: templates, placed entities and spawn groups, once for each
// mode's folder.
#pragma once

namespace mw {

// Replaces all entities by those of the level's files; what several modes share becomes one record.
void ReadGameModeFiles();
// Writes all files of all modes.
void WriteGameModeFiles();

}  // namespace mw
