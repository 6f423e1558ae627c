// The panel at the left: the game-mode filter and, below it, the level tree.
#pragma once

#include <QWidget>

class QComboBox;
class QTreeWidget;

namespace mw {

class LevelTreePanel : public QWidget {
 public:
  explicit LevelTreePanel(QWidget* parent);

  QTreeWidget* tree() const { return tree_; }
  QComboBox* modeFilter() const { return modeFilter_; }

 private:
  QComboBox* modeFilter_;
  QTreeWidget* tree_;
};

}  // namespace mw
