// The game-mode script files of a level: templates, placed entities and spawn groups, once for each
// mode's folder. docs/formats.md describes them.
#pragma once

namespace mw {

// Replaces all entities by those of the level's files; what several modes share becomes one record,
// and templates that no instance uses are removed. Missing files are skipped. When not everything
// could be read, because a table is full, a name too long or a file damaged, a message says what,
// and objectStore.loadedIncompletely is set.
void ReadGameModeFiles();
// Writes all files of all modes. A failure is remembered as GameFileError.
void WriteGameModeFiles();

}  // namespace mw
