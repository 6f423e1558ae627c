#include "app/ui/level_tree_panel.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "app/level_tree_actions.h"
#include "app/ui/level_tree_widget.h"

namespace mw {

LevelTreePanel::LevelTreePanel(QWidget* parent)
    : QWidget(parent), modeFilter_(new QComboBox(this)), tree_(new LevelTreeWidget(this)) {
  constexpr int kMargin = 2, kRightMargin = 3;
  setObjectName("levelTreePanel");
  setProperty("controlId", 101);
  setMinimumWidth(kLeastWidth);

  modeFilter_->setObjectName("modeFilter");
  modeFilter_->setProperty("controlId", 1068);
  modeFilter_->setToolTip("Game Mode Filter");
  modeFilter_->addItems({"Show All", "Show CQ", "Show CTF", "Show TDM"});
  Q_ASSERT(modeFilter_->count() == kModeFilterChoices);
  connect(modeFilter_, &QComboBox::currentIndexChanged, this, ChooseModeFilter);

  tree_->setObjectName("levelTree");
  tree_->setProperty("controlId", 1000);
  tree_->setAccessibleName("Level Tree");

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kRightMargin, 0);
  layout->setSpacing(kMargin);
  layout->addWidget(modeFilter_);
  layout->addWidget(tree_);
}

LevelTreeView LevelTreePanel::View() {
  LevelTreeView view;
  view.clear = [this] { tree_->Clear(); };
  view.insert = [this](TreeItem item, TreeItem parent, TreeItem before, const std::string& text) {
    tree_->Insert(item, parent, before, text);
  };
  view.setText = [this](TreeItem item, const std::string& text) { tree_->SetText(item, text); };
  view.remove = [this](TreeItem item) { tree_->Remove(item); };
  view.select = [this](TreeItem item) { tree_->Select(item); };
  view.selectAll = [this](const std::vector<TreeItem>& items) { tree_->SelectAll(items); };
  view.isUnfolded = [this](TreeItem item) { return tree_->IsUnfolded(item); };
  view.unfold = [this](TreeItem item) { tree_->Unfold(item); };
  view.resetFilter = [this] { ShowFixedItems(); };
  return view;
}

// The tree was built anew.
void LevelTreePanel::ShowFixedItems() {
  const QSignalBlocker quiet(modeFilter_);
  modeFilter_->setCurrentIndex(0);
  tree_->DecorateFixedItems();
}

}  // namespace mw
