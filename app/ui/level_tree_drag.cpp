#include "app/ui/level_tree_drag.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPixmap>
#include <optional>
#include <utility>

#include "app/level_tree_actions.h"
#include "app/session.h"
#include "resources/pictures.h"

namespace mw {
namespace {

constexpr char kMimeType[] = "application/x-mapwright-level-tree-item";
constexpr int kCursorSize = 24;
// Of the picture from the cursor, so that the place of the drop stays in sight.
constexpr QPoint kPictureOffset(16, 18);

}  // namespace

void DragTreeItem(QObject* source, TreeItem item, const QPixmap& picture) {
  BeginLevelTreeDrag();
  auto* data = new QMimeData;
  data->setData(kMimeType, QByteArray::number(item));
  auto* drag = new QDrag(source);
  drag->setMimeData(data);
  drag->setPixmap(picture);
  drag->setHotSpot(-kPictureOffset);
  drag->setDragCursor(Icon("drag_cursor").pixmap(kCursorSize), Qt::CopyAction);
  session.treeItemDrag = {true, std::nullopt};
  drag->exec(Qt::CopyAction);
  session.treeItemDrag.underWay = false;
  // Only now is the mouse free for what the drop may have to say.
  if (const auto pixel = std::exchange(session.treeItemDrag.droppedAt, std::nullopt)) {
    DropLevelTreeItem(item, (*pixel)[0], (*pixel)[1]);
  }
}

bool IsTreeItemDrag(const QDropEvent& event) {
  return session.treeItemDrag.underWay && event.mimeData()->hasFormat(kMimeType);
}

void AcceptTreeItemDrop(int x, int y) { session.treeItemDrag.droppedAt = {x, y}; }

}  // namespace mw
