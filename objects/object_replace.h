// Replaces placed objects by others of the catalogue, where they stand.
#pragma once

namespace mw {

// How many static objects are selected.
int SelectedObjects();
// Every selected static object becomes one of the catalogue entry. It keeps its place, turn, scale
// and colour, and stays selected; what else is selected stays as it is. False, after a word in the
// status bar and with nothing changed, when the entry's mesh cannot be loaded.
bool ReplaceSelected(int entry);

}  // namespace mw
