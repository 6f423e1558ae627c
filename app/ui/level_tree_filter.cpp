#include "app/ui/level_tree_filter.h"

#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <vector>

namespace mw {
namespace {

TreeItem ItemOf(const QTreeWidgetItem& entry) { return entry.data(0, Qt::UserRole).toUInt(); }

}  // namespace

bool LevelTreeFilter::Matches(const QTreeWidgetItem& entry) const {
  return entry.text(0).contains(text_, Qt::CaseInsensitive);
}

void LevelTreeFilter::Unfold(QTreeWidgetItem& entry) {
  if (entry.isExpanded()) return;
  entry.setExpanded(true);
  unfolded_.insert(ItemOf(entry));
}

void LevelTreeFilter::FoldAgain() {
  if (unfolded_.empty()) return;
  for (QTreeWidgetItemIterator entry(&tree_); *entry; ++entry) {
    if (unfolded_.contains(ItemOf(**entry))) (*entry)->setExpanded(false);
  }
  unfolded_.clear();
}

// Whether anything below the entry is shown.
bool LevelTreeFilter::FilterBelow(QTreeWidgetItem& parent) {
  bool anyShown = false;
  for (int row = 0; row < parent.childCount(); ++row) {
    QTreeWidgetItem& entry = *parent.child(row);
    const bool hasShown = FilterBelow(entry);
    const bool isShown = hasShown || text_.isEmpty() || Matches(entry);
    if (entry.isHidden() == isShown) entry.setHidden(!isShown);
    if (hasShown && !text_.isEmpty()) Unfold(entry);
    anyShown |= isShown;
  }
  return anyShown;
}

void LevelTreeFilter::SetText(const QString& text) {
  if (text == text_) return;
  text_ = text;
  FilterBelow(*tree_.invisibleRootItem());
  if (text_.isEmpty()) FoldAgain();
}

void LevelTreeFilter::Follow(QTreeWidgetItem& entry) {
  if (text_.isEmpty()) return;
  const bool isShown = Matches(entry) || FilterBelow(entry);
  entry.setHidden(!isShown);
  if (!isShown) return;
  for (QTreeWidgetItem* above = entry.parent(); above; above = above->parent()) {
    above->setHidden(false);
    Unfold(*above);
  }
}

QTreeWidgetItem* LevelTreeFilter::Next(bool backwards) const {
  if (text_.isEmpty()) return nullptr;
  std::vector<QTreeWidgetItem*> found;
  std::size_t behind = 0;  // how many come before the current one
  bool isBehind = false, isFound = false;
  for (QTreeWidgetItemIterator entry(&tree_); *entry; ++entry) {
    const bool isCurrent = *entry == tree_.currentItem();
    if (isCurrent) {
      isBehind = true;
      behind = found.size();
    }
    if (!Matches(**entry)) continue;
    isFound |= isCurrent;
    found.push_back(*entry);
  }
  if (found.empty()) return nullptr;
  const std::size_t count = found.size();
  if (backwards) return found[((isBehind ? behind : 0) + count - 1) % count];
  return found[(isFound ? behind + 1 : behind) % count];
}

}  // namespace mw
