// The "Generate Terrain Shadows" dialog: which tiles get shadows, and how finely they are traced.
// Opened from the Tools menu.
#pragma once

class QWidget;

namespace mw {

// True when it ended with OK. Cancel takes the selected tiles back; the detail stays as chosen.
bool ShadowDialog(QWidget* owner);

}  // namespace mw
