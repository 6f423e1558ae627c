#include "app/object_operations.h"

#include "app/keys.h"
#include "app/operations.h"
#include "core/hooks.h"
#include "objects/level_tree.h"
#include "objects/object_clipboard.h"
#include "objects/object_hover.h"
#include "objects/object_mapper.h"
#include "objects/object_render.h"
#include "objects/object_store.h"
#include "objects/static_objects.h"
#include "objects/unknown_objects.h"

namespace mw {
namespace {

void ObjectKey(int key) {
  if (key == kKeySpace) {
    DeselectAll();
    UpdateToolButtons(false);
  } else if (key == kKeyDelete) {
    DeleteSelected();
  }
}

void ConnectMapper() {
  operations.drawObjectModeScene = DrawObjectModeScene;
  operations.drawBrowserPreview = DrawBrowserPreview;
  operations.objectSelectTool = [] { return objectStore.tool == ObjectTool::Select; };
  operations.objectTranslateTool = [] { return objectStore.tool == ObjectTool::Translate; };
  operations.pickCursorPoint = PickCursorPoint;
  operations.toggleSelectAtCursor = ToggleSelectAtCursor;
  operations.pressTranslate = [](int x, int y, int, int) { PressTranslate(x, y); };
  operations.dragObjects = DragObjects;
  operations.releaseObjects = ReleaseObjects;
  operations.forgetHovered = ForgetHovered;
  operations.editHovered = EditHovered;
  operations.objectKey = ObjectKey;
  operations.objectToolbarCommand = [](CommandId id) {
    PressObjectControl(static_cast<ObjectControl>(id));
  };
  operations.copy = CopySelected;
  operations.paste = PasteCopied;
}

}  // namespace

void ConnectObjectOperations() {
  operations.clearAllObjects = ClearAllObjects;
  operations.buildTree = BuildTree;
  operations.loadStaticObjects = [] {
    LoadStaticObjects();
    NoteUnknownObjects();
  };
  operations.snapAllToGround = SnapAllToGround;
  ConnectMapper();
  hooks.loadObjectCatalogue = LoadObjectCatalogue;
  hooks.drawStaticObjects = DrawStaticObjects;
  hooks.seatObjectsOnGround = SnapAllToGround;
}

}  // namespace mw
