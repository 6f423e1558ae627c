// How the user wants the Mini-Map: shown or not, how large, where in the view, and with which
// heights as black and white. Kept in the settings of the editor's user.
#pragma once

namespace mw {

enum class MiniMapSize : int { Small = 1, Medium = 2, Large = 3 };  // times the picture's own size

struct MiniMapLook {
  bool shown = true;
  MiniMapSize size = MiniMapSize::Small;
  // From the level's lowest to its highest ground instead of 0 to 256 height units.
  bool stretched = false;
  int left = 6, top = 6;  // in the view, window units; where there is no room it is shown nearer
  friend bool operator==(const MiniMapLook&, const MiniMapLook&) = default;
};

// Takes `session.miniMapLook` from the settings and shows it, once the windows are connected. What
// cannot be read counts as never kept.
void RecallMiniMap();
// Commands.
void SwitchMiniMap();
void SwitchMiniMapStretching();
void SetMiniMapSize(MiniMapSize size);
// The window was dragged there.
void PlaceMiniMap(int left, int top);

}  // namespace mw
