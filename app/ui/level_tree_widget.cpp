#include "app/ui/level_tree_widget.h"

#include <QApplication>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QToolTip>
#include <algorithm>
#include <utility>

#include "app/commands.h"
#include "app/level_tree_actions.h"
#include "app/ui/level_tree_drag.h"
#include "app/ui/qt_text.h"
#include "resources/pictures.h"

namespace mw {
namespace {

constexpr int kIndentation = 12;  // pixels
// For the width of the tree's column.
constexpr int kMeasuredRows = 1000, kMeasuredWhileFiltering = 100;

// 0 for no entry.
TreeItem ItemOf(const QTreeWidgetItem* entry) {
  return entry ? entry->data(0, Qt::UserRole).toUInt() : 0;
}

bool IsInside(const QTreeWidgetItem* entry, const QTreeWidgetItem* branch) {
  while (entry && entry != branch) entry = entry->parent();
  return entry != nullptr;
}

// The one below it on its level, else above it, else its parent.
TreeItem NeighbourOf(const QTreeWidgetItem* entry) {
  const QTreeWidgetItem* parent = entry->parent();
  if (!parent) return 0;
  const int row = parent->indexOfChild(const_cast<QTreeWidgetItem*>(entry));
  for (const int neighbour : {row + 1, row - 1}) {
    if (neighbour >= 0 && neighbour < parent->childCount()) return ItemOf(parent->child(neighbour));
  }
  return ItemOf(parent);
}

// Ctrl and Shift add items to what is chosen, or take them away.
bool Extends(const QInputEvent& event) {
  return event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
}

// Cut, copy and paste mean what is selected in the level, as they do in the view.
CommandId ClipboardCommandOf(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Cut)) return kCommandCut;
  if (event.matches(QKeySequence::Copy)) return kCommandCopy;
  if (event.matches(QKeySequence::Paste)) return kCommandPaste;
  return kCommandNone;
}

}  // namespace

LevelTreeWidget::LevelTreeWidget(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  // As wide as the longest text: names often differ at their ends only.
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  setUniformRowHeights(true);
  setIndentation(kIndentation);
  setIconSize(kIconSize);
  setExpandsOnDoubleClick(false);  // activation decides
  setSelectionMode(ExtendedSelection);
  connect(this, &QTreeWidget::itemSelectionChanged, this, &LevelTreeWidget::TellChosen);
  connect(this, &QTreeWidget::itemDoubleClicked, this, &LevelTreeWidget::Activate);
}

QTreeWidgetItem* LevelTreeWidget::Find(TreeItem item) const {
  const auto found = entries_.find(item);
  return found == entries_.end() ? nullptr : found->second;
}

void LevelTreeWidget::Clear() {
  const QSignalBlocker quiet(this);
  pressedItem_ = 0;
  entries_.clear();
  clear();
}

void LevelTreeWidget::Insert(TreeItem item, TreeItem parent, TreeItem before,
                             const std::string& text) {
  auto* entry = new QTreeWidgetItem;
  entry->setText(0, FromText(text));
  entry->setData(0, Qt::UserRole, item);
  QTreeWidgetItem* above = Find(parent);
  if (!above) above = invisibleRootItem();
  QTreeWidgetItem* const next = Find(before);
  above->insertChild(next ? above->indexOfChild(next) : above->childCount(), entry);
  entries_[item] = entry;
  filter_.Follow(*entry);
}

void LevelTreeWidget::SetText(TreeItem item, const std::string& text) {
  QTreeWidgetItem* const entry = Find(item);
  if (!entry) return;
  entry->setText(0, FromText(text));
  filter_.Follow(*entry);
}

// The selection does not move on to another item, as if the user had chosen that.
void LevelTreeWidget::Remove(TreeItem item) {
  QTreeWidgetItem* entry = Find(item);
  if (!entry) return;
  const QSignalBlocker quiet(this);
  if (IsInside(currentItem(), entry)) setCurrentItem(nullptr);
  entries_.erase(item);
  delete entry;
}

void LevelTreeWidget::Select(TreeItem item) {
  QTreeWidgetItem* entry = Find(item);
  setCurrentItem(entry);
  if (entry) scrollToItem(entry);
}

void LevelTreeWidget::SelectAll(const std::vector<TreeItem>& items) {
  QItemSelection rows;
  for (const TreeItem item : items) {
    const QTreeWidgetItem* const entry = Find(item);
    if (!entry) continue;
    const QModelIndex index = indexFromItem(entry);
    rows.append(QItemSelectionRange(index));
  }
  selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect);
}

bool LevelTreeWidget::IsUnfolded(TreeItem item) const {
  const QTreeWidgetItem* const entry = Find(item);
  return entry && entry->isExpanded();
}

void LevelTreeWidget::Unfold(TreeItem item) {
  if (QTreeWidgetItem* entry = Find(item)) entry->setExpanded(true);
}

// Measuring all texts takes longer than a frame. While the user types, those of as many rows as two
// screens hold do; a longer one far below shows as a tool tip.
void LevelTreeWidget::Filter(const QString& text) {
  header()->setResizeContentsPrecision(text.isEmpty() ? kMeasuredRows : kMeasuredWhileFiltering);
  filter_.SetText(text);
}

void LevelTreeWidget::ChooseNext(bool backwards) {
  QTreeWidgetItem* const entry = filter_.Next(backwards);
  if (!entry) return;
  if (selectedItems() == QList{entry} && entry == currentItem()) {
    LevelTreeItemSelected(ItemOf(entry));
  } else {
    setCurrentItem(entry);
  }
  scrollToItem(entry);
}

void LevelTreeWidget::TellChosen() {
  std::vector<TreeItem> items;
  for (const QTreeWidgetItem* entry : selectedItems()) items.push_back(ItemOf(entry));
  if (items.size() == 1 && !extends_) {
    LevelTreeItemSelected(items.front());
  } else {
    LevelTreeItemsSelected(items);
  }
}

void LevelTreeWidget::DecorateFixedItems() {
  const LevelTree::FixedItems& fixed = levelTree.fixed;
  const std::pair<TreeItem, const char*> icons[] = {
      {fixed.world, "world"},
      {fixed.lighting, "light_settings"},
      {fixed.shadows, "shadow_settings"},
      {fixed.fog, "fog_settings"},
      {fixed.water, "water_settings"},
      {fixed.teams, "teams"},
      {fixed.controlPoints, "show_control_points"},
      {fixed.soldierSpawns, "show_soldier_spawns"},
      {fixed.objectSpawns, "show_object_spawns"},
      {fixed.staticObjects, "object_mapper"},
      {fixed.standardMeshes, "show_standard_meshes"},
      {fixed.treeMeshes, "show_tree_meshes"},
      {fixed.cachedObjects, "cached_objects"},
  };
  for (const auto& [item, name] : icons) {
    QIcon& icon = icons_[name];
    if (icon.isNull()) icon = Icon(name);
    if (QTreeWidgetItem* entry = Find(item)) entry->setIcon(0, icon);
  }
}

void LevelTreeWidget::Activate(QTreeWidgetItem* entry) {
  if (!entry || ActivateLevelTreeItem(ItemOf(entry))) return;
  entry->setExpanded(!entry->isExpanded());
}

void LevelTreeWidget::DeleteChosen() {
  const QList<QTreeWidgetItem*> chosen = selectedItems();
  if (chosen.size() == 1) return DeleteOnly(chosen.front());
  std::vector<TreeItem> items;
  for (const QTreeWidgetItem* entry : chosen) items.push_back(ItemOf(entry));
  DeleteLevelTreeItems(items);
}

void LevelTreeWidget::DeleteOnly(QTreeWidgetItem* entry) {
  const TreeItem item = ItemOf(entry), neighbour = NeighbourOf(entry);
  const bool choosesNext = DeleteLevelTreeItem(item);
  if (Find(item) || currentItem()) return;
  {
    const QSignalBlocker quiet(this);
    Select(neighbour);
  }
  if (choosesNext) LevelTreeItemSelected(neighbour);
}

void LevelTreeWidget::keyPressEvent(QKeyEvent* event) {
  const QScopedValueRollback extends(extends_, Extends(*event));
  if (const CommandId command = ClipboardCommandOf(*event)) {
    RunCommand(command);
    return;
  }
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event->isAutoRepeat()) Activate(currentItem());
      break;
    case Qt::Key_Delete:
      if (!event->isAutoRepeat()) DeleteChosen();
      break;
    default:
      QTreeWidget::keyPressEvent(event);
  }
}

// A click on the item that is the chosen one already brings the user back to what it stands for.
void LevelTreeWidget::mousePressEvent(QMouseEvent* event) {
  const QScopedValueRollback extends(extends_, Extends(*event));
  if (event->button() != Qt::LeftButton) {
    QTreeWidget::mousePressEvent(event);
    return;
  }
  pressedAt_ = event->position().toPoint();
  const QList<QTreeWidgetItem*> chosen = selectedItems();
  const TreeItem pressed = ItemOf(itemAt(pressedAt_));
  const bool again = !extends_ && chosen.size() == 1 && pressed == ItemOf(chosen.front());
  pressedItem_ = pressed;
  QTreeWidget::mousePressEvent(event);
  if (again) LevelTreeItemSelected(pressed);
}

// Moving with a button held drags, or does nothing; it does not select what it passes over.
void LevelTreeWidget::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) {
    QTreeWidget::mouseMoveEvent(event);
    return;
  }
  const QPoint distance = event->position().toPoint() - pressedAt_;
  if (!(event->buttons() & Qt::LeftButton) ||
      distance.manhattanLength() < QApplication::startDragDistance()) {
    return;
  }
  const TreeItem item = std::exchange(pressedItem_, 0);
  QTreeWidgetItem* const entry = Find(item);
  if (entry && CanDragLevelTreeItem(item)) DragTreeItem(this, item, PictureOf(entry));
}

void LevelTreeWidget::mouseReleaseEvent(QMouseEvent* event) {
  const QScopedValueRollback extends(extends_, Extends(*event));
  pressedItem_ = 0;
  QTreeWidget::mouseReleaseEvent(event);
}

void LevelTreeWidget::resizeEvent(QResizeEvent* event) {
  header()->setMinimumSectionSize(viewport()->width());
  QTreeWidget::resizeEvent(event);
}

// The item as it stands in the tree.
QPixmap LevelTreeWidget::PictureOf(QTreeWidgetItem* entry) const {
  constexpr int kTextMargin = 8;
  QRect row = visualItemRect(entry);
  row.setWidth(
      std::min(row.width(), fontMetrics().horizontalAdvance(entry->text(0)) + kTextMargin));
  return viewport()->grab(row);
}

// Texts that do not fit show as tool tips.
bool LevelTreeWidget::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QTreeWidget::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const QModelIndex index = indexAt(help->pos());
  const QRect row = visualRect(index);
  if (index.isValid() && row.left() + sizeHintForIndex(index).width() > viewport()->width()) {
    QToolTip::showText(help->globalPos(), index.data().toString(), viewport(), row);
  } else {
    QToolTip::hideText();
  }
  return true;
}

}  // namespace mw
