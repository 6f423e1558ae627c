// What the user hears of a level that could not be read whole: one message after opening, and the
// questions of its first save. data/load_report.h remembers what there is to tell.
#pragma once

#include <string>

namespace mw {

// Notes the files of the level that are damaged, but that opening has not read.
void NoteDamagedRest();
// Shows what was noted while the level was opened, in one message; nothing when there was nothing.
void ShowLoadReport();
// Asks for each part that was not read whole, once until the level is closed, whether to replace it
// on disk. To be called before a save.
void AskForDamagedParts();
// ". Not saved: height map" for the status bar after a save that left parts out or
// could not keep a setting, else an empty text.
std::string KeptPartsText();

}  // namespace mw
