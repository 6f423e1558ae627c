#include "app/ui/level_tree_panel.h"

#include <QComboBox>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace mw {

LevelTreePanel::LevelTreePanel(QWidget* parent) : QWidget(parent), tree_(new QTreeWidget(this)) {
  constexpr int kPanelWidth = 185, kMargin = 2, kRightMargin = 3;
  setObjectName("levelTreePanel");
  setProperty("controlId", 101);
  setFixedWidth(kPanelWidth);

  auto* modeFilter = new QComboBox(this);
  modeFilter->setObjectName("modeFilter");
  modeFilter->setProperty("controlId", 1068);
  modeFilter->setToolTip("Game Mode Filter");
  modeFilter->addItems({"Show All", "Show CQ", "Show CTF", "Show TDM"});

  tree_->setObjectName("levelTree");
  tree_->setProperty("controlId", 1000);
  tree_->setAccessibleName("Level Tree");
  tree_->setHeaderHidden(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kRightMargin, 0);
  layout->setSpacing(kMargin);
  layout->addWidget(modeFilter);
  layout->addWidget(tree_);
}

}  // namespace mw
