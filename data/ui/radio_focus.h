// The keyboard's way into groups of radio buttons. Used by the dialogs that have some.
#pragma once

#include <QRadioButton>

namespace mw {

// Tab goes into the checked one of each group of the dialog, whose buttons must be there; by itself
// it would go into the first, until one of them has had the focus.
inline void LetTabGoToCheckedRadios(const QWidget& dialog) {
  for (auto* radio : dialog.findChildren<QRadioButton*>()) {
    const auto follow = [radio](bool checked) {
      radio->setFocusPolicy(checked ? Qt::StrongFocus : Qt::ClickFocus);
    };
    follow(radio->isChecked());
    QObject::connect(radio, &QRadioButton::toggled, radio, follow);
  }
}

}  // namespace mw
