#include "app/ui/welcome_dialog.h"

#include <QPushButton>
#include <algorithm>

#include "app/ui/qt_text.h"
#include "resources/pictures.h"
#include "ui_202_welcome.h"

namespace mw {

WelcomeDialog::WelcomeDialog(QWidget* parent, const WelcomeOffer& offer) : QDialog(parent) {
  Ui::WelcomeDialog ui;
  ui.setupUi(this);
  ui.iconLabel->setPixmap(
      Icon("mapwright").pixmap(ui.iconLabel->minimumSize(), devicePixelRatioF()));
  QFont font = ui.welcomeLabel->font();
  font.setBold(true);
  ui.welcomeLabel->setFont(font);
  connect(ui.openButton, &QPushButton::clicked, this, [this] { Choose(WelcomeChoice::OpenLevel); });
  connect(ui.newButton, &QPushButton::clicked, this, [this] { Choose(WelcomeChoice::NewLevel); });
  connect(ui.sampleButton, &QPushButton::clicked, this,
          [this] { Choose(WelcomeChoice::SampleGame); });
  connect(ui.closeButton, &QPushButton::clicked, this, [this] { Choose(WelcomeChoice::Close); });
  ui.sampleButton->setVisible(offer.sampleGame);
  ui.recentGroup->setVisible(!offer.recent.empty());
  if (QWidget* const last = ShowRecent(offer.recent, ui.recentGroup)) {
    setTabOrder(last, ui.closeButton);
  }
}

QWidget* WelcomeDialog::ShowRecent(const std::vector<RecentLevel>& recent, QWidget* group) {
  const std::vector<std::string> captions = RecentLevelCaptions(recent);
  QWidget* last = nullptr;
  for (std::size_t i = 0; i < std::min(kMostRecent, recent.size()); ++i) {
    const QString caption = FromText(captions[i]).replace('&', "&&");
    auto* button = new QPushButton(QString("&%1  %2").arg(i + 1).arg(caption), group);
    button->setAccessibleName(FromText(captions[i]));
    button->setToolTip(FromText(recent[i].archive));
    connect(button, &QPushButton::clicked, this, [this, i] {
      done(static_cast<int>(WelcomeChoice::FirstRecentLevel) + static_cast<int>(i));
    });
    group->layout()->addWidget(button);
    last = button;
  }
  return last;
}

WelcomeChoice WelcomeDialog::Ask() { return static_cast<WelcomeChoice>(exec()); }

void WelcomeDialog::reject() { Choose(WelcomeChoice::NewLevel); }

}  // namespace mw
