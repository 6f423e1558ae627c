// What is asked before a level is saved, so that saving neither destroys what another program has
// written nor gives up the last good state. Used by SaveLevel.
#pragma once

#include <string>

namespace mw {

class Archive;

// What another program has done to the archive is asked about, or the user has agreed already.
enum class ForeignChange { Ask, TakeOn };

// Asks whether to go on when another program has changed the archive, when the journal of another
// state of it is in the way, and when its backup cannot be made, and does what was agreed to.
// False, with nothing overwritten, when the level is not to be saved; the user knows why. That is
// so too while the archive is write-protected, and when it holds another level by now.
bool MaySaveInto(Archive& archive, ForeignChange foreign);

// The question whether to save the level before it is closed.
struct SavingQuestion {
  std::string text;                            // empty when there is nothing to save
  ForeignChange foreign = ForeignChange::Ask;  // what a Yes means
};
// `occasion` is what is about to happen: "before exiting". The question tells what another program
// has done to the archive meanwhile; then there is one also without changes.
SavingQuestion QuestionBeforeClosing(const char* occasion);

}  // namespace mw
