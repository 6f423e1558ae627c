// The parts of a level, from and to the open archives. Used by opening, saving and the recovery
// file.
#pragma once

namespace mw {

// Loads all parts in order. False, after a message, when the level's terrain cannot be edited.
bool LoadLevelParts();
// Writes all parts that the load report allows to write. False when one could not be written.
[[nodiscard]] bool WriteLevelParts();
// Writes the parts that the user edits, without a word to the user, for a file of their own: the
// maps also when the level's are damaged (reading them back, the level's own are looked at too).
[[nodiscard]] bool WriteEditedParts();

}  // namespace mw
