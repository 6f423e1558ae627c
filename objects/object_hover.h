// What is under the mouse in the Object Mapper.
#pragma once

#include <string>

namespace mw {

// Finds the object whose mark the CursorPoint touches, a box over its place, and the entity that it
// touches; if there is neither, the object whose body it touches, the nearest one of several, and
// at last the one whose drawn marker it touches.
void FindHovered();
// Nothing is under the mouse any more, and the status bar names it no longer: the other modes are
// about the ground.
void ForgetHovered();
// The status bar names what is hovered, as soon as that is another thing or is called otherwise,
// and no longer when nothing is.
void NameHovered();
// The status bar names something else that is there, until ForgetNamed: when it may be there no
// more.
void NameInStatusBar(const std::string& text);
void ForgetNamed();

}  // namespace mw
