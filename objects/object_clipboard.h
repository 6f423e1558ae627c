// Copy, Paste and Duplicate of the Object Mapper. What is copied is remembered as it is then: later
// changes and selections, and deleting it, do not matter to what is pasted.
#pragma once

namespace mw {

// Remembers what is selected for Paste; nothing selected, nothing remembered.
void CopySelected();
// Places copies around the point drawn under the pixel, in the arrangement of what was copied.
// Control points come before spawns: those that were copied with their control point belong to its
// copy, others to the nearest control point. What does not fit is left out, after a message.
void PasteCopied(int x, int y);
// Copies of what is selected stand in its place and are selected instead. What must be theirs
// alone, names and numbers, is new, as Paste has it; spawns stay with their control point, unless
// it is copied with them. What Copy remembers stays. False, after a message and with nothing made,
// when not all of them fit.
bool DuplicateSelected();
void ForgetCopied();

}  // namespace mw
