#include "core/editor_state.h"

#include <utility>

#include "core/hooks.h"

namespace mw {

EditorState editor;

bool IsEditMode(EditMode mode) { return editor.editMode == mode; }

void ResetCoreState() {
  editor.history.changed = [] {};
  ClearHistory();
  History history = std::move(editor.history);  // its counts go on
  history.limit = kHistoryBytes;
  editor = EditorState{};
  editor.history = std::move(history);
  camera = Camera{};
  hooks = Hooks{};
}

}  // namespace mw
