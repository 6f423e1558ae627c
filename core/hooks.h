// The few calls that go from a lower house to a higher one. Start-up fills them in; one that nobody
// has filled in does nothing.
#pragma once

#include <functional>
#include <optional>

namespace mw {

struct DiskChange;
struct DiskFault;
struct PropertySheet;

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
  // Shows the sheet and, on OK, puts the edited values into the sheet's variables. False:
  // cancelled.
  std::function<bool(PropertySheet&)> runPropertySheet = [](PropertySheet&) { return false; };
  // The tools, view mode or show switches of objectStore changed: the toolbar shows them.
  std::function<void()> refreshObjectToolbar = [] {};
  // Tests set this to let any change of the disk fail (platform/file.h): it is asked before each
  // one. Empty in the program.
  std::function<std::optional<DiskFault>(const DiskChange&)> diskFault;
};

extern Hooks hooks;

}  // namespace mw
