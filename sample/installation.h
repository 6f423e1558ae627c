// Writes the sample game: a game folder and a working folder for the editor.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

namespace mw::sample {

// Where one sample game lives.
struct Installation {
  std::filesystem::path gameFolder, workingFolder;
};

// True when a file that belongs to the sample game is not as the last run wrote it: its user's work
// is in it. Files that are missing do not count.
bool IsEdited(const Installation& installation);

// Told how far a writing is, and at which file; 100 at its end.
using ShowProgress = std::function<void(int percent, std::string_view file)>;

// Writes every file anew. False, with the reason on standard error, when one could not be written.
bool WriteInstallation(
    const Installation& installation, const ShowProgress& show = [](int, std::string_view) {});

}  // namespace mw::sample
