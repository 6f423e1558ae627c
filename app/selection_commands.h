// What commands do with the selection of the Object Mapper, for the rows of the command table. Each
// goes to that mode first; without a selection those that need one only say so.
#pragma once

namespace mw {

void DuplicateOnCommand();
// Asks for the catalogue entry that takes the place of the selected objects.
void ReplaceOnCommand();
void EditSelectedOnCommand();
void SelectKindOnCommand();
void InvertOnCommand();
// The camera looks at all that is selected; from above it stays as high as it is, if that is high
// enough. It does not change the mode.
void ShowSelection();

}  // namespace mw
