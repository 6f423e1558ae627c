#include "app/modes.h"

#include "app/shell.h"

namespace mw {

void SetEditMode(EditMode mode) {
  shell.showModeToolbar(mode);
  UpdateClipboardButtons(mode == EditMode::ObjectMapper);
  editor.rubberBandActive = false;  // its release would go to another mode
  editor.editMode = mode;
}

void UpdateClipboardButtons(bool enable) {
  const bool usable = enable && !editor.pastePending;
  shell.setCommandEnabled(kCommandCut, usable);
  shell.setCommandEnabled(kCommandCopy, usable);
  shell.setCommandEnabled(kCommandPaste, usable && editor.somethingCopied);
}

}  // namespace mw
