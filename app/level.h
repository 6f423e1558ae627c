// The level's way from its archive into the editor and back.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mw {

class Archive;

// The archive of the level that ModConfig names.
std::string LevelArchivePath();
// The archive of that level of the current mod.
std::string LevelArchivePathOf(std::string_view name);
// Names of the levels of the current mod, sorted; archives named with an underscore and three
// digits at the end are left out.
std::vector<std::string> ListLevels();
// Makes `name` the level that is to be opened: LevelName and levelFolder.
void ChooseLevel(const std::string& name);

// Lets the user pick a mod and a level and opens it. False when cancelled or failed.
bool OpenLevel();
// Closes (and compacts) the archive of the open level, by the path it was opened with.
void CloseLevelArchive();
// Saves every part into the level archive, all or nothing. False, after a message, when it failed;
// the level on disk is then as it was after the last save.
bool SaveLevel();
// The same without the message: the reason when it failed, else an empty text.
std::string TrySaveLevel();
// Creates the archive of the level that ModConfig names and makes it the open level's. Until the
// first save is complete, an archive of that name on disk stays as it is. Null, with the reason in
// `error`, when it fails.
Archive* CreateLevelArchive(std::string& error);
// A load test over the game's own levels.
void RunStockLevelLoad();

}  // namespace mw
