#include "objects/ui/property_sheet_dialog.h"

#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QScreen>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <vector>

#include "core/text.h"
#include "objects/ui/property_rows.h"
#include "platform/prompts.h"
#include "ui_2005_edit_properties.h"

namespace mw {
namespace {

// Layout pixels.
constexpr int kSheetWidth = 350, kLowestRowsEnd = 70, kButtonsHeight = 50;
// Real pixels that the desktop puts around the dialog.
constexpr int kWindowFrame = 48;
// Pixels of a line of text up to which a layout pixel is a real one.
constexpr double kUsualFontHeight = 17;

QString MnemonicOf(const QString& text) { return text.mid(text.indexOf('&') + 1, 1).toUpper(); }

// Marks the first letter or digit that is not among those taken, and takes it.
QString WithMnemonic(QString text, QString& taken) {
  text.replace("&", "&&");
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar letter = text[i].toUpper();
    if (!letter.isLetterOrNumber() || taken.contains(letter)) continue;
    taken += letter;
    return text.insert(i, '&');
  }
  return text;
}

class PropertySheetDialog : public QDialog {
 public:
  PropertySheetDialog(QWidget* owner, const PropertySheet& sheet) : QDialog(owner) {
    form_.setupUi(this);
    setWindowTitle(QString::fromStdString(sheet.title));
    scale_ = std::max(1.0, fontMetrics().height() / kUsualFontHeight);
    AddRows(sheet);
    FitSize();
  }

  // Stays open when a field lacks its value.
  void accept() override {
    for (const PropertyRow& row : rows_) {
      if (QWidget* const lacking = row.controls.lacking()) {
        Refuse(*row.field, *lacking);
        return;
      }
    }
    for (const PropertyRow& row : rows_) row.controls.store();
    QDialog::accept();
  }

 private:
  void AddRows(const PropertySheet& sheet) {
    const int count = std::clamp<int>(sheet.fieldCount, 0, kMaxPropertyFields);
    for (int i = 0; i < count; ++i) {
      rows_.push_back(
          AddPropertyRow({form_.rowsPage, i, scale_}, sheet.fields[static_cast<std::size_t>(i)]));
    }
    GiveMnemonics();
    FocusFirstControl();
  }

  // To the labels of controls and to the check boxes, as long as their letters last.
  void GiveMnemonics() {
    QString taken = MnemonicOf(form_.okButton->text()) + MnemonicOf(form_.cancelButton->text());
    for (QObject* child : form_.rowsPage->children()) {
      auto* const label = qobject_cast<QLabel*>(child);
      if (label && label->buddy() && label->buddy()->focusPolicy() != Qt::NoFocus) {
        label->setText(WithMnemonic(label->text(), taken));
      } else if (auto* const box = qobject_cast<QCheckBox*>(child)) {
        box->setText(WithMnemonic(box->text(), taken));
      }
    }
  }

  // Without this the buttons, which are older than the rows, would come first.
  void FocusFirstControl() {
    for (QObject* child : form_.rowsPage->children()) {
      auto* const control = static_cast<QWidget*>(child);
      if (!(control->focusPolicy() & Qt::TabFocus)) continue;
      control->setFocus(Qt::TabFocusReason);
      return;
    }
  }

  // As high as its rows, and no higher than the screen.
  void FitSize() {
    const int rowsEnd = kFirstRowTop + kRowPitch * static_cast<int>(rows_.size());
    const QSize rows(Scaled(kSheetWidth), Scaled(std::max(rowsEnd, kLowestRowsEnd)));
    const int height = rows.height() + Scaled(kButtonsHeight);
    const int room = screen()->availableGeometry().height() - kWindowFrame;
    const int scrollBar =
        height > room ? form_.rowsArea->verticalScrollBar()->sizeHint().width() : 0;
    form_.rowsPage->setFixedSize(rows);
    form_.buttonsPanel->setFixedHeight(Scaled(kButtonsHeight));
    setFixedSize(rows.width() + scrollBar, std::min(height, room));
  }

  void Refuse(const PropertyField& field, QWidget& control) {
    ShowPrompt(FormatText("Field '%s' must contain a value!", field.label.c_str()), "ERROR",
               PromptButtons::Ok, PromptIcon::Exclamation);
    form_.rowsArea->ensureWidgetVisible(&control);
    control.setFocus();
  }

  int Scaled(int pixels) const { return static_cast<int>(std::lround(pixels * scale_)); }

  Ui::EditProperties form_;
  double scale_ = 1;
  std::vector<PropertyRow> rows_;
};

}  // namespace

bool RunPropertySheet(QWidget* owner, PropertySheet& sheet) {
  return PropertySheetDialog(owner, sheet).exec() == QDialog::Accepted;
}

}  // namespace mw
