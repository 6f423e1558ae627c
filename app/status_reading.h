// What the status bar reads of the ground under the cursor and of the tool in use, in its part 3.
#pragma once

#include <cstdint>
#include <string>

namespace mw {

// Cell and height of the ground at the last mouse position (neither where the sky is), and settings
// of the active mapper's tool. Reads the depth of the last frame; needs the view.
std::string StatusReading();

// Before each frame; `now` in milliseconds. Reads anew a few times a second only: a text that
// changed with every frame could not be read, and would be painted for nothing. While objects are
// dragged the part of the status bar is left to what tells of them.
void UpdateStatusReading(std::uint32_t now);

}  // namespace mw
