#include "terrain/ui/sample_bits_dialog.h"

#include <QDialog>

#include "data/ui/radio_focus.h"
#include "ui_180_sample_bits.h"

namespace mw {

std::optional<SampleBits> SampleBitsDialog(QWidget* owner, const char* title) {
  QDialog dialog(owner);
  Ui::SampleBitsForm form;
  form.setupUi(&dialog);
  dialog.setWindowTitle(QString::fromUtf8(title));
  form.eightBitsRadio->setChecked(true);
  LetTabGoToCheckedRadios(dialog);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  if (form.sixteenBitsRadio->isChecked()) return SampleBits::Sixteen;
  if (form.twentyFourBitsRadio->isChecked()) return SampleBits::TwentyFour;
  return SampleBits::Eight;
}

}  // namespace mw
