// The few calls that go from a lower house to a higher one. Start-up fills them in; one that nobody
// has filled in does nothing.
#pragma once

#include <functional>

namespace mw {

struct Hooks {
  // A mod was applied or its object list changed: read the object list again.
  std::function<void()> loadObjectCatalogue = [] {};
  // Mark the Mini-Map for repainting.
  std::function<void()> invalidateMiniMap = [] {};
  // Draw the placed static objects into the current frame (overlaid in the terrain and material
  // modes).
  std::function<void()> drawStaticObjects = [] {};
  // The whole ground changed: set the placed objects on it again.
  std::function<void()> seatObjectsOnGround = [] {};
};

extern Hooks hooks;

}  // namespace mw
