#include "app/modes.h"

#include "app/operations.h"
#include "app/shell.h"
#include "terrain/terrain.h"

namespace mw {

void SetEditMode(EditMode mode) {
  shell.showModeToolbar(mode);
  UpdateClipboardButtons(mode == EditMode::ObjectMapper);
  // The release of the button would go to another mode.
  editor.rubberBandActive = false;
  if (IsEditMode(EditMode::MaterialMapper) && mode != EditMode::MaterialMapper) {
    operations.setPainting(false);
  }
  if (terrain) terrain->flattenActive = 0;
  editor.editMode = mode;
}

void UpdateClipboardButtons(bool enable) {
  const bool usable = enable && !editor.pastePending;
  shell.setCommandEnabled(kCommandCut, usable);
  shell.setCommandEnabled(kCommandCopy, usable);
  shell.setCommandEnabled(kCommandPaste, usable && editor.somethingCopied);
}

}  // namespace mw
