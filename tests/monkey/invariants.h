// What must hold of the running editor between two events, whatever the user did. For the monkey,
// on the thread of the windows, while no dialog is open.
#pragma once

#include <string>
#include <vector>

namespace mw::monkey {

// What does not hold, each as a line of text; empty when all is well. Draws one frame first.
std::vector<std::string> BrokenInvariants();

// The parts of it: drawing, camera and the shared flags; the ground; objects, entities and the
// level tree; the archives.
using Broken = std::vector<std::string>;
void CheckView(Broken& broken);
void CheckTerrain(Broken& broken);
void CheckObjects(Broken& broken);
void CheckTree(Broken& broken);
void CheckArchives(Broken& broken);

// Adds `what` unless the condition holds.
void Expect(bool holds, const std::string& what, Broken& broken);

}  // namespace mw::monkey
