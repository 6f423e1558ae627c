// The level's way from its archive into the editor and back.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "app/save_questions.h"

namespace mw {

class Archive;
struct ModSnapshot;

// The archive of the level that ModConfig names.
std::string LevelArchivePath();
// The archive of that level of the current mod.
std::string LevelArchivePathOf(std::string_view name);
// Names of the levels of the current mod, sorted; archives named with an underscore and three
// digits at the end are left out.
std::vector<std::string> ListLevels();
// Makes `name` the level that is to be opened: LevelName and levelFolder.
void ChooseLevel(const std::string& name);

// Lets the user pick a mod and a level and opens it. False when cancelled, or, after a message,
// failed: a level whose archive cannot be read leaves the open one as it is, with all its edits;
// when a later step fails the editor is empty.
bool OpenLevel();
// Opens the level of the current mod that ChooseLevel has named, in the same way; `before` is what
// the mod was before that choice.
bool OpenNamedLevel(const ModSnapshot& before);
// Opens this level of the current mod with the files of the recovery file in the place of those
// that were saved; it counts as modified. False, with the reason in `reason`, when that fails: no
// level is open then.
bool OpenRecoveredLevel(const std::string& level, const std::string& recoveryFile,
                        std::string& reason);
// Leaves the editor without a level: flat ground, no objects, no textures. The mod is as in
// `before`.
void EmptyEditor(const ModSnapshot& before);
// The archive of the open level, which may be write-protected, or null; and the mod it was opened
// in.
Archive* LevelArchive();
const std::string& LevelMod();
// Closes (and compacts) the archive of the open level, by the path it was opened with. What was
// edited is saved or given up, so its recovery file is removed. What another program has put in
// the archive's place is left alone.
void CloseLevelArchive();
// Saves every part into the level archive, all or nothing, after the questions that
// app/save_questions.h asks. False, after a message, when it failed or the user did not want it;
// the level on disk is then as it was.
bool SaveLevel(ForeignChange foreign = ForeignChange::Ask);
// The same without the message: the reason when it failed, else an empty text.
std::string TrySaveLevel();
// Creates the archive of the level that ModConfig names and makes it the open level's. Until the
// first save is complete, an archive of that name on disk stays as it is. Null, with the reason in
// `error`, when it fails.
Archive* CreateLevelArchive(std::string& error);
// To be called every few seconds with the milliseconds that a clock shows: names a backup of the
// open level that was made meanwhile in the status bar, once, when what the work that made it has
// to say there has been read.
void NameNewBackup(std::uint32_t now);
// A load test over the game's own levels.
void RunStockLevelLoad();

}  // namespace mw
