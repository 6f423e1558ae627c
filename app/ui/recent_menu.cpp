#include "app/ui/recent_menu.h"

#include <QAction>
#include <QMenu>
#include <vector>

#include "app/recent_levels.h"
#include "app/ui/qt_text.h"
#include "platform/processes.h"

namespace mw {
namespace {

// "&1" ... "&9", "1&0": each with a key of its own.
QString Number(std::size_t index) {
  return index < 9 ? QString("&%1").arg(index + 1) : QString("1&0");
}

// The archive and not the place in the menu: another editor may have changed the list meanwhile.
void Open(const std::string& archive) {
  if (!IsInputIgnored()) OpenRecentLevel(archive);
}

void Fill(QMenu* menu) {
  menu->clear();
  const std::vector<RecentLevel> levels = RecentLevels();
  const std::vector<std::string> captions = RecentLevelCaptions(levels);
  for (std::size_t i = 0; i < levels.size(); ++i) {
    const QString caption = FromText(captions[i]).replace('&', "&&");
    QAction* const entry = menu->addAction(Number(i) + "  " + caption);
    entry->setIconText(FromText(captions[i]));
    entry->setToolTip(FromText(levels[i].archive));
    // The menu is filled anew while the level opens: not before this entry is done with.
    QObject::connect(
        entry, &QAction::triggered, menu, [archive = levels[i].archive] { Open(archive); },
        Qt::QueuedConnection);
  }
  menu->setEnabled(!levels.empty());
  menu->menuAction()->setEnabled(!levels.empty());
}

}  // namespace

void AddRecentMenu(QMenu* file, QAction* next) {
  auto* menu = new QMenu("Open &Recent", file);
  menu->setObjectName("recentMenu");
  menu->setToolTipsVisible(true);
  file->insertMenu(next, menu);
  QObject::connect(file, &QMenu::aboutToShow, menu, [menu] { Fill(menu); });
}

}  // namespace mw
