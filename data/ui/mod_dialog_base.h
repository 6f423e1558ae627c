// What the mod dialogs share: a Designer form with an okButton and a cancelButton, and leaving it
// only with OK where the user must choose, as long as OK works.
#pragma once

#include <QDialog>
#include <QPushButton>

namespace mw {

template <typename Form>
class ModDialog : public QDialog {
 public:
  ModDialog(QWidget* owner, bool cancelAllowed) : QDialog(owner), cancelAllowed_(cancelAllowed) {
    form_.setupUi(this);
    form_.cancelButton->setVisible(cancelAllowed);
    form_.cancelButton->setEnabled(cancelAllowed);
    setWindowFlag(Qt::WindowCloseButtonHint, cancelAllowed);
    connect(form_.okButton, &QPushButton::clicked, this, [this] { accept(); });
    connect(form_.cancelButton, &QPushButton::clicked, this, [this] { reject(); });
  }

  void reject() override {
    if (cancelAllowed_) QDialog::reject();
  }

 protected:
  // OK was refused, and no other choice may be better: from now on the user can give up.
  void AllowCancel() {
    cancelAllowed_ = true;
    form_.cancelButton->setEnabled(true);
    form_.cancelButton->show();
  }

  Form form_;

 private:
  bool cancelAllowed_;
};

}  // namespace mw
