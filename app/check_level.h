// What the Check Level window does with the level.
#pragma once

#include "objects/level_rules.h"

namespace mw {

// Selects what was found, here and in the level tree, and moves the camera there. What stands
// nowhere is only shown in the tree. Draws a frame.
void GoToFind(const LevelFind& find);

// "2 errors, 1 warning": those that there are.
std::string CountFinds(const std::vector<LevelFind>& finds);

}  // namespace mw
