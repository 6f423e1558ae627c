#include "app/ui/welcome_dialog.h"

#include "resources/pictures.h"
#include "ui_202_welcome.h"

namespace mw {

WelcomeDialog::WelcomeDialog(QWidget* parent) : QDialog(parent) {
  Ui::WelcomeDialog ui;
  ui.setupUi(this);
  ui.iconLabel->setPixmap(
      Icon("mapwright").pixmap(ui.iconLabel->minimumSize(), devicePixelRatioF()));
  QFont font = ui.welcomeLabel->font();
  font.setBold(true);
  ui.welcomeLabel->setFont(font);
  connect(ui.openButton, &QPushButton::clicked, this, [this] { Choose(WelcomeChoice::OpenLevel); });
  connect(ui.newButton, &QPushButton::clicked, this, [this] { Choose(WelcomeChoice::NewLevel); });
  connect(ui.closeButton, &QPushButton::clicked, this, [this] { Choose(WelcomeChoice::Close); });
}

WelcomeChoice WelcomeDialog::Ask() { return static_cast<WelcomeChoice>(exec()); }

void WelcomeDialog::reject() { Choose(WelcomeChoice::NewLevel); }

}  // namespace mw
