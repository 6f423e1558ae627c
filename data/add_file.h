// Copies a file of the user's into the level archive. Used by the Add File To Archive dialog.
#pragma once

#include <string_view>

namespace mw {

// Adds the disk file to the game folder `gameFolder` under its own name, after a question where
// there is such a file already. False when the user then declined or, after a message, when it
// could not be read or written; the archive is then as it was.
bool AddFileToArchive(std::string_view diskPath, std::string_view gameFolder);

}  // namespace mw
