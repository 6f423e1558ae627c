// Places that the camera is put at by itself: where it stood at a level's last save, where a level
// is first looked at from, and where most of it is in sight.
#pragma once

#include <string>

namespace mw {

inline constexpr float kFarthestCamera = 100'000;  // world units; what is beyond is damage

// What places of the open level are kept under in the settings: "mod/level", in lower case and
// without control characters.
std::string CameraPlaceName();

// Keeps `editor.savedCameraPosition` for the open level, also for later runs of the program.
void RememberCameraPosition();
// Fills in `editor.savedCameraPosition` for the level that was just read: the position of its last
// save, or else the middle of the edge from which a camera with yaw 180 looks across it, 40 world
// units above the ground there.
void RecallCameraPosition();

// From straight above the middle, as high as the far plane lets the lowest ground be seen, but no
// higher than it takes to see the whole level.
void ShowWholeLevel();

// How far from its middle what reaches so far around it fits into the view; world units.
float DistanceToSee(float radius);

}  // namespace mw
