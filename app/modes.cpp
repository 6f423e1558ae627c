#include "app/modes.h"

#include "app/shell.h"
#include "objects/object_hover.h"
#include "platform/clock.h"
#include "terrain/brush_stroke.h"
#include "terrain/material_mapper.h"

namespace mw {

void EndStroke() {
  editor.rubberBandActive = false;
  StopPainting();
  ReleaseBrush(MillisecondsNow());
}

void SetEditMode(EditMode mode) {
  shell.showModeToolbar(mode);
  UpdateClipboardButtons(mode == EditMode::ObjectMapper);
  if (mode != editor.editMode) {
    EndStroke();
    ForgetHovered();
  }
  editor.editMode = mode;
}

void UpdateClipboardButtons(bool enable) {
  const bool usable = enable && !editor.pastePending;
  shell.setCommandEnabled(kCommandCut, usable);
  shell.setCommandEnabled(kCommandCopy, usable);
  shell.setCommandEnabled(kCommandPaste, usable && editor.somethingCopied);
}

bool GiveUpPaste() {
  if (!editor.pastePending) return false;
  editor.pastePending = false;
  UpdateClipboardButtons(IsEditMode(EditMode::ObjectMapper));
  return true;
}

}  // namespace mw
