#include "app/ui/check_level_dialog.h"

#include <QDialog>
#include <QPushButton>
#include <QStyle>
#include <algorithm>
#include <optional>

#include "app/check_level.h"
#include "app/ui/qt_text.h"
#include "ui_214_check_level.h"

namespace mw {
namespace {

QStyle::StandardPixmap SignOf(Gravity gravity) {
  switch (gravity) {
    case Gravity::Error:
      return QStyle::SP_MessageBoxCritical;
    case Gravity::Warning:
      return QStyle::SP_MessageBoxWarning;
    case Gravity::Note:
      break;
  }
  return QStyle::SP_MessageBoxInformation;
}

class FindsDialog : public QDialog {
 public:
  explicit FindsDialog(QWidget* owner) : QDialog(owner) {
    form_.setupUi(this);
    connect(form_.findList, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(form_.findList, &QListWidget::itemSelectionChanged, this, [this] { ShowButtons(); });
    Look();
  }

  std::optional<LevelFind> Chosen() const {
    const int row = form_.findList->currentRow();
    if (row < 0) return std::nullopt;
    return finds_[static_cast<std::size_t>(row)];
  }

 private:
  void Look() {
    finds_ = CheckRules();
    form_.findList->clear();
    for (const LevelFind& find : finds_) {
      auto* const row =
          new QListWidgetItem(style()->standardIcon(SignOf(find.rule->gravity), nullptr, this),
                              FromText(find.text) + '.', form_.findList);
      // Which of the pictures it is, for who does not see it.
      const QString gravity(NameOf(find.rule->gravity));
      row->setData(Qt::AccessibleTextRole, gravity + ": " + row->text());
      row->setToolTip(gravity);
    }
    form_.countLabel->setText(FromText(CountFinds(finds_)));
    form_.findList->setCurrentRow(0);
    ShowButtons();
  }

  void ShowButtons() { form_.goButton->setEnabled(Chosen().has_value()); }

  Ui::CheckLevelForm form_;
  std::vector<LevelFind> finds_;
};

}  // namespace

void CheckLevelDialog(QWidget* owner) {
  std::optional<LevelFind> chosen;
  {
    FindsDialog dialog(owner);
    if (dialog.exec() == QDialog::Accepted) chosen = dialog.Chosen();
  }
  if (chosen) GoToFind(*chosen);
}

}  // namespace mw
