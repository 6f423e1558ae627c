// The Object Browser: a list of the objects that can be placed, with the selected one turning in
// the 3D view. Opened from the level tree to add an object, and by Replace With.
#pragma once

#include <functional>
#include <optional>

class QWidget;

namespace mw {

// Runs the dialog at the left edge of `owner`, which may be null, so that the view stays in sight.
// `renderView` draws one frame of it. True when an object was added to "Cached Objects".
bool ObjectBrowserDialog(QWidget* owner, const std::function<void()>& renderView);
// The same dialog, to choose what replaces the selected objects: a catalogue entry, or nothing when
// the user cancels.
std::optional<int> ReplaceDialog(QWidget* owner, const std::function<void()>& renderView);

}  // namespace mw
