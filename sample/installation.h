// Writes the sample game: a game folder and a working folder for the editor.
#pragma once

#include <filesystem>

namespace mw::sample {

// Where one sample game lives.
struct Installation {
  std::filesystem::path gameFolder, workingFolder;
};

// What an earlier run wrote, compared with what is there now.
enum class SampleState { Absent, AsWritten, Edited };
SampleState StateOf(const Installation& installation);

// Writes every file anew. False, with the reason on standard error, when one could not be written.
bool WriteInstallation(const Installation& installation);

}  // namespace mw::sample
