// The editing mode, its toolbar, and the clipboard buttons that depend on it.
#pragma once

#include "core/editor_state.h"

namespace mw {

// Ends what a held button does to the ground, and its rubber band: the release will go elsewhere.
void EndStroke();
void SetEditMode(EditMode mode);
// Cut and Copy are enabled when `enable` and no paste is pending, Paste when something was copied,
// too.
void UpdateClipboardButtons(bool enable);
// The next press will not paste after all. False when no paste is pending.
bool GiveUpPaste();

}  // namespace mw
