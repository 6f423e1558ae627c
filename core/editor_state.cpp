#include "core/editor_state.h"

#include "core/hooks.h"

namespace mw {

EditorState editor;

bool IsEditMode(EditMode mode) { return editor.editMode == mode; }

void ResetCoreState() {
  editor = EditorState{};
  camera = Camera{};
  hooks = Hooks{};
}

}  // namespace mw
