#include "objects/ui/object_browser_dialog.h"

#include <QButtonGroup>
#include <QDialog>
#include <QTimer>
#include <algorithm>

#include "core/readable_text.h"
#include "core/text.h"
#include "data/ui/radio_focus.h"
#include "objects/object_browser.h"
#include "objects/object_store.h"
#include "platform/prompts.h"
#include "ui_175_object_browser.h"

namespace mw {
namespace {

constexpr int kFrameInterval = 16;  // milliseconds
constexpr QPoint kPlaceInOwner(8, 60);

std::string NameOf(int entry) {
  return objectStore.catalogue.entries[static_cast<std::size_t>(entry)].name.String();
}

class BrowserDialog : public QDialog {
 public:
  // Without a title it has that of its form.
  BrowserDialog(QWidget* owner, const std::function<void()>& renderView, const QString& title)
      : QDialog(owner) {
    form_.setupUi(this);
    if (!title.isEmpty()) setWindowTitle(title);
    if (owner) move(owner->mapToGlobal(kPlaceInOwner));
    SetUpCategories();
    form_.filterEdit->setText(QString::fromStdString(objectStore.browserFilter.text.String()));
    FillList();
    connect(form_.filterEdit, &QLineEdit::textChanged, this, [this](const QString& text) {
      objectStore.browserFilter.text = text.toStdString();
      FillList();
    });
    connect(form_.objectList, &QListWidget::itemSelectionChanged, this, [this] { ShowSelected(); });
    connect(form_.objectList, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    connect(&frames_, &QTimer::timeout, this, renderView);
    frames_.start(kFrameInterval);
  }

  // The selected catalogue entry, or -1.
  int SelectedEntry() const {
    const auto selected = form_.objectList->selectedItems();
    return selected.isEmpty() ? -1 : selected.first()->data(Qt::UserRole).toInt();
  }

 private:
  void SetUpCategories() {
    auto* categories = new QButtonGroup(this);
    categories->addButton(form_.allRadio, static_cast<int>(BrowserCategory::All));
    categories->addButton(form_.structuresRadio, static_cast<int>(BrowserCategory::Structures));
    categories->addButton(form_.propsRadio, static_cast<int>(BrowserCategory::Props));
    categories->addButton(form_.vegetationRadio, static_cast<int>(BrowserCategory::Vegetation));
    categories->button(static_cast<int>(objectStore.browserFilter.category))->setChecked(true);
    LetTabGoToCheckedRadios(*this);
    connect(categories, &QButtonGroup::idClicked, this, [this](int category) {
      objectStore.browserFilter.category = static_cast<BrowserCategory>(category);
      FillList();
    });
  }

  void FillList() {
    form_.objectList->clear();
    for (const int entry : BrowserEntries(objectStore.browserFilter)) {
      auto* row = new QListWidgetItem(QString::fromStdString(ReadableText(NameOf(entry))),
                                      form_.objectList);
      row->setData(Qt::UserRole, entry);
    }
    ShowSelected();
  }

  void ShowSelected() {
    const int entry = SelectedEntry();
    const bool shown = PreviewEntry(entry);
    form_.okButton->setEnabled(entry >= 0);
    form_.noteLabel->setVisible(entry >= 0 && !shown);
  }

  Ui::ObjectBrowserForm form_;
  QTimer frames_;
};

// The chosen catalogue entry, or -1.
int ChooseEntry(QWidget* owner, const std::function<void()>& renderView, const QString& title) {
  BeginPreview();
  int entry = -1;
  {
    BrowserDialog dialog(owner, renderView, title);
    if (dialog.exec() == QDialog::Accepted) entry = dialog.SelectedEntry();
  }
  EndPreview();
  renderView();
  return entry;
}

}  // namespace

std::optional<int> ReplaceDialog(QWidget* owner, const std::function<void()>& renderView) {
  const int entry = ChooseEntry(owner, renderView, "Object Browser - Replace Selected Objects");
  return entry < 0 ? std::nullopt : std::optional(entry);
}

bool ObjectBrowserDialog(QWidget* owner, const std::function<void()>& renderView) {
  const int entry = ChooseEntry(owner, renderView, {});
  if (entry < 0) return false;
  const bool offered = OfferEntry(entry);
  if (!offered) SetStatusText(1, FormatText("Could not load %s.", NameOf(entry).c_str()));
  return offered;
}

}  // namespace mw
