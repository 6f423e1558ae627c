// Which rows of the level tree are shown: those whose texts contain what the user is looking for,
// and those above them.
#pragma once

#include <QString>
#include <set>

#include "objects/level_tree.h"

class QTreeWidget;
class QTreeWidgetItem;

namespace mw {

class LevelTreeFilter {
 public:
  // Of a tree that outlives the filter, and whose entries hold their items as Qt::UserRole.
  explicit LevelTreeFilter(QTreeWidget& tree) : tree_(tree) {}

  // Whatever the case. Rows with something to show below them unfold; without a text all is shown,
  // and they are folded as they were.
  void SetText(const QString& text);
  // The entry is new or has another text.
  void Follow(QTreeWidgetItem& entry);
  // The next row with the text behind the current one, or before it; after the last the first. Null
  // when there is none, or no text.
  QTreeWidgetItem* Next(bool backwards) const;

 private:
  bool Matches(const QTreeWidgetItem& entry) const;
  bool FilterBelow(QTreeWidgetItem& parent);
  void Unfold(QTreeWidgetItem& entry);
  void FoldAgain();

  QTreeWidget& tree_;
  QString text_;
  std::set<TreeItem> unfolded_;  // by the filter
};

}  // namespace mw
