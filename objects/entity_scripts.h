// The game-mode script files of a level: templates, placed entities and spawn groups, once for each
// mode's folder. docs/formats.md describes them.
#pragma once

namespace mw {

// Replaces all entities by those of the level's files; what several modes share becomes one record,
// and templates that no instance uses are removed. Missing files are skipped. When not everything
// of a mode could be read, because a table is full, a name too long, a file damaged or one of two
// that belong together missing, the load report says so.
void ReadGameModeFiles();
// The load report says that they were not read, and saving leaves them as they are.
void NoteEntitiesNotRead();
// Writes all files of the modes that the load report allows. False when one could not be written.
[[nodiscard]] bool WriteGameModeFiles();

}  // namespace mw
