// What is looked at before a level is opened, and what the user is told when it cannot be, or can
// only be looked at. Used by app/level.h and app/save_questions.h.
#pragma once

#include <string>
#include <string_view>

namespace mw {

class Archive;

// Why the file at `path` cannot be the archive of `level`: it cannot be read, or it holds another
// level and so has lost its own name. An empty text when it can. Looks only, also at a file that is
// open.
std::string ReasonAgainstOpening(const std::string& path, std::string_view level);

// With what is open in the place of it.
void ShowLevelNotOpened(const std::string& level, const std::string& reason);
// Says so when the level is open for looking only.
void ShowWriteProtection(const Archive& archive);
// The sentence of that message, with the reason.
std::string WriteProtectionText(const Archive& archive);

}  // namespace mw
