#include "core/editor_state.h"

#include "core/mini_map_picture.h"

namespace mw {

EditorState editor;
MiniMapPicture miniMapPicture;

bool IsEditMode(EditMode mode) { return editor.editMode == mode; }

void ResetEditorState() {
  editor = EditorState{};
  camera = Camera{};
  miniMapPicture = MiniMapPicture{};
}

}  // namespace mw
