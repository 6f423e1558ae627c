// The panel at the left: the game-mode filter and, below it, the level tree.
#pragma once

#include <QWidget>

class QTreeWidget;

namespace mw {

class LevelTreePanel : public QWidget {
 public:
  explicit LevelTreePanel(QWidget* parent);

  QTreeWidget* tree() const { return tree_; }

 private:
  QTreeWidget* tree_;
};

}  // namespace mw
