#include "app/ui/level_tree_panel.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "app/level_tree_actions.h"
#include "app/shell.h"
#include "app/ui/level_tree_widget.h"

namespace mw {

LevelTreePanel::LevelTreePanel(QWidget* parent)
    : QWidget(parent),
      modeFilter_(new QComboBox(this)),
      findField_(new QLineEdit(this)),
      tree_(new LevelTreeWidget(this)) {
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

  BuildFindField();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kMargin, kMargin, kRightMargin, 0);
  layout->setSpacing(kMargin);
  layout->addWidget(modeFilter_);
  layout->addWidget(findField_);
  layout->addWidget(tree_);
}

void LevelTreePanel::BuildFindField() {
  findField_->setObjectName("findField");
  findField_->setAccessibleName("Find in Level Tree");
  findField_->setPlaceholderText("Find");
  findField_->setToolTip("Shows only what has this in its name. Enter goes to the next one.");
  findField_->setClearButtonEnabled(true);
  connect(findField_, &QLineEdit::textChanged, tree_, &LevelTreeWidget::Filter);
  findField_->installEventFilter(this);
}

// What the find field's keys do: true for those that do something here.
bool LevelTreePanel::FindByKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      tree_->ChooseNext(event.modifiers() & Qt::ShiftModifier);
      return true;
    case Qt::Key_Down:
      tree_->setFocus(Qt::ShortcutFocusReason);
      return true;
    case Qt::Key_Escape:
      findField_->clear();
      shell.focusView();
      return true;
    default:
      return false;
  }
}

bool LevelTreePanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched == findField_ && event->type() == QEvent::KeyPress)
    return FindByKey(static_cast<QKeyEvent&>(*event));
  return QWidget::eventFilter(watched, event);
}

void LevelTreePanel::FocusFindField() {
  findField_->setFocus(Qt::ShortcutFocusReason);
  findField_->selectAll();
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
  findField_->clear();
  tree_->DecorateFixedItems();
}

}  // namespace mw
