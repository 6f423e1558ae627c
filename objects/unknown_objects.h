// Objects of a level that the mod's object list does not have. They are drawn as plain boxes and
// saved under their own names.
#pragma once

namespace mw {

// Lists them in the message that comes when the level has been opened.
void NoteUnknownObjects();

}  // namespace mw
