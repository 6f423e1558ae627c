#include "tools/help_tour/pictures.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QPixmap>
#include <QScreen>
#include <QStatusBar>
#include <QToolBar>
#include <QToolTip>

#include "tools/help_tour/gui.h"
#include "tools/help_tour/hands.h"

namespace mw::help {
namespace {

constexpr int kSettlingTime = 250;  // milliseconds until the display shows the last input

QRect OnScreen(const QWidget* widget) {
  return {widget->mapToGlobal(QPoint(0, 0)), widget->size()};
}

QRect FrameOf(const QWidget* window) { return window ? window->frameGeometry() : QRect(); }

QRect VisibleToolbar(const QMainWindow* window, bool main) {
  for (const auto* toolbar : window->findChildren<QToolBar*>()) {
    if (toolbar->isVisible() && (toolbar->objectName() == "mainToolbar") == main) {
      return OnScreen(toolbar);
    }
  }
  return {};
}

// From the menu bar down to the end of the lowest open menu.
QRect OpenMenus(const QMainWindow* window) {
  QRect area = OnScreen(window->menuBar());
  int right = 0;
  for (const auto* widget : QApplication::topLevelWidgets()) {
    if (!widget->inherits("QMenu") || !widget->isVisible()) continue;
    area = area.united(OnScreen(widget));
    right = std::max(right, OnScreen(widget).right());
  }
  constexpr int kMargin = 60;
  area.setRight(right + kMargin);
  return area;
}

QRect AreaOf(const QString& what) {
  const QMainWindow* window = FindMainWindow();
  if (what == "dialog") return FrameOf(QApplication::activeModalWidget());
  if (!window) return {};
  if (what == "window") return FrameOf(window);
  if (what == "menu") return OpenMenus(window);
  if (what == "toolbar") return VisibleToolbar(window, true);
  if (what == "mode toolbar") return VisibleToolbar(window, false);
  if (what == "status bar") return OnScreen(window->statusBar());
  static const QHash<QString, const char*> kNames = {
      {"view", "view"}, {"level tree", "levelTreePanel"}, {"mini-map", "miniMap"}};
  const auto* part = window->findChild<QWidget*>(kNames.value(what));
  return part ? OnScreen(part) : QRect();
}

QRect PartOf(const QRect& area, const QString& part) {
  if (part.isEmpty()) return area;
  const QStringList numbers = part.split(' ');
  if (numbers.size() != 4) throw TourError("a part is four numbers, not " + part);
  return QRect(numbers[0].toInt(), numbers[1].toInt(), numbers[2].toInt(), numbers[3].toInt())
      .translated(area.topLeft())
      .intersected(area);
}

QPixmap Grab(const QRect& area) {
  return OnGui([area] {
    return QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(),
                                                        area.height());
  });
}

}  // namespace

void TakePicture(const Step& step, const QString& file) {
  const QString what = step.data.value("of");
  OnGui([] { QToolTip::hideText(); });
  WaitForFrames();
  Wait(kSettlingTime);
  QRect area = OnGui([what] { return AreaOf(what); });
  if (area.isEmpty()) throw TourError("there is no " + what + " to be seen");
  area = PartOf(area, step.data.value("part"));
  if (!Grab(area).save(file)) throw TourError(file + " could not be written");
}

void TakeScreen(const QString& file) {
  Grab(OnGui([] { return QGuiApplication::primaryScreen()->geometry(); })).save(file);
}

}  // namespace mw::help
