// Writes the sample game: a game folder and a working folder for the editor.
#pragma once

#include <filesystem>

namespace mw::sample {

// Where one sample game lives.
struct Installation {
  std::filesystem::path gameFolder, workingFolder;
};

// True when a file that belongs to the sample game is not as the last run wrote it: its user's work
// is in it. Files that are missing do not count.
bool IsEdited(const Installation& installation);

// Writes every file anew. False, with the reason on standard error, when one could not be written.
bool WriteInstallation(const Installation& installation);

}  // namespace mw::sample
