// Opening a level by the file of its archive: from the command line, a file manager, or the list of
// recent levels. Everything else is as with File > Open Level.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mw {

// Opens the level that this archive is, after the question about unsaved changes. Its mod is found
// by where the archive lies; of several that use the same folders, `mod` is preferred. When no
// configuration names that game, one is made after a question. False when the level is not open
// then: the user knows why.
bool OpenLevelFile(const std::string& path, std::string_view mod = {});
// What was dropped onto the window: more than one file is refused.
void OpenDroppedFiles(const std::vector<std::string>& paths);

}  // namespace mw
