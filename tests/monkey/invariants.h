// What must hold of the running editor between two events, whatever the user did. For the monkey,
// on the thread of the windows, while no dialog is open.
#pragma once

#include <string>
#include <vector>

namespace mw::monkey {

// Draws a frame and looks at everything; what does not hold is taken with TakeBroken.
void CheckInvariants();
// The part of it that is about objects, entities and the level tree.
void CheckObjects();

// Notes `what` unless the condition holds.
void Expect(bool holds, const std::string& what);
// What was noted since this was last called, each as a line of text; empty when all is well.
std::vector<std::string> TakeBroken();

}  // namespace mw::monkey
