// The mods that the user can work with, and which of them is current. The mod dialogs show the
// list; the level lifecycle takes a snapshot before those dialogs and puts it back when the user
// changes their mind.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/content_archives.h"
#include "data/mod_config.h"

namespace mw {

inline constexpr std::size_t kMaxMods = 64;
inline constexpr std::size_t kMaxModName = 62;  // characters of a new mod's name
// The configuration that every new mod starts from; never a mod itself.
inline constexpr std::string_view kModTemplateFile = "mpwr.cfg";

struct ModList {
  std::vector<std::string> names;  // .cfg files without extension, at most kMaxMods
  int current = -1;                // -1: none
  int picked = -1;                 // in the selection dialog; -1: cancelled
  // Of the current mod: the content archives that are open, and what was wrong with them then.
  ContentArchivePaths contentArchives;
  ContentProblems contentProblems;
};

extern ModList modList;

// Fills the list from the working folder; no mod is current afterwards. Says so when there are more
// than kMaxMods.
void FindMods();
// The current mod's name, also when its entry is gone from the list; empty when there was none yet.
std::string CurrentModName();

// Makes the mod current: reads its configuration, has the object catalogue rebuilt and opens its
// content archives. Nothing happens when it is current already. False, with the mod before still
// current, when its configuration cannot be read (which has been shown).
bool SelectMod(int index);
// Reads the current mod's configuration afresh, so that no level inherits from the one before; what
// the user chose (LevelName, GamePath, ObjectsList) stays. False when it cannot be read (which has
// been shown).
bool ReloadModConfig();

// The typed name with every character but ASCII letters and digits replaced by `_`, at most
// `maxLength` long.
std::string NameFromInput(std::string_view typed, std::size_t maxLength);
// The same for the name of a mod.
std::string ModNameFromInput(std::string_view typed);
// Copies the template to the new mod's configuration and appends the mod to the list. False, with
// the reason (and the folder) shown, when it cannot.
bool CreateMod(std::string_view typedName);
// Makes the last mod of the list current and reads its configuration; an open level keeps its name
// and its sizes. The caller edits its settings and then calls LoadModContent.
bool UseLastMod();
// Has the object catalogue rebuilt and opens the content archives.
void LoadModContent();
// One message that lists which of the current mod's content archives, and whether the list of the
// texture set, could not be read. Nothing when all is there.
void WarnOfMissingContent();

// Asks, then deletes the mod's configuration file (nothing else) and its entry. True when it is
// gone.
bool DeleteMod(int index);

// The file names to choose the object list from: the working folder's *.lst files, and the current
// object list where it lies elsewhere.
std::vector<std::string> ObjectListChoices();
// A typed or browsed game folder as it is kept: `\` as separator, one at the end.
std::string GamePathFromInput(std::string_view typed);
// Takes over the settings: creates the mod's folders, saves the game folder, has the object
// catalogue rebuilt. An empty `objectsList` leaves it as it is. False, with nothing changed, when
// the game folder cannot be kept in a configuration file (the reason was shown) or when content is
// missing there and the user does not want to go on.
bool ApplyModSettings(std::string_view typedGamePath, std::string_view objectsList);

// The mod and the level's settings as they were before the mod dialogs.
struct ModSnapshot {
  ModConfig config;
  PathText levelFolder;
};
ModSnapshot TakeModSnapshot();
// Puts both back, even when the mod's entry or file has been deleted meanwhile; the content
// archives are opened again when they differ.
void RestoreMod(const ModSnapshot& snapshot);

}  // namespace mw
