// The panel at the left: the game-mode filter, the field to find things with, and the level tree.
#pragma once

#include <QWidget>

#include "objects/level_tree.h"

class QComboBox;
class QKeyEvent;
class QLineEdit;

namespace mw {

class LevelTreeWidget;

class LevelTreePanel : public QWidget {
 public:
  static constexpr int kUsualWidth = 185, kLeastWidth = 120;  // pixels

  explicit LevelTreePanel(QWidget* parent);

  LevelTreeWidget* tree() const { return tree_; }
  // Gives it the keyboard, with its text to be typed over.
  void FocusFindField();
  // Shows the items of the level tree here. The panel must outlive the view.
  LevelTreeView View();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowFixedItems();
  void BuildFindField();
  bool FindByKey(const QKeyEvent& event);

  QComboBox* modeFilter_;
  QLineEdit* findField_;
  LevelTreeWidget* tree_;
};

}  // namespace mw
