#include "app/ui/level_tree_panel.h"

#include <QComboBox>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace mw {

LevelTreePanel::LevelTreePanel(QWidget* parent)
    : QWidget(parent), modeFilter_(new QComboBox(this)), tree_(new QTreeWidget(this)) {
  constexpr int kPanelWidth = 185, kMargin = 2, kRightMargin = 3;
  setObjectName("levelTreePanel");
  setProperty("controlId", 101);
  setFixedWidth(kPanelWidth);

  modeFilter_->setObjectName("modeFilter");
  modeFilter_->setProperty("controlId", 1068);
  modeFilter_->setToolTip("Game Mode Filter");
  modeFilter_->addItems({"Show All", "Show CQ", "Show CTF", "Show TDM"});

  tree_->setObjectName("levelTree");
  tree_->setProperty("controlId", 1000);
  tree_->setAccessibleName("Level Tree");
  tree_->setHeaderHidden(true);

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kRightMargin, 0);
  layout->setSpacing(kMargin);
  layout->addWidget(modeFilter_);
  layout->addWidget(tree_);
}

}  // namespace mw
