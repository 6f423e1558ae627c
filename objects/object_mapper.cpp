#include "objects/object_mapper.h"

namespace mw {

void PressObjectControl(ObjectControl) {}
void UpdateToolButtons(bool) {}
void PickCursorPoint(int, int) {}
void DeselectAll() {}
void ComputePivot() {}
void SelectOnly(Placement&, TreeItem) {}
void ToggleSelectAtCursor(int, int) {}
void PressTranslate(int, int) {}
void DragObjects(int, int, int, int) {}
bool EditHovered() { return false; }
void DeleteSelected() {}
void CopySelected() {}
void PasteCopied(int, int) {}

}  // namespace mw
