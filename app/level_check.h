// What is looked at before a level is opened, and what the user is told when it cannot be, or can
// only be looked at. Used by app/level.h and app/save_questions.h.
#pragma once

#include <string>
#include <string_view>

namespace mw {

class Archive;

// Why the archive must not be opened or saved into as that of `level`: it holds another level, so
// the file has lost its own name. Empty when it holds this one or none.
std::string OtherLevelReason(const Archive& archive, std::string_view level);
// Why the level of the current mod cannot be opened, or an empty text. Looks only, also at a level
// that is open.
std::string ReasonAgainstOpening(const std::string& level);

// With what is open in the place of it.
void ShowLevelNotOpened(const std::string& level, const std::string& reason);
// Says so when the level is open for looking only.
void ShowWriteProtection(const Archive& archive);
// The sentence of that message, with the reason.
std::string WriteProtectionText(const Archive& archive);

}  // namespace mw
