// Reading a level's files, all of them, from the open archives. Used by the editor's opening and by
// the command that verifies archives, so that both find the same damage.
#pragma once

namespace mw {

// The level in openLevel.folder: settings, textures, heights, materials, objects and entities, in
// this order; what is damaged or missing is noted in the load report. False, with nothing read
// behind the settings, when the size of its terrain is not supported.
bool ReadLevelFiles();

}  // namespace mw
