// The "Surface Map Assignments" dialog: which surface tiles the level has, and which texture set
// paints them. Opened from the main toolbar and by Ctrl+A in the view.
#pragma once

#include <functional>

class QWidget;

namespace mw {

// Runs the dialog over `owner`, which may be null. What it changes is in effect at once; Cancel
// takes the tiles and their offsets back. `renderView` draws the 3D view after a change.
void SurfaceAssignmentsDialog(QWidget* owner, const std::function<void()>& renderView);

}  // namespace mw
