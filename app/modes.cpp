#include "app/modes.h"

#include "app/operations.h"
#include "app/shell.h"

namespace mw {

void EndStroke() {
  editor.rubberBandActive = false;
  operations.stopPainting();
  operations.releaseBrush();
}

void SetEditMode(EditMode mode) {
  shell.showModeToolbar(mode);
  UpdateClipboardButtons(mode == EditMode::ObjectMapper);
  if (mode != editor.editMode) {
    EndStroke();
    operations.forgetHovered();
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
