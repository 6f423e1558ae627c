// The panel at the left: the game-mode filter and, below it, the level tree.
#pragma once

#include <QWidget>

#include "objects/level_tree.h"

class QComboBox;

namespace mw {

class LevelTreeWidget;

class LevelTreePanel : public QWidget {
 public:
  static constexpr int kUsualWidth = 185, kLeastWidth = 120;  // pixels

  explicit LevelTreePanel(QWidget* parent);

  LevelTreeWidget* tree() const { return tree_; }
  // Shows the items of the level tree here. The panel must outlive the view.
  LevelTreeView View();

 private:
  void ShowFixedItems();

  QComboBox* modeFilter_;
  LevelTreeWidget* tree_;
};

}  // namespace mw
