#include "app/ui/level_tree_drag.h"

#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QPixmap>
#include <optional>
#include <utility>

#include "app/level_tree_actions.h"
#include "resources/pictures.h"

namespace mw {
namespace {

constexpr char kMimeType[] = "application/x-mapwright-level-tree-item";
constexpr int kCursorSize = 24;
// Of the picture from the cursor, so that the place of the drop stays in sight.
constexpr QPoint kPictureOffset(16, 18);

// There is only one drag at a time.
struct {
  bool underWay = false;
  std::optional<QPoint> droppedAt;
} treeItemDrag;

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
  treeItemDrag = {true, std::nullopt};
  drag->exec(Qt::CopyAction);
  treeItemDrag.underWay = false;
  // Only now is the mouse free for what the drop may have to say.
  if (const auto pixel = std::exchange(treeItemDrag.droppedAt, std::nullopt)) {
    DropLevelTreeItem(item, pixel->x(), pixel->y());
  }
}

bool IsTreeItemDrag(const QDropEvent& event) {
  return treeItemDrag.underWay && event.mimeData()->hasFormat(kMimeType);
}

void AcceptTreeItemDrop(int x, int y) { treeItemDrag.droppedAt = QPoint(x, y); }

}  // namespace mw
