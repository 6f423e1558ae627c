#include "tools/help_tour/windows.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSlider>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace mw::help {
namespace {

template <typename Widget>
Widget* FindVisible(const char* objectName) {
  QMainWindow* window = FindMainWindow();
  auto* widget = window ? window->findChild<Widget*>(objectName) : nullptr;
  return widget && widget->isVisible() ? widget : nullptr;
}

MaybeTarget EntryOf(QMenuBar* bar, const QString& text) {
  for (QAction* action : bar->actions()) {
    if (Plain(action->text()) == text) return Target{bar, bar->actionGeometry(action).center()};
  }
  return std::nullopt;
}

MaybeTarget EntryOf(QMenu* menu, const QString& text) {
  for (QAction* action : menu->actions()) {
    if (!action->isSeparator() && Plain(action->text()) == text) {
      return Target{menu, menu->actionGeometry(action).center()};
    }
  }
  return std::nullopt;
}

bool IsNamed(const QWidget* field, const QString& name) {
  if (field->accessibleName() == name || field->toolTip() == name) return true;
  const QList<QLabel*> labels = field->window()->findChildren<QLabel*>();
  return std::any_of(labels.begin(), labels.end(), [&](const QLabel* label) {
    const QString text = Plain(label->text());
    return label->buddy() == field && (text == name || text == name + ':');
  });
}

MaybeTarget RowTarget(QAbstractItemView* view, const QModelIndex& index) {
  view->scrollTo(index);
  QRect row = view->visualRect(index);
  constexpr int kFromLeft = 24;  // pixels; short texts end not far behind it
  return Target{view->viewport(),
                QPoint(row.left() + std::min(row.width() / 2, kFromLeft), row.center().y())};
}

}  // namespace

QString Plain(const QString& caption) {
  return caption.section('\t', 0, 0).remove('&').simplified();
}

QMainWindow* FindMainWindow() {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (auto* main = qobject_cast<QMainWindow*>(window)) return main;
  }
  return nullptr;
}

QWidget* FrontWindow() {
  if (QWidget* popup = QApplication::activePopupWidget()) return popup;
  if (QWidget* dialog = QApplication::activeModalWidget()) return dialog;
  return FindMainWindow();
}

QWidget* FindDialog(const QString& title) {
  QWidget* dialog = QApplication::activeModalWidget();
  return dialog && dialog->isVisible() && dialog->windowTitle() == title ? dialog : nullptr;
}

bool BecomesActive(QWidget* window, int attempt) {
  constexpr int kPatience = 50;
  if (QApplication::activeWindow() == window && !window->isMinimized()) return true;
  if (attempt % kPatience != kPatience - 1) return false;
  const bool makesIcon = attempt / kPatience % 4 == 2 && !window->isModal();
  window->setWindowState(window->windowState().setFlag(Qt::WindowMinimized, makesIcon));
  if (!makesIcon) {
    window->raise();
    window->activateWindow();
  }
  return false;
}

QWidget* FindView() { return FindVisible<QWidget>("view"); }

QLabel* FindStatus() { return FindVisible<QLabel>("statusProgress"); }

QAbstractButton* FindButton(const QString& text) {
  QWidget* window = FrontWindow();
  if (!window) return nullptr;
  QAbstractButton* byToolTip = nullptr;
  for (auto* button : window->findChildren<QAbstractButton*>()) {
    if (!button->isVisible() || !button->isEnabled()) continue;
    if (!qobject_cast<QToolButton*>(button) && Plain(button->text()) == text) return button;
    if (button->toolTip() == text) byToolTip = button;
  }
  return byToolTip;
}

template <typename Field>
Field* FindField(const QString& name) {
  QWidget* window = FrontWindow();
  if (!window) return nullptr;
  for (auto* field : window->findChildren<Field*>()) {
    if (field->isVisible() && field->isEnabled() && IsNamed(field, name)) return field;
  }
  return nullptr;
}
template QWidget* FindField(const QString&);
template QComboBox* FindField(const QString&);
template QLineEdit* FindField(const QString&);
template QSlider* FindField(const QString&);

MaybeTarget FindMenuEntry(const QString& text) {
  if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
    return EntryOf(menu, text);
  }
  QMainWindow* window = FindMainWindow();
  return window ? EntryOf(window->menuBar(), text) : std::nullopt;
}

MaybeTarget FindListRow(const QString& text) {
  QWidget* window = FrontWindow();
  if (!window) return std::nullopt;
  for (auto* list : window->findChildren<QListWidget*>()) {
    const auto rows = list->findItems(text, Qt::MatchExactly);
    if (list->isVisible() && !rows.isEmpty()) return RowTarget(list, list->indexFromItem(rows[0]));
  }
  return std::nullopt;
}

MaybeTarget FindTreeItem(const QString& text, int number) {
  auto* tree = FindVisible<QTreeWidget>("levelTree");
  if (!tree) return std::nullopt;
  for (QTreeWidgetItemIterator item(tree); *item; ++item) {
    const QString shown = (*item)->text(0);
    if (shown != text && !shown.startsWith(text + " (")) continue;
    if (--number > 0) continue;
    for (auto* above = (*item)->parent(); above; above = above->parent()) above->setExpanded(true);
    return RowTarget(tree, tree->indexFromItem(*item));
  }
  return std::nullopt;
}

}  // namespace mw::help
