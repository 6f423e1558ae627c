// The one record of the level that is open for editing, or that the user has just chosen: where it
// lies, what was found when it was read, and what its writing has run into.
#pragma once

#include <string>
#include <vector>

#include "core/fixed_string.h"
#include "data/load_report.h"

namespace mw {

struct GameMember;

struct OpenedLevel {
  PathText folder;  // as a path in the game folder, no separator at its end
  // From the opening of its archive to the closing; empty when no level is open.
  std::string archivePath;  // as the archive was opened with
  std::string mod;          // in which it was opened; stays when the level is closed
  PathText modFolder;       // that mod's; path normalising strips it as well as the current mod's

  LoadReport loadReport;
  // What each setting is when no script has a line for it, as SettingsCommand::value gives it, in
  // the table's order; empty while no level was read. A setting that no script mentions and that
  // is something else now was changed by the user.
  std::vector<std::string> settingsDefaults;
  std::vector<std::string> settingsNotSaved;  // commands that the last save found no place for

  std::string writeError;  // the first since ClearGameFileError
  // Takes what is written while CaptureGameFiles runs; else null.
  std::vector<GameMember>* captured = nullptr;
};
extern OpenedLevel openLevel;

}  // namespace mw
