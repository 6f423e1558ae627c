// The "Object Browser - Add New Object" dialog: a list of the objects that can be placed, with the
// selected one turning in the 3D view. Opened from the level tree.
#pragma once

#include <functional>

class QWidget;

namespace mw {

// Runs the dialog at the left edge of `owner`, which may be null, so that the view stays in sight.
// `renderView` draws one frame of it. True when an object was added to "Cached Objects".
bool ObjectBrowserDialog(QWidget* owner, const std::function<void()>& renderView);

}  // namespace mw
