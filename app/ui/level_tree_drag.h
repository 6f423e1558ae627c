// A level tree item on its way to the 3D view: the tree starts the drag, the view takes the drop.
#pragma once

#include "objects/level_tree.h"

class QDropEvent;
class QObject;
class QPixmap;

namespace mw {

// Drags the item, with the picture beside the cursor, until the button is released; frames go on
// meanwhile. Dropped on the 3D view, it does there what it stands for; anywhere else, nothing.
void DragTreeItem(QObject* source, TreeItem item, const QPixmap& picture);

// For the view: whether the event is about the item being dragged.
bool IsTreeItemDrag(const QDropEvent& event);
// The item was released over this pixel of the view's picture.
void AcceptTreeItemDrop(int x, int y);

}  // namespace mw
