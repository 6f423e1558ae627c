// The level tree as a widget: shows the items of the level tree and tells what the user does with
// them.
#pragma once

#include <QHash>
#include <QIcon>
#include <QTreeWidget>
#include <unordered_map>
#include <vector>

#include "app/ui/level_tree_filter.h"
#include "objects/level_tree.h"

namespace mw {

class LevelTreeWidget : public QTreeWidget {
 public:
  explicit LevelTreeWidget(QWidget* parent);

  void Clear();
  // `before`: another item of the parent; 0 for a place behind all of them.
  void Insert(TreeItem item, TreeItem parent, TreeItem before, const std::string& text);
  void SetText(TreeItem item, const std::string& text);
  void Remove(TreeItem item);
  // The item alone; scrolls to it. 0 selects nothing.
  void Select(TreeItem item);
  // These items alone, wherever they are.
  void SelectAll(const std::vector<TreeItem>& items);
  bool IsUnfolded(TreeItem item) const;
  void Unfold(TreeItem item);
  // Only rows with this text are shown, and those above them; all without a text.
  void Filter(const QString& text);
  // As if the user clicked on the next row with the text, or the one before.
  void ChooseNext(bool backwards);
  // Gives the fixed items their icons.
  void DecorateFixedItems();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool viewportEvent(QEvent* event) override;

 private:
  QTreeWidgetItem* Find(TreeItem item) const;
  void Activate(QTreeWidgetItem* entry);
  // The user has chosen other items.
  void TellChosen();
  void DeleteChosen();
  void DeleteOnly(QTreeWidgetItem* entry);
  QPixmap PictureOf(QTreeWidgetItem* entry) const;

  std::unordered_map<TreeItem, QTreeWidgetItem*> entries_;
  QHash<QString, QIcon> icons_;  // by name; each is drawn once, and not anew for every level
  LevelTreeFilter filter_{*this};
  TreeItem pressedItem_ = 0;  // that the left button was pressed on, until it is dragged
  QPoint pressedAt_;
  bool extends_ = false;  // the key or button that is handled changes what is chosen by some items
};

}  // namespace mw
